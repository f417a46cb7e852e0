// The formula screen with three formulas and four chemicals.
#pragma once

#include "ScreenTest.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/ReportList.h"
#include "screens/frmCurrFormula.h"
#include "screens/frmFormula.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

class FormulaScreenTest : public ScreenTest {
protected:
    void seed() override { seedFormulas(); }

    sorvanto::frmFormula& formula() const { return screen<sorvanto::frmFormula>(sorvanto::formulas); }
    template <class Control>
    Control& box(const QString& name) const {
        return control<Control>(sorvanto::formulas, name);
    }
    QString shown(const QString& name) const { return text(sorvanto::formulas, name); }
    void press(const QString& button) const { box<QPushButton>(button).click(); }
    QTabWidget& tabs() const { return box<QTabWidget>("tabFormula"); }
    platform::RecordGrid& grid() const { return box<platform::RecordGrid>("grdIngredients"); }
    platform::ReportList& steps() const { return box<platform::ReportList>("lstCustom"); }
    platform::UpDown& upDown(const QString& name) const { return box<platform::UpDown>(name); }
    /// One column of the grid, row by row.
    QStringList column(const QString& field) const {
        QStringList cells;
        for (int row = 0; row < grid().model()->rowCount(); ++row)
            cells << grid().model()->index(row, grid().columnByField(field)).data().toString();
        return cells;
    }
    /// A column of the only row of table Formula with that key.
    QString stored(const QString& columnName, int key) const {
        return sqlText(u"SELECT %1 FROM Formula WHERE FormulaID = %2"_s.arg(columnName).arg(key));
    }
    /// Loads and shows the formula by its name.
    void loadAt(const QString& name) {
        load();
        search(name);
        ASSERT_EQ(str(shown("txtfrm_Name")), str(name));
    }
    /// The same, open for editing.
    void edit(const QString& name) {
        loadAt(name);
        click("cmdEdit");
    }
};
