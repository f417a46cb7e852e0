// Rows that a statement leaves in any order stand in one order all the same, whatever indexes there are.
#include "DataTest.h"
#include "platform/data/Query.h"

namespace platform {
namespace {

struct List {
    const char* statement;
    const char* orderWithin;
};

/// The lists of the program in which rows can be equal in what they are ordered by, or are not ordered at all.
const List lists[] = {
    {"SELECT [FormulaID],[frm_Name] AS [Name] FROM [Formula] WHERE ([frm_Name] Like '%')", ""},
    {"SELECT FormulaID FROM Formula Order By frm_Name", ""},
    {"SELECT ChemicalID FROM Chemical", ""},
    {"SELECT Log.LogID, Log.log_Lot as [Lot], Log.log_Date as [DateLogged] FROM Log WHERE (Log.log_Name Like '%') "
     "ORDER BY Log.log_Date DESC;",
     ""},
    {"SELECT Log.LogID, Log.log_Lot as [Lot], Log.log_Date as [DateLogged] FROM Log WHERE (Log.log_Name Like '%') "
     "ORDER BY Log.log_Date DESC;",
     "Log.log_Name DESC, Log.log_NDC DESC, Log.log_Lot DESC"},
    {"SELECT Chemical.chm_Name, Chemical.chm_Lot FROM Chemical ORDER BY chm_Name;", ""},
    {"SELECT Chemical.chm_Name, FormChem.fch_Qty, FormChem.FormChemID FROM Chemical INNER JOIN FormChem ON "
     "Chemical.ChemicalID = FormChem.ChemicalID WHERE FormChem.FormulaID = 1",
     ""},
    {"SELECT LogChem.lch_Name, LogChem.LogChemID, Chemical.chm_Notes FROM LogChem LEFT OUTER JOIN Chemical ON "
     "Chemical.ChemicalID = LogChem.ChemicalID WHERE (((LogID)= 1));",
     ""},
    {"SELECT RXs.RXsID, Log.log_Name, RXs.rxs_Date, Log.LogID FROM Patient INNER JOIN (Log INNER JOIN RXs ON "
     "Log.LogID = RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE Patient.PatientID=1 ORDER BY RXs.rxs_Date DESC",
     ""},
    {"SELECT RXs.RXsID, Log.log_Name, RXs.rxs_Date, Log.LogID FROM Patient INNER JOIN (Log INNER JOIN RXs ON "
     "Log.LogID = RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE (((Patient.PatientID)=1))",
     "RXs.rxs_Date"},
    {"SELECT Log.log_Date, Log.log_Lot FROM Log WHERE Log.FormulaID=1 AND Log.log_Date >= #01-01-1990#", ""},
    {"SELECT LT.log_JarSize AS JarSize , count(LT.log_JarSize) as Used FROM [SELECT FLT.log_JarSize from Log FLT "
     "WHERE FLT.log_date >=#01-01-1990#]. AS LT group by LT.log_JarSize",
     ""},
};

class PinnedOrderTest : public DataTest {
protected:
    /// Many rows that are alike in all that a list could be ordered by.
    void SetUp() override {
        DataTest::SetUp();
        elsewhere(QString::fromLatin1(R"(
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40)
INSERT INTO Log (FormulaID, log_Name, log_Lot, log_Date, log_JarSize)
  SELECT 1, 'Twin', 'L' || (i * 7919 % 40), '2026-03-01 10:00:00', i * 31 % 5 FROM n;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40)
INSERT INTO Chemical (chm_Name, chm_Lot) SELECT 'Twin', 'L' || (i * 7919 % 40) FROM n;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40)
INSERT INTO Formula (frm_Name, frm_NDC) SELECT 'Twin', 'N' || (i * 7919 % 40) FROM n;
INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty)
  SELECT 1, ChemicalID, 1.0 FROM Chemical ORDER BY ChemicalID * 17 % 41;
INSERT INTO LogChem (LogID, ChemicalID, lch_Name)
  SELECT 1, ChemicalID, chm_Name FROM Chemical ORDER BY ChemicalID * 23 % 41;
INSERT INTO RXs (LogID, PatientID, rxs_Date)
  SELECT LogID, 1, '2026-03-01 00:00:00' FROM Log WHERE LogID % 2 = 0 ORDER BY LogID * 13 % 41;
INSERT INTO RXs (LogID, PatientID, rxs_Date)
  SELECT LogID, 1, '2026-03-02 00:00:00' FROM Log WHERE LogID % 2 = 1 ORDER BY LogID * 13 % 41;
)"));
    }
    QStringList orders(CursorLocation location) const {
        QStringList all;
        for (const List& list : lists) {
            const RecordsetPtr set = Recordset::create();
            set->setOrderWithin(QString::fromLatin1(list.orderWithin));
            set->open(QString::fromLatin1(list.statement), connection, LockType::ReadOnly, location);
            QStringList rows;
            for (; !set->eof(); set->moveNext()) {
                QStringList row;
                for (int field = 0; field < set->fieldCount(); ++field)
                    row << set->value(field).toString();
                rows << row.join('|'_L1);
            }
            EXPECT_GT(rows.size(), 3) << list.statement;
            all << rows.join('\n'_L1);
        }
        return all;
    }
    void expectSameOrders(const char* what) {
        for (const CursorLocation location : {CursorLocation::Default, CursorLocation::Client}) {
            const QStringList now = orders(location);
            const QStringList& before = location == CursorLocation::Client ? m_inMemory : m_byKey;
            for (qsizetype i = 0; i < now.size(); ++i)
                EXPECT_EQ(now[i].toStdString(), before[i].toStdString())
                    << what << ": " << lists[i].statement;
        }
    }
    void remember() {
        m_byKey = orders(CursorLocation::Default);
        m_inMemory = orders(CursorLocation::Client);
        EXPECT_EQ(m_byKey, m_inMemory);
    }

private:
    QStringList m_byKey, m_inMemory;
};

TEST_F(PinnedOrderTest, NeitherAnIndexNorStatisticsReorderAList) {
    remember();
    connection->close();
    elsewhere(QString::fromLatin1(R"(
CREATE INDEX Odd_Log ON Log (log_Date DESC, log_Lot, log_Name);
CREATE INDEX Odd_LogFormula ON Log (FormulaID, log_Lot DESC, log_Date);
CREATE INDEX Odd_Jar ON Log (log_JarSize DESC, log_Date);
CREATE INDEX Odd_Chemical ON Chemical (chm_Name, chm_Lot DESC);
CREATE INDEX Odd_Formula ON Formula (frm_Name, frm_NDC DESC);
CREATE INDEX Odd_FormChem ON FormChem (FormulaID, ChemicalID DESC, fch_Qty);
CREATE INDEX Odd_LogChem ON LogChem (LogID, ChemicalID DESC, lch_Name);
CREATE INDEX Odd_RXs ON RXs (PatientID, LogID DESC, rxs_Date);
DROP INDEX "RXs_Patient"; DROP INDEX "FormChem_Formula"; DROP INDEX "LogChem_Log"; DROP INDEX "Log_Date";
ANALYZE;
)"));
    open();
    expectSameOrders("indexes");
}

// The engine has switches by which it shows who relies on an order that nobody has asked for.
TEST_F(PinnedOrderTest, TheEnginesOwnSwitchesReorderNoList) {
    remember();
    run(connection->engine(), store().otherWays());
    expectSameOrders("other ways");
}

TEST_F(PinnedOrderTest, EqualRowsStandInTheOrderOfTheirKeysAndOfTheColumnBeforeThem) {
    const auto keys = [&](const char* statement) {
        QStringList all;
        for (const RecordsetPtr set = rows(QString::fromLatin1(statement)); !set->eof(); set->moveNext())
            all << set->value(0).toString();
        return all.join(','_L1);
    };
    EXPECT_EQ(keys("SELECT LogID FROM Log WHERE LogID > 37 AND log_Name = 'Twin' ORDER BY log_Name"),
              stored(u"SELECT LogID FROM Log WHERE LogID > 37 AND log_Name = 'Twin' ORDER BY 1"_s)
                  .replace('\n'_L1, ','_L1));
    EXPECT_EQ(keys("SELECT LogID FROM Log WHERE LogID > 37 AND log_Name = 'Twin' ORDER BY log_Date DESC"),
              stored(u"SELECT LogID FROM Log WHERE LogID > 37 AND log_Name = 'Twin' ORDER BY 1 DESC"_s)
                  .replace('\n'_L1, ','_L1));
}

}  // namespace
}  // namespace platform
