// What the columns and the relations refuse, and the forms in which values are kept.
#include "DataTest.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

class RefusalTest : public DataTest {};

TEST_F(RefusalTest, ARefusedRelationIsTheGeneralError) {
    for (const char* statement :
         {"DELETE FROM [Chemical] WHERE (ChemicalID = 1);", "DELETE FROM [Log] WHERE (LogID = 1);",
          "DELETE FROM [Formula] WHERE (FormulaID = 1);", "DELETE FROM [Patient] WHERE (PatientID = 1);",
          "INSERT INTO FormChem ( [FormulaID], [ChemicalID], [fch_Qty] ) VALUES ( 0, 1, 1)"}) {
        const RuntimeError failure = failureOf([&] { connection->execute(QString::fromLatin1(statement)); });
        EXPECT_EQ(failure.number(), error::general) << statement;
        EXPECT_EQ(failure.statement(), statement);
    }
}

TEST_F(RefusalTest, ABatchTakesItsLinesAlongAndLooseHintsStayLoose) {
    EXPECT_EQ(connection->execute(u"DELETE FROM [Log] WHERE (LogID = 3);"_s), 1);
    EXPECT_EQ(stored(u"SELECT count(*) FROM LogChem WHERE LogID = 3"_s), "0");
    connection->execute(u"DELETE FROM [FormChem] WHERE (FormulaID = 5);"_s);
    EXPECT_EQ(connection->execute(u"DELETE FROM [Formula] WHERE (FormulaID = 5);"_s), 1);
    EXPECT_EQ(connection->execute(u"DELETE FROM [Chemical] WHERE (ChemicalID = 13);"_s), 1);
    EXPECT_EQ(
        stored(
            u"SELECT FormulaID, (SELECT count(*) FROM LogChem WHERE LogID = 10) FROM Log WHERE LogID = 10"_s),
        "5|3");
}

TEST_F(RefusalTest, AKeyIsNotGivenOutTwice) {
    const QString insert = u"INSERT INTO Chemical ( [chm_Name] ) VALUES ('')"_s;
    connection->execute(insert);
    connection->execute(u"DELETE FROM [Chemical] WHERE (ChemicalID = 47);"_s);
    connection->execute(insert);
    EXPECT_EQ(stored(u"SELECT max(ChemicalID) FROM Chemical"_s), "48");
}

struct Refusal {
    const char* statement;
    std::int32_t number;
};

TEST_F(RefusalTest, AColumnRefusesWhatItCannotHold) {
    const Refusal cases[] = {
        {"UPDATE Chemical SET [chm_Cost] = 'abc' WHERE [ChemicalID] = 1", error::dataMismatch},
        {"UPDATE Chemical SET [chm_Cost] = '' WHERE [ChemicalID] = 1", error::dataMismatch},
        {"UPDATE Chemical SET [chm_Cost] = '1,5' WHERE [ChemicalID] = 1", error::dataMismatch},
        {"UPDATE Chemical SET [chm_Cost] = '0-1.5' WHERE [ChemicalID] = 1", error::dataMismatch},
        {"UPDATE Formula SET [frm_Quantity] = 32768 WHERE [FormulaID] = 1", error::dataMismatch},
        {"UPDATE Formula SET [frm_Quantity] = [frm_Quantity] * 1000 WHERE [FormulaID] = 1",
         error::dataMismatch},
        {"UPDATE Formula SET [frm_Quantity] = 'x' WHERE [FormulaID] = 1", error::dataMismatch},
        {"UPDATE Patient SET [pat_BDay] = 'soon' WHERE [PatientID] = 1", error::dataMismatch},
        {"UPDATE Patient SET [pat_BDay] = '' WHERE [PatientID] = 1", error::dataMismatch},
        {"UPDATE FormChem SET [fch_QS] = 'maybe' WHERE [FormChemID] = 1", error::dataMismatch},
        {"UPDATE FormChem SET [ChemicalID] = NULL WHERE [FormChemID] = 1", error::dataMismatch},
        {"INSERT INTO RXs ( [LogID], [PatientID], [rxs_Date] ) VALUES ('1', '1', '2/30/2026')",
         error::dataMismatch},
        {"UPDATE Nothing SET [a] = 1", error::statement},
        {"UPDATE Chemical SET [nothing] = 1", error::statement},
        {"UPDATE Chemical SET [chm_Name] = 'O'Hara' WHERE [ChemicalID] = 1", error::statement},
        {"INSERT INTO FormChem ( [FormulaID], [ChemicalID], [fch_Qty], [fch_QS], [fch_Active] ) VALUES ( 1, 2, , 0, 1)",
         error::statement},
        {"INSERT INTO FormChem ( [FormulaID], [ChemicalID], [fch_Qty], [fch_QS], [fch_Active] ) VALUES ( 1, 2, 1,5, 0, 1)",
         error::statement}};
    for (const Refusal& one : cases)
        EXPECT_EQ(numberOf(QString::fromLatin1(one.statement)), one.number) << one.statement;
}

TEST_F(RefusalTest, ValuesTakeTheFormOfTheirColumn) {
    const auto after = [&](const char* column, const char* value) {
        const QString name = QString::fromLatin1(column);
        connection->execute(
            u"UPDATE RXs SET [%1] = %2 WHERE [RXsID] = 1"_s.arg(name, QString::fromLatin1(value)));
        return stored(u"SELECT %1 FROM RXs WHERE RXsID = 1"_s.arg(name));
    };
    EXPECT_EQ(after("rxs_Cost", "'02.50'"), "2.5");
    EXPECT_EQ(after("rxs_Cost", "2.00005"), "2");
    EXPECT_EQ(after("rxs_Cost", "'2.00015'"), "2.0002");
    EXPECT_EQ(after("rxs_Cost", "-1.25"), "-1.25");
    EXPECT_EQ(after("rxs_Cost", "NULL"), "NULL");
    EXPECT_EQ(after("rxs_QTY", "'012'"), "12.0");
    EXPECT_EQ(after("rxs_Date", "'11/21/2026'"), "2026-11-21 00:00:00");
    EXPECT_EQ(after("rxs_Date", "#11-21-2026#"), "2026-11-21 00:00:00");
    EXPECT_EQ(after("rxs_Date", "'11/21/2026 2:05:09 PM'"), "2026-11-21 14:05:09");
    EXPECT_EQ(after("rxs_Doctor", "12"), "12");
    connection->execute(
        u"INSERT INTO FormChem ( [FormulaID], [ChemicalID], [fch_Qty], [fch_QS], [fch_Active] ) VALUES ( 1, 2, 1.5, True, False) "_s);
    EXPECT_EQ(stored(u"SELECT fch_QS, fch_Active FROM FormChem ORDER BY FormChemID DESC LIMIT 1"_s), "1|0");
    connection->execute(u"UPDATE FormChem SET [fch_QS] = -1, [fch_Active] = 'True' WHERE [FormChemID] = 1"_s);
    EXPECT_EQ(stored(u"SELECT fch_QS, fch_Active FROM FormChem WHERE FormChemID = 1"_s), "1|1");
}

}  // namespace
}  // namespace platform
