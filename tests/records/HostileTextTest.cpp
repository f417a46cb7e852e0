// Search texts and field texts that try to be more than text: each may break its own statement and nothing
// else.
#include "RecordsTest.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class HostileTextTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedLogs();
        sql("INSERT INTO Patient (PatientID, pat_LName) VALUES (1, 'Doe')");
    }
    QString everything() const {
        QString all;
        for (const char* table : {"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"})
            all += sqlText(u"SELECT * FROM %1"_s.arg(table)) + "\n";
        return all;
    }
};

QStringList hostileTexts() {
    return {"'",
            "''",
            "x'; DELETE FROM Chemical; --",
            "x%'); DELETE FROM Log; --",
            "' OR 1=1 --",
            "x' UNION SELECT 1 --",
            "[",
            "]",
            "[SELECT",
            ";",
            "--",
            "/* x",
            "x%') OR ([chm_Name] Like 'y",
            QString(10000, 'x'),
            QString(10000, '\''),
            QString(10000, '['),
            QString(10000, '_'),
            QString(5000, ','),
            QString::fromUtf8("\0x", 2),
            QString::fromUtf8("\xF0\x9F\x92\x8A\xC3\xA9"),
            "\n\r\t"};
}

TEST_F(HostileTextTest, ASearchTextHarmsItsOwnSearchAtMost) {
    const QString before = everything();
    asker.alwaysAnswer("No Records");
    for (const QString& text : hostileTexts()) {
        for (const char* marker : {"", "#", "?", "$"}) {
            const QString search = marker + text;
            clsChemical().openChemical(0, search);
            clsFormula().openFormula(0, search);
            QString line = search;
            clsFormula().addChemical(line);
            clsLog().openLog(0, search);
            clsPatient().openPatient(0, search);
            clsPatient().addRX(search);
        }
    }
    EXPECT_EQ(str(everything()), str(before));
    for (const auto& report : reporter->calls)
        EXPECT_TRUE(report.tag.endsWith("Open") || report.tag.contains(":open") ||
                    report.tag.contains(":add"))
            << qPrintable(report.tag);
    dropReports();
}

TEST_F(HostileTextTest, AWildcardOfTheUserIsOne) {
    asker.expectModal("frmSearchRS", [](QWidget& form) { form.close(); });
    EXPECT_EQ(clsChemical().openChemical(0, QString(10000, '%'))->ChemicalID, 0);
    EXPECT_EQ(clsChemical().openChemical(0, "%enth")->ChemicalID, 4);
}

TEST_F(HostileTextTest, FieldTextsOfAnyKindAreStoredAsTheyAre) {
    for (const QString& text : hostileTexts()) {
        if (text.contains(QChar(u'\0')))
            continue;
        auto chemical = clsChemical().openChemical(1, {});
        chemical->chm_Notes = text;
        ASSERT_TRUE(clsChemical().saveChemical(chemical)) << qPrintable(text.left(60));
        EXPECT_EQ(str(clsChemical().openChemical(1, {})->chm_Notes), str(text));
        auto formula = clsFormula().openFormula(1, QString());
        formula->frm_Instructions = text;
        ASSERT_TRUE(clsFormula().saveFormula(formula));
        EXPECT_EQ(str(clsFormula().openFormula(1, QString())->frm_Instructions), str(text));
    }
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical")), "4");
}

TEST_F(HostileTextTest, AQuantityIsPutIntoTheStatementAsTyped) {
    for (const char* answer : {"1, 0, 1); DELETE FROM Log; --", "(SELECT 1", "'", "1; 2"}) {
        asker.expectInputBox("Input desired quantity for chemical", answer, u""_s);
        QString search = "Asp";
        EXPECT_FALSE(clsFormula().openFormula(1, QString())->addChemical(search)) << answer;
        expectReport("clsFormula:addChemical");
    }
    EXPECT_EQ(str(sqlText("SELECT (SELECT COUNT(*) FROM Log), (SELECT COUNT(*) FROM FormChem)")), "3|3");
}

}  // namespace
