// A deleted record comes back out of the history exactly as it was.
#include "HistoryTest.h"
#include "history/HistoryDeed.h"
#include "history/HistoryRestore.h"

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class RestoreTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        run("INSERT INTO Chemical (chm_Name, chm_Cost, chm_AWP, chm_Notes) VALUES ('Urea', 2.8501, 7, 'it''s > \"b\", é')");
        run("INSERT INTO Chemical (chm_Name) VALUES ('Menthol')");
        run("INSERT INTO Formula (frm_Name, frm_Mix) VALUES ('Gel', '<CustomMix PreGrind=''1''/>')");
        run("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (1, 1, 0.1)");
        run("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS) VALUES (1, 2, 30.0, 1)");
        run("INSERT INTO Log (FormulaID, log_Name, log_Date, log_Lot) VALUES (1, 'Gel', '2026-03-07 14:05:09', 'SV1')");
        run("INSERT INTO LogChem (LogID, lch_Name, lch_QTY) VALUES (1, 'Urea', 1.5)");
        run("INSERT INTO LogChem (LogID, lch_Name, lch_QTY) VALUES (1, 'Menthol', 1e-7)");
        run("INSERT INTO Patient (pat_LName, pat_BDay) VALUES ('O''Reed', '1970-01-02 00:00:00')");
    }
    static constexpr const char* tables[] = {"Chemical", "Formula", "FormChem", "Log",
                                             "LogChem",  "Patient", "RXs"};
    /// All rows of all tables.
    QString stored() const {
        QString all;
        for (const char* table : tables)
            all += outside(u"SELECT * FROM %1 ORDER BY 1"_s.arg(table)) + u'\n';
        return all;
    }
    DeletedRecord about(const QString& table, std::int64_t key) const {
        return {table, key, lastHistoryRow(connection->engine())};
    }
    Restored restore(const DeletedRecord& deleted) const {
        platform::Transaction transaction(connection->engine());
        const HistoryDeed deed(connection->engine(), Deed::Restored);
        const Restored result = addDeletedRows(connection->engine(), deleted);
        if (result == Restored::Whole)
            transaction.commit();
        return result;
    }
};

TEST_F(RestoreTest, AChemicalComesBackWholeUnderItsKey) {
    run("DELETE FROM FormChem");
    const QString before = stored();
    const DeletedRecord deleted = about(u"Chemical"_s, 1);
    run("DELETE FROM Chemical WHERE ChemicalID = 1");
    ASSERT_NE(stored(), before);
    EXPECT_EQ(restore(deleted), Restored::Whole);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(outside(u"SELECT hst_What, hst_Deed FROM History ORDER BY HistoryID DESC LIMIT 1"_s),
              "made|restored");
    EXPECT_EQ(proofProblems(), QStringList());
}

TEST_F(RestoreTest, AFormulaComesBackWithTheLinesThatWentWithIt) {
    const QString first = stored();
    const DeletedRecord line = about(u"FormChem"_s, 2);
    run("DELETE FROM FormChem WHERE FormChemID = 2");
    const QString withoutLine = stored();
    const DeletedRecord whole = about(u"Formula"_s, 1);
    run("DELETE FROM FormChem WHERE FormulaID = 1");
    run("DELETE FROM Formula WHERE FormulaID = 1");
    EXPECT_EQ(restore(whole), Restored::Whole);
    EXPECT_EQ(stored(), withoutLine) << "the line that was deleted before stays deleted";
    EXPECT_EQ(restore(line), Restored::Whole);
    EXPECT_EQ(stored(), first);
    EXPECT_EQ(proofProblems(), QStringList());
}

TEST_F(RestoreTest, ABatchComesBackWithItsLinesInTheirOrder) {
    const QString before = stored();
    const DeletedRecord deleted = about(u"Log"_s, 1);
    run("DELETE FROM Log WHERE LogID = 1");
    ASSERT_EQ(outside(u"SELECT count(*) FROM LogChem"_s), "0");
    EXPECT_EQ(restore(deleted), Restored::Whole);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(outside(u"SELECT count(*) FROM History WHERE hst_Deed = 'restored'"_s), "3");
    EXPECT_EQ(proofProblems(), QStringList());
}

TEST_F(RestoreTest, APatientComesBackWithHisPrescriptions) {
    run("INSERT INTO RXs (LogID, PatientID, rxs_QTY, rxs_Price) VALUES (1, 1, 30.0, 12.5)");
    const QString before = stored();
    const DeletedRecord deleted = about(u"Patient"_s, 1);
    run("DELETE FROM RXs WHERE PatientID = 1");
    run("DELETE FROM Patient WHERE PatientID = 1");
    EXPECT_EQ(restore(deleted), Restored::Whole);
    EXPECT_EQ(stored(), before);
}

TEST_F(RestoreTest, NothingComesBackWhereSomethingStandsInTheWay) {
    const DeletedRecord deleted = about(u"Formula"_s, 1);
    run("DELETE FROM FormChem WHERE FormulaID = 1");
    run("DELETE FROM Formula WHERE FormulaID = 1");
    const QString gone = stored();
    run("INSERT INTO Formula (FormulaID, frm_Name) VALUES (1, 'other')");
    EXPECT_EQ(restore(deleted), Restored::KeyTaken);
    run("DELETE FROM Formula WHERE FormulaID = 1");
    run("DELETE FROM Chemical WHERE ChemicalID = 2");
    EXPECT_EQ(restore(deleted), Restored::RelationGone);
    EXPECT_EQ(outside(u"SELECT count(*) FROM Formula"_s), "0") << "not without its lines";
    connection->engine().refuseChanges();
    EXPECT_EQ(addDeletedRows(connection->engine(), deleted), Restored::ReadingOnly);
}

TEST_F(RestoreTest, OfTwoThatBoreTheKeyTheOneThatWasMeantComesBack) {
    const QString before = stored();
    const DeletedRecord deleted = about(u"Patient"_s, 1);
    run("DELETE FROM Patient WHERE PatientID = 1");
    outside(u"INSERT INTO Patient (PatientID, pat_LName) VALUES (1, 'other'); DELETE FROM Patient"_s);
    EXPECT_EQ(restore(deleted), Restored::Whole);
    EXPECT_EQ(stored(), before);
}

TEST_F(RestoreTest, WhatTheHistoryDoesNotHoldDoesNotComeBack) {
    EXPECT_EQ(restore(about(u"Chemical"_s, 1)), Restored::NotInHistory) << "never deleted";
    const DeletedRecord deleted = about(u"Patient"_s, 1);
    run("DELETE FROM Patient WHERE PatientID = 1");
    place().unlockHistory(path);
    outside(u"UPDATE History SET hst_Fields = NULL WHERE hst_What = 'deleted'"_s);
    EXPECT_EQ(restore(deleted), Restored::NotInHistory) << "blanked since";
}

TEST_F(RestoreTest, ARowThatWouldNotBeWhatItWasIsRefused) {
    const DeletedRecord deleted = about(u"Patient"_s, 1);
    run("DELETE FROM Patient WHERE PatientID = 1");
    place().doAfterInsert(path, u"Patient"_s,
                          u"UPDATE Patient SET pat_City = 'x' WHERE PatientID = NEW.PatientID"_s);
    EXPECT_EQ(restore(deleted), Restored::Unfaithful);
    EXPECT_EQ(outside(u"SELECT count(*) FROM Patient"_s), "0");
}

}  // namespace
