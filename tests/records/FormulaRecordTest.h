// The formulas of the records' tests.
#pragma once

#include "RecordsTest.h"

class FormulaRecordTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedFormulas();
        clearStatements();
    }
    static sorvanto::clsFormulaPtr open(std::int16_t key) {
        return sorvanto::clsFormula().openFormula(key, QString());
    }
    /// Of its lines.
    static QStringList columns(const sorvanto::clsFormula& formula) {
        QStringList names;
        for (int i = 0; i < formula.Chemical->fieldCount(); ++i)
            names << formula.Chemical->fieldInfo(i).name;
        return names;
    }
};
