// Moving, finding, fields and types of a result set, in memory and by key.
#include "DataTest.h"

using namespace Qt::StringLiterals;

namespace platform {
namespace {

class RecordsetTest : public DataTest, public ::testing::WithParamInterface<CursorLocation> {
protected:
    RecordsetPtr set(const QString& statement) const { return rows(statement, GetParam()); }
};

class RecordsetByKey : public DataTest {};

INSTANTIATE_TEST_SUITE_P(ByLocation, RecordsetTest,
                         ::testing::Values(CursorLocation::Default, CursorLocation::Client));

TEST_P(RecordsetTest, MovesOverItsRows) {
    const RecordsetPtr patients = set(u"SELECT PatientID FROM Patient"_s);
    EXPECT_EQ(patients->recordCount(), 6);
    EXPECT_EQ(patients->position(), 0);
    EXPECT_FALSE(patients->bof() || patients->eof());
    patients->moveLast();
    EXPECT_EQ(patients->value(0).toLongLong(), 6);
    patients->moveNext();
    EXPECT_TRUE(patients->eof());
    EXPECT_FALSE(patients->bof());
    EXPECT_EQ(patients->position(), -1);
    EXPECT_EQ(failureOf([&] { patients->moveNext(); }).number(), error::noCurrentRecord);
    EXPECT_EQ(failureOf([&] { patients->value(0); }).number(), error::noCurrentRecord);
    patients->movePrevious();
    EXPECT_EQ(patients->position(), 5);
    patients->moveFirst();
    patients->movePrevious();
    EXPECT_TRUE(patients->bof());
    EXPECT_FALSE(patients->eof());
    EXPECT_EQ(failureOf([&] { patients->movePrevious(); }).number(), error::noCurrentRecord);
    patients->moveNext();
    EXPECT_EQ(patients->position(), 0);
    patients->setPosition(4);
    EXPECT_EQ(patients->value(0).toLongLong(), 5);
    EXPECT_EQ(failureOf([&] { patients->setPosition(6); }).number(), error::noCurrentRecord);
    EXPECT_EQ(failureOf([&] { patients->setPosition(-1); }).number(), error::noCurrentRecord);
    EXPECT_EQ(patients->position(), 4);
}

TEST_F(RecordsetByKey, AReadingOfAllRowsThatIsEndedLeavesTheSetClosed) {
    const QString manyRows =
        u"SELECT a.PatientID FROM (Patient AS a INNER JOIN Patient AS b ON a.PatientID > 0) INNER JOIN Patient AS c ON "
        "b.PatientID > 0"_s;
    const RecordsetPtr patients = Recordset::create();
    int asked = 0;
    patients->setGoesOn([&] { return ++asked < 3; });
    patients->open(manyRows, connection, LockType::ReadOnly, CursorLocation::Client);
    EXPECT_FALSE(patients->isOpen());
    EXPECT_EQ(asked, 3);
    patients->setGoesOn([&] { return true; });
    patients->open(manyRows, connection, LockType::ReadOnly, CursorLocation::Client);
    EXPECT_EQ(patients->recordCount(), 6 * 6 * 6);
}

TEST_P(RecordsetTest, AnEmptySetStandsAtBothEnds) {
    const RecordsetPtr none = set(u"SELECT LogID, log_Name FROM Log WHERE (LogID = 0)"_s);
    EXPECT_EQ(none->recordCount(), 0);
    EXPECT_TRUE(none->bof() && none->eof());
    EXPECT_NO_THROW(none->moveFirst());
    EXPECT_NO_THROW(none->moveLast());
    EXPECT_TRUE(none->bof() && none->eof());
    EXPECT_EQ(failureOf([&] { none->moveNext(); }).number(), error::noCurrentRecord);
    EXPECT_EQ(failureOf([&] { none->movePrevious(); }).number(), error::noCurrentRecord);
    EXPECT_EQ(failureOf([&] { none->value(u"LogID"_s); }).number(), error::noCurrentRecord);
    EXPECT_NO_THROW(none->find(u"LogID = 0"_s));
    EXPECT_TRUE(none->eof());
    EXPECT_EQ(none->fieldCount(), 2);
}

TEST_P(RecordsetTest, RowsWithoutAValueComeFirst) {
    elsewhere(u"UPDATE Patient SET pat_BDay = NULL WHERE PatientID IN (3, 5)"_s);
    const RecordsetPtr up = set(u"SELECT PatientID FROM Patient ORDER BY pat_BDay"_s);
    EXPECT_EQ(up->valueAt(0, 0).toInt(), 3);
    EXPECT_EQ(up->valueAt(1, 0).toInt(), 5);
    const RecordsetPtr down = set(u"SELECT PatientID FROM Patient ORDER BY pat_BDay DESC"_s);
    EXPECT_EQ(down->valueAt(4, 0).toInt(), 5);
    EXPECT_EQ(down->valueAt(5, 0).toInt(), 3);
}

TEST_P(RecordsetTest, FindsForwardFromTheCurrentRow) {
    const RecordsetPtr logs = set(u"SELECT LogID, log_Name, log_Date FROM Log"_s);
    logs->find(u"LogID = 7"_s);
    EXPECT_EQ(logs->position(), 6);
    logs->find(u"LogID = 7"_s);
    EXPECT_EQ(logs->position(), 6);
    logs->find(u"[log_name] = 'ketoprofen 10% gel'"_s);
    EXPECT_EQ(logs->position(), 11);
    logs->find(u"LogID = 7"_s);
    EXPECT_TRUE(logs->eof());
    logs->find(u"LogID = 1"_s);
    EXPECT_TRUE(logs->eof());
    logs->moveFirst();
    logs->find(u"LogID = 0"_s);
    EXPECT_TRUE(logs->eof());
    logs->moveFirst();
    logs->find(u"LogID = -1"_s);
    EXPECT_TRUE(logs->eof());
    logs->moveFirst();
    EXPECT_EQ(failureOf([&] { logs->find(u"Nothing = 1"_s); }).number(), error::itemNotFound);
    for (const char* criterion :
         {"", "LogID", "LogID =", "LogID > 1", "LogID = 1 OR LogID = 2", "LogID = LogID", "LogID = -'1'"})
        EXPECT_NE(failureOf([&] { logs->find(QString::fromLatin1(criterion)); }).number(), 0) << criterion;
    EXPECT_EQ(logs->position(), 0);
}

TEST_P(RecordsetTest, FindsNumbersAmongNumbersAlone) {
    const RecordsetPtr lines = set(
        u"SELECT FormChemID, fch_Qty, 'x' AS Label FROM FormChem UNION ALL SELECT 9901, 0.0625, '7' UNION ALL SELECT 9902, 4711, '7.0'"_s);
    for (const char* criterion : {"fch_Qty = 6.25e-2", "fch_Qty = 6.25E-2", "fch_Qty = 0.0625"}) {
        lines->moveFirst();
        lines->find(QString::fromLatin1(criterion));
        ASSERT_FALSE(lines->eof()) << criterion;
        EXPECT_EQ(lines->value(0).toInt(), 9901) << criterion;
    }
    lines->find(u"fch_Qty = 4.711e+3"_s);
    EXPECT_EQ(lines->value(0).toInt(), 9902);
    lines->moveFirst();
    lines->find(u"Label = 7"_s);
    EXPECT_TRUE(lines->eof()) << "a text is no number";
    lines->moveFirst();
    lines->find(u"Label = '7'"_s);
    EXPECT_FALSE(lines->eof());
}

TEST_P(RecordsetTest, EachQuestionAboutFieldsCanBeTheFirst) {
    const QString statement = u"SELECT LogID, log_Name FROM Log"_s;
    EXPECT_EQ(set(statement)->fieldInfo(1).name, u"log_Name"_s);
    EXPECT_EQ(set(statement)->fieldCount(), 2);
    EXPECT_EQ(set(statement)->fieldIndex(u"LOG_NAME"_s), 1);
    EXPECT_TRUE(set(statement)->hasField(u"log_name"_s));
    const RecordsetPtr closed = set(statement);
    closed->close();
    EXPECT_EQ(failureOf([&] { closed->fieldInfo(0); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { closed->fieldCount(); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { closed->fieldIndex(u"LogID"_s); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { closed->hasField(u"LogID"_s); }).number(), error::objectClosed);
}

TEST_P(RecordsetTest, KnowsItsFields) {
    const RecordsetPtr formulas = set(
        u"SELECT [FormulaID],[frm_Name] AS [Bezeichnung (kurz).],[frm_Quantity],[frm_AWP],[frm_Mix] FROM [Formula]"_s);
    const FieldInfo name = formulas->fieldInfo(1);
    EXPECT_EQ(name.name, u"Bezeichnung (kurz)."_s);
    EXPECT_EQ(name.kind, FieldKind::Text);
    EXPECT_EQ(name.definedSize, 100);
    EXPECT_EQ(name.baseTable, u"Formula"_s);
    EXPECT_EQ(name.baseColumn, u"frm_Name"_s);
    EXPECT_EQ(formulas->fieldInfo(0).kind, FieldKind::Long);
    EXPECT_EQ(formulas->fieldInfo(2).kind, FieldKind::Short);
    EXPECT_EQ(formulas->fieldInfo(3).kind, FieldKind::Money);
    EXPECT_EQ(formulas->fieldInfo(4).kind, FieldKind::LongText);
    EXPECT_EQ(formulas->fieldIndex(u"FORMULAid"_s), 0);
    EXPECT_FALSE(formulas->hasField(u"frm_Name"_s));
    EXPECT_EQ(failureOf([&] { formulas->fieldIndex(u"frm_Name"_s); }).number(), error::itemNotFound);
    EXPECT_EQ(failureOf([&] { formulas->value(5); }).number(), error::itemNotFound);
    EXPECT_EQ(failureOf([&] { formulas->value(-1); }).number(), error::itemNotFound);
    EXPECT_EQ(failureOf([&] { formulas->fieldInfo(9); }).number(), error::itemNotFound);
}

TEST_P(RecordsetTest, GivesTypedValues) {
    const RecordsetPtr lines = set(
        u"SELECT FormChem.FormChemID, FormChem.fch_Qty, FormChem.fch_QS, Chemical.chm_Cost, Chemical.chm_Name FROM Chemical INNER JOIN "
        u"FormChem ON Chemical.ChemicalID = FormChem.ChemicalID WHERE FormChem.FormulaID = 4"_s);
    EXPECT_EQ(lines->value(u"FCH_QTY"_s), QVariant(50.0));
    EXPECT_EQ(lines->fieldInfo(1).kind, FieldKind::Double);
    EXPECT_EQ(lines->value(2), QVariant(false));
    EXPECT_EQ(lines->fieldInfo(2).kind, FieldKind::Flag);
    EXPECT_EQ(lines->value(3).value<Currency>(), Currency::fromTenThousandths(240));
    EXPECT_EQ(lines->value(4), QVariant(u"Zinc Oxide"_s));
    const RecordsetPtr logs = set(u"SELECT log_Date, log_Quantity, log_Notes FROM Log"_s);
    EXPECT_EQ(logs->value(0), QVariant(QDateTime(QDate(2026, 8, 31), QTime(9, 12, 40), Qt::UTC)));
    EXPECT_EQ(logs->fieldInfo(0).kind, FieldKind::Date);
    EXPECT_EQ(logs->value(1), QVariant(qint64{100}));
    EXPECT_FALSE(set(u"SELECT pat_BDay FROM Patient WHERE PatientID = 5"_s)->value(0).isValid());
}

TEST_P(RecordsetTest, ComputedColumnsTakeTheTypeOfTheirValues) {
    const RecordsetPtr sums = set(
        u"SELECT Count(*) AS n, Sum(log_Cost) AS c, 'x' AS t, Sum(Log.log_Quantity) AS q, NULL AS e FROM Log"_s);
    EXPECT_EQ(sums->fieldInfo(0).kind, FieldKind::Long);
    EXPECT_EQ(sums->fieldInfo(1).kind, FieldKind::Double);
    EXPECT_EQ(sums->fieldInfo(2).kind, FieldKind::Text);
    EXPECT_EQ(sums->value(3), QVariant(qint64{1400}));
    EXPECT_FALSE(sums->value(4).isValid());
    EXPECT_TRUE(sums->fieldInfo(0).baseTable.isEmpty());
}

TEST_P(RecordsetTest, KeepsTheOrderThatWasAskedFor) {
    const RecordsetPtr names = set(u"SELECT frm_Name FROM Formula ORDER BY frm_Name"_s);
    QString last;
    for (; !names->eof(); names->moveNext()) {
        EXPECT_LE(last.compare(names->value(0).toString(), Qt::CaseInsensitive), 0);
        last = names->value(0).toString();
    }
    const RecordsetPtr logs =
        set(u"SELECT Log.LogID FROM Log WHERE ([Log.log_Name] Like 'hydro%') ORDER BY Log.log_Date DESC;"_s);
    EXPECT_EQ(logs->value(0).toLongLong(), 8);
}

TEST_F(RecordsetByKey, WithoutAnOrderKeysAscend) {
    connection->execute(u"UPDATE Log SET [log_Date] = '1/1/1990' WHERE [LogID] = 9"_s);
    const RecordsetPtr logs = rows(u"SELECT LogID FROM Log"_s);
    for (qint64 id = 1; id <= 12; ++id, logs->moveNext())
        EXPECT_EQ(logs->value(0).toLongLong(), id);
}

TEST_F(RecordsetByKey, OrdersByAnAliasToo) {
    const RecordsetPtr logs = rows(u"SELECT LogID, log_Date AS [Day] FROM Log ORDER BY [Day] DESC"_s);
    EXPECT_EQ(logs->value(0).toLongLong(), 12);
}

TEST_P(RecordsetTest, OtherRowsAreSeenWithoutMoving) {
    const RecordsetPtr logs = set(u"SELECT LogID, log_Lot FROM Log"_s);
    EXPECT_EQ(logs->valueAt(11, 1).toString(), "SV260012");
    EXPECT_EQ(logs->position(), 0);
    EXPECT_EQ(failureOf([&] { logs->valueAt(12, 1); }).number(), error::noCurrentRecord);
    EXPECT_EQ(failureOf([&] { logs->valueAt(0, 2); }).number(), error::itemNotFound);
}

TEST_P(RecordsetTest, RequeryReadsTheFileAgain) {
    const RecordsetPtr keys = set(u"SELECT PatientID FROM Patient"_s);
    keys->moveLast();
    connection->execute(u"INSERT INTO Patient ( [pat_LName] ) VALUES ('Zeller')"_s);
    EXPECT_EQ(keys->recordCount(), 6);
    keys->requery();
    EXPECT_EQ(keys->recordCount(), 7);
    EXPECT_EQ(keys->position(), 0);
}

TEST_F(RecordsetByKey, ARowDeletedByAnotherProgramIsTold) {
    const RecordsetPtr logs =
        rows(u"SELECT LogID, log_Lot FROM Log"_s, CursorLocation::Default, LockType::Pessimistic);
    elsewhere(u"DELETE FROM RXs; DELETE FROM Log WHERE LogID = 4"_s);
    EXPECT_EQ(logs->valueAt(3, 0).toLongLong(), 4);
    EXPECT_EQ(failureOf([&] { logs->valueAt(3, 1); }).number(), error::noCurrentRecord);
    EXPECT_EQ(logs->valueAt(4, 1).toString(), "SV260005");
}

TEST_F(RecordsetByKey, AWalkOverManyRowsWithLooksAsideSeesEachAsItIs) {
    for (int i = 7; i <= 1'500; ++i)
        connection->execute(u"INSERT INTO Patient ( [pat_LName] ) VALUES ('Name %1')"_s.arg(i));
    connection->execute(u"DELETE FROM Patient WHERE PatientID = 700"_s);
    const RecordsetPtr patients = rows(u"SELECT pat_LName FROM Patient WHERE PatientID > 6"_s);
    const auto name = [](std::int64_t row) { return u"Name %1"_s.arg(row + (row < 693 ? 7 : 8)); };
    ASSERT_EQ(patients->recordCount(), 1'493);
    for (; !patients->eof(); patients->moveNext()) {
        const std::int64_t row = patients->position();
        ASSERT_EQ(patients->value(0).toString(), name(row));
        if (row % 100 == 99) {
            ASSERT_EQ(patients->valueAt(row / 2, 0).toString(), name(row / 2));
        }
    }
}

TEST_F(RecordsetByKey, WalkingReadsAheadWithoutALockAndPastADeletedRow) {
    const RecordsetPtr logs = rows(u"SELECT LogID, log_Lot FROM Log"_s);
    elsewhere(u"DELETE FROM RXs; DELETE FROM Log WHERE LogID = 4"_s);
    for (; !logs->eof(); logs->moveNext()) {
        const qint64 key = logs->value(0).toLongLong();
        if (key == 4)
            EXPECT_EQ(failureOf([&] { logs->value(1); }).number(), error::noCurrentRecord);
        else
            EXPECT_EQ(logs->value(1).toString(), u"SV26%1"_s.arg(key, 4, 10, '0'_L1));
        store().takeAll();
    }
}

TEST_P(RecordsetTest, AClosedSetRefusesEverything) {
    const RecordsetPtr logs = set(u"SELECT LogID, log_Lot FROM Log"_s);
    EXPECT_EQ(failureOf([&] { logs->open(u"SELECT LogID FROM Log"_s, connection); }).number(),
              error::invalidProcedureCall);
    logs->close();
    EXPECT_FALSE(logs->isOpen());
    EXPECT_EQ(failureOf([&] { logs->recordCount(); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { logs->moveFirst(); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { logs->value(0); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { logs->eof(); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { logs->close(); }).number(), error::objectClosed);
    logs->open(u"SELECT LogID FROM Log"_s, connection);
    EXPECT_EQ(logs->recordCount(), 12);
}

TEST_F(RecordsetByKey, AfterTheConnectionIsClosedOnlyMemoryIsLeft) {
    const RecordsetPtr keys = rows(u"SELECT LogID, log_Lot FROM Log"_s);
    const RecordsetPtr all = rows(u"SELECT LogID, log_Lot FROM Log"_s, CursorLocation::Client);
    connection->close();
    EXPECT_EQ(keys->value(0).toLongLong(), 1);
    EXPECT_EQ(failureOf([&] { keys->value(1); }).number(), error::objectClosed);
    EXPECT_EQ(all->value(1).toString(), "SV260001");
    EXPECT_EQ(failureOf([&] { all->requery(); }).number(), error::objectClosed);
}

TEST_P(RecordsetTest, TellsItsListeners) {
    const RecordsetPtr logs = set(u"SELECT LogID FROM Log"_s);
    int calls = 0;
    int others = 0;
    int second = 0;
    const int first = logs->onChange([&] {
        ++calls;
        logs->removeCallback(second);
    });
    second = logs->onChange([&] { ++others; });
    logs->moveNext();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(others, 0);
    logs->removeCallback(first);
    logs->moveNext();
    EXPECT_EQ(calls, 1);
}

TEST_P(RecordsetTest, OpensAFullTable) {
    const QString big = path(u"big.mdb"_s);
    sorvanto::createSample(big, sorvanto::mostRows);
    connection->close();
    connection->open(source(big));
    const RecordsetPtr logs = set(
        u"SELECT Log.LogID, Log.log_Name as [Name], Log.log_Results as [Results] FROM Log WHERE ([Log.log_Name] Like '%') ORDER BY Log.log_Date DESC;"_s);
    EXPECT_EQ(logs->recordCount(), 32767);
    logs->moveLast();
    EXPECT_FALSE(logs->value(2).toString().isEmpty());
    logs->moveFirst();
    logs->find(u"LogID = 32767"_s);
    EXPECT_FALSE(logs->eof());
}

}  // namespace
}  // namespace platform
