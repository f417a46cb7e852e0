// Edits of a result set: through joins to the tables, new rows, refusals, and sets cut off from the file.
#include "DataTest.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

const QString linesOfFormula =
    u"SELECT Chemical.chm_Name, Chemical.chm_Units, FormChem.fch_Qty, FormChem.fch_Active, FormChem.fch_QS, FormChem.FormChemID, "
    u"Chemical.chm_Cost, FormChem.ChemicalID FROM Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID WHERE "
    u"FormChem.FormulaID = 1"_s;
const QString prescriptions =
    u"SELECT RXs.RXsID, Log.log_Name, Log.log_Date, RXs.rxs_QTY, RXs.rxs_Cost, RXs.rxs_Price, RXs.rxs_Consult, RXs.rxs_Doctor, "
    u"RXs.rxs_Date, Log.LogID FROM Patient INNER JOIN (Log INNER JOIN RXs ON Log.LogID = RXs.LogID) ON Patient.PatientID = RXs.PatientID "
    u"WHERE (((Patient.PatientID)=1))"_s;
const QString frozenLines =
    u"SELECT LogChemID, LogID, ChemicalID, lch_Name, lch_Cost, lch_QTY  FROM LogChem WHERE (LogID = 12)"_s;

class EditTest : public DataTest {};

TEST_F(EditTest, ACellReachesItsTableAtUpdate) {
    const RecordsetPtr lines = editable(linesOfFormula);
    lines->moveNext();
    lines->setValue(u"fch_QTY"_s, u"2.5"_s);
    EXPECT_TRUE(lines->hasPendingChanges());
    EXPECT_EQ(lines->value(2), QVariant(2.5));
    EXPECT_EQ(stored(u"SELECT fch_Qty FROM FormChem WHERE FormChemID = 2"_s), "2.0");
    lines->update();
    EXPECT_FALSE(lines->hasPendingChanges());
    EXPECT_EQ(lines->position(), 1);
    EXPECT_EQ(lines->value(2), QVariant(2.5));
    EXPECT_EQ(stored(u"SELECT fch_Qty FROM FormChem WHERE FormChemID IN (1, 2, 3)"_s), "1.0\n2.5\n97.0");
}

TEST_F(EditTest, MovingWritesByItself) {
    const RecordsetPtr lines = editable(linesOfFormula);
    lines->setValue(u"fch_QS"_s, true);
    lines->setValue(u"fch_Active"_s, u"False"_s);
    lines->moveNext();
    EXPECT_EQ(stored(u"SELECT fch_QS, fch_Active FROM FormChem WHERE FormChemID = 1"_s), "1|0");
}

TEST_F(EditTest, ReachesThroughNestedJoins) {
    const RecordsetPtr list = editable(prescriptions);
    EXPECT_EQ(list->fieldInfo(7).baseTable, u"RXs"_s);
    list->moveLast();
    list->setValue(u"rxs_Doctor"_s, u"Dr. O'Neill"_s);
    list->setValue(u"rxs_Price"_s, u"12.34567"_s);
    list->setValue(u"rxs_Date"_s, u"11/21/2026"_s);
    list->setValue(u"rxs_Consult"_s, QVariant());
    list->update();
    EXPECT_EQ(list->value(5).value<Currency>().toText(), "12.3457");
    EXPECT_EQ(
        stored(u"SELECT rxs_Doctor, rxs_Price, rxs_Date, rxs_Consult, rxs_QTY FROM RXs WHERE RXsID = 7"_s),
        "Dr. O'Neill|12.3457|2026-11-21 00:00:00|NULL|50.0");
}

TEST_F(EditTest, TwoTablesAreWrittenTogetherOrNotAtAll) {
    const RecordsetPtr list = editable(prescriptions);
    list->setValue(u"log_Name"_s, u"Renamed"_s);
    list->setValue(u"rxs_QTY"_s, 7);
    list->update();
    EXPECT_EQ(stored(u"SELECT log_Name, rxs_QTY FROM Log JOIN RXs USING (LogID) WHERE RXsID = 1"_s),
              "Renamed|7.0");
    store().breakTable(u"RXs"_s);
    list->setValue(u"log_Name"_s, u"Again"_s);
    list->setValue(u"rxs_QTY"_s, 8);
    EXPECT_NE(failureOf([&] { list->update(); }).number(), 0);
    EXPECT_EQ(stored(u"SELECT log_Name, rxs_QTY FROM Log JOIN RXs USING (LogID) WHERE RXsID = 1"_s),
              "Renamed|7.0");
    EXPECT_EQ(list->value(1).toString(), "Renamed");
}

TEST_F(EditTest, WithoutItsKeyATableCannotBeWritten) {
    const RecordsetPtr lines = editable(linesOfFormula);
    lines->setValue(u"chm_Cost"_s, 1);
    const RuntimeError failure = failureOf([&] { lines->update(); });
    EXPECT_TRUE(failure.description().contains("key of table Chemical"_L1));
    EXPECT_FALSE(lines->hasPendingChanges());
    EXPECT_EQ(lines->value(u"chm_Cost"_s).value<Currency>().toText(), "2.85");
}

TEST_F(EditTest, ARefusedEditShowsTheStoredValueAgain) {
    const RecordsetPtr lines = editable(linesOfFormula);
    EXPECT_EQ(failureOf([&] { lines->setValue(u"fch_Qty"_s, u"two"_s); }).number(), error::typeMismatch);
    EXPECT_FALSE(lines->hasPendingChanges());
    lines->setValue(u"ChemicalID"_s, 9999);
    const RuntimeError failure = failureOf([&] { lines->moveNext(); });
    EXPECT_EQ(failure.number(), error::general);
    EXPECT_EQ(failure.statement(), linesOfFormula);
    EXPECT_EQ(lines->position(), 0);
    EXPECT_EQ(lines->value(u"ChemicalID"_s).toLongLong(), 1);
    EXPECT_NO_THROW(lines->moveNext());
}

TEST_F(EditTest, ARowDeletedMeanwhileIsTold) {
    const RecordsetPtr lines = editable(linesOfFormula);
    elsewhere(u"DELETE FROM FormChem WHERE FormChemID = 1"_s);
    lines->setValue(2, 5);
    EXPECT_EQ(failureOf([&] { lines->update(); }).number(), error::noCurrentRecord);
    EXPECT_EQ(lines->value(2), QVariant(1.0));
}

TEST_F(EditTest, CancelForgetsPendingChanges) {
    const RecordsetPtr lines = editable(linesOfFormula);
    lines->setValue(2, 5);
    lines->cancelUpdate();
    EXPECT_EQ(lines->value(2), QVariant(1.0));
    lines->addNew();
    lines->cancelUpdate();
    EXPECT_EQ(lines->recordCount(), 3);
    EXPECT_EQ(lines->position(), 0);
}

TEST_F(EditTest, ReadOnlySetsAndComputedColumnsAreNotChanged) {
    const RecordsetPtr reading = rows(linesOfFormula, CursorLocation::Client);
    EXPECT_NE(failureOf([&] { reading->setValue(2, 5); }).number(), 0);
    EXPECT_NE(failureOf([&] { reading->addNew(); }).number(), 0);
    const RecordsetPtr sum = editable(u"SELECT LogID, log_Cost * 2 AS double_cost FROM Log"_s);
    EXPECT_NE(failureOf([&] { sum->setValue(1, 5); }).number(), 0);
    EXPECT_FALSE(sum->hasPendingChanges());
}

class NewRows : public EditTest, public ::testing::WithParamInterface<CursorLocation> {};

INSTANTIATE_TEST_SUITE_P(ByLocation, NewRows,
                         ::testing::Values(CursorLocation::Default, CursorLocation::Client));

TEST_P(NewRows, AreInsertedAndBecomeTheCurrentRow) {
    const RecordsetPtr lines = rows(frozenLines, GetParam(), LockType::Optimistic);
    const std::int64_t before = lines->recordCount();
    for (int line = 1; line <= 3; ++line) {
        lines->addNew();
        EXPECT_EQ(lines->position(), -1);
        EXPECT_FALSE(lines->eof());
        EXPECT_FALSE(lines->value(3).isValid());
        lines->setValue(u"LogID"_s, 12);
        lines->setValue(u"ChemicalID"_s, u"4"_s);
        lines->setValue(u"lch_Name"_s, u"Line '%1'"_s.arg(line));
        lines->setValue(u"lch_Cost"_s, QVariant::fromValue(Currency::fromText(u"1.2345"_s)));
        lines->setValue(u"lch_qty"_s, u"3.086"_s);
        EXPECT_EQ(lines->recordCount(), before + line - 1);
        lines->update();
        EXPECT_EQ(lines->recordCount(), before + line);
        EXPECT_EQ(lines->position(), before + line - 1);
        EXPECT_EQ(lines->value(u"LogChemID"_s).toLongLong(),
                  stored(u"SELECT max(LogChemID) FROM LogChem"_s).toLongLong());
    }
    EXPECT_EQ(
        stored(
            u"SELECT LogID, ChemicalID, lch_Name, lch_Cost, lch_QTY FROM LogChem ORDER BY LogChemID DESC LIMIT 1"_s),
        "12|4|Line '3'|1.2345|3.086");
    lines->moveFirst();
    EXPECT_EQ(lines->value(3).toString(), "Ketoprofen");
    EXPECT_EQ(lines->valueAt(before + 1, 3).toString(), "Line '2'");
}

TEST_P(NewRows, ARefusedOneIsDropped) {
    const RecordsetPtr lines = rows(frozenLines, GetParam(), LockType::Optimistic);
    lines->addNew();
    lines->setValue(u"LogID"_s, 999);
    EXPECT_EQ(failureOf([&] { lines->update(); }).number(), error::general);
    EXPECT_FALSE(lines->hasPendingChanges());
    EXPECT_EQ(lines->recordCount(), 3);
    EXPECT_EQ(lines->position(), 0);
    lines->addNew();
    EXPECT_NE(failureOf([&] { lines->update(); }).number(), 0);
    EXPECT_EQ(stored(u"SELECT count(*) FROM LogChem WHERE LogID NOT BETWEEN 1 AND 12"_s), "0");
}

TEST_P(NewRows, EditsOfStoredRowsReachTheFile) {
    const RecordsetPtr lines = rows(frozenLines, GetParam(), LockType::Optimistic);
    lines->setValue(u"lch_Name"_s, u"x"_s);
    EXPECT_EQ(lines->value(3).toString(), "x");
    lines->update();
    EXPECT_EQ(lines->value(3).toString(), "x");
    EXPECT_EQ(stored(u"SELECT count(*) FROM LogChem WHERE lch_Name = 'x'"_s), "1");
}

TEST_P(NewRows, ADisconnectedSetStaysInMemory) {
    const RecordsetPtr lines = rows(frozenLines, GetParam(), LockType::Optimistic);
    lines->disconnect();
    EXPECT_FALSE(lines->isConnected());
    lines->setValue(u"lch_QTY"_s, u"3.086"_s);
    lines->setValue(u"lch_Cost"_s, u"12.35"_s);
    EXPECT_FALSE(lines->hasPendingChanges());
    lines->moveNext();
    lines->movePrevious();
    EXPECT_EQ(lines->value(u"lch_QTY"_s), QVariant(3.086));
    EXPECT_EQ(lines->value(u"lch_Cost"_s).value<Currency>().tenThousandths(), 123500);
    for (const char* text : {"0-1.5", "", "x"}) {
        EXPECT_EQ(failureOf([&] { lines->setValue(u"lch_QTY"_s, QString::fromLatin1(text)); }).number(),
                  error::typeMismatch);
        EXPECT_EQ(failureOf([&] { lines->setValue(u"lch_Cost"_s, QString::fromLatin1(text)); }).number(),
                  error::typeMismatch);
    }
    EXPECT_EQ(lines->value(u"lch_QTY"_s), QVariant(3.086));
    lines->addNew();
    lines->setValue(u"lch_Name"_s, u"in memory"_s);
    lines->update();
    EXPECT_EQ(lines->recordCount(), 4);
    EXPECT_EQ(failureOf([&] { lines->requery(); }).number(), error::objectClosed);
    connection->close();
    lines->moveFirst();
    EXPECT_EQ(lines->value(3).toString(), "Ketoprofen");
    EXPECT_EQ(stored(u"SELECT count(*) FROM LogChem WHERE LogID = 12 AND lch_QTY <> 3.086"_s), "3");
}

TEST_F(EditTest, ValuesAreConvertedToTheColumn) {
    const RecordsetPtr formula =
        editable(u"SELECT FormulaID, frm_Quantity, frm_AWP, frm_Name FROM Formula WHERE FormulaID = 1"_s);
    formula->disconnect();
    formula->setValue(1, 2.5);
    EXPECT_EQ(formula->value(1), QVariant(qint64{2}));
    formula->setValue(1, u"3.5"_s);
    EXPECT_EQ(formula->value(1), QVariant(qint64{4}));
    EXPECT_EQ(failureOf([&] { formula->setValue(1, 40000); }).number(), error::dataMismatch);
    EXPECT_EQ(failureOf([&] { formula->setValue(0, 3e9); }).number(), error::dataMismatch);
    EXPECT_EQ(failureOf([&] { formula->setValue(2, 1e30); }).number(), error::dataMismatch);
    formula->setValue(2, 2.00005);
    EXPECT_EQ(formula->value(2).value<Currency>().tenThousandths(), 20000);
    formula->setValue(3, 12.5);
    EXPECT_EQ(formula->value(3), QVariant(u"12.5"_s));
    formula->setValue(1, QVariant());
    EXPECT_FALSE(formula->value(1).isValid());
}

TEST_F(EditTest, ListenersHearOfEdits) {
    const RecordsetPtr lines = editable(linesOfFormula);
    int calls = 0;
    lines->onChange([&] { ++calls; });
    lines->setValue(2, 5);
    EXPECT_EQ(calls, 1);
    lines->update();
    EXPECT_EQ(calls, 2);
    lines->update();
    EXPECT_EQ(calls, 2);
    lines->setValue(7, 9999);
    calls = 0;
    EXPECT_NE(failureOf([&] { lines->update(); }).number(), 0);
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace platform
