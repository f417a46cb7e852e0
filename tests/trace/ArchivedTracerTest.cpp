// Where a lot went when older batches lie in an archive beside the file.
#include "db/Archive.h"
#include "trace/RecallList.h"
#include "trace/TracePharmacy.h"

namespace sorvanto {
namespace {

class ArchivedTraceTest : public TraceTest {
protected:
    void SetUp() override {
        TraceTest::SetUp();
        batch(1, u"B1"_s, u"01-05"_s, u"Powder L1"_s);
        batch(2, u"B2"_s, u"02-05"_s, u"Powder L1"_s);
        batch(3, u"B3"_s, u"08-05"_s, u"Base B1"_s);
        prescription(1, 1, u"01-06"_s);
        prescription(3, 2, u"08-06"_s);
        archiveDatabase(path(), path(u"archive.mdb"_s), QDate(2026, 7, 1));
    }
};

TEST_F(ArchivedTraceTest, TheWayLeadsThroughTheArchiveEachBatchOnce) {
    EXPECT_EQ(whereUsed(u"L1"_s), u"B3<B1 B2 B1"_s);
    const Tracer trace = tracer();
    EXPECT_EQ(trace.searched(), 3);
    EXPECT_TRUE(trace.absentArchives().empty());
    ASSERT_EQ(trace.archives().size(), 1U);
    EXPECT_EQ(trace.archives()[0].batches, 2);
    EXPECT_EQ(trace.archives()[0].last, QDate(2026, 2, 5));
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {});
    EXPECT_EQ(recall.batches[0].key.file, 0);
    EXPECT_EQ(recall.batches[2].key.file, 1);
    EXPECT_EQ(recall.prescriptions.size(), 2U);
}

TEST_F(ArchivedTraceTest, AFormulasBatchesAreFoundThereToo) {
    sql(u"UPDATE Log SET FormulaID = 4"_s);  // of those that stayed
    EXPECT_EQ(lots(tracer().madeOf(3, {})), u"B3<B1 B2 B1"_s) << "each batch once";
    EXPECT_EQ(lots(tracer().madeOf(4, {})), u"B3"_s);
}

TEST_F(ArchivedTraceTest, WhatIsInABatchIsFollowedIntoTheArchive) {
    QStringList in;
    for (const UsedIngredient& line : tracer().contents({0, 1}))  // the only one that stayed
        in << line.ingredient.name + u' ' + line.ingredient.lot + u'<' + line.base;
    EXPECT_EQ(in.join(u", "_s), u"Base B1<, Powder L1<B1"_s);
}

TEST_F(ArchivedTraceTest, WithinTheArchiveTheWayLeadsOn) {
    batch(7, u"B7"_s, u"01-20"_s, u"Base B8"_s);
    batch(8, u"B8"_s, u"01-10"_s, u"Base B1"_s);
    batch(9, u"B9"_s, u"09-10"_s, u"Base B7"_s);
    archiveDatabase(path(), path(u"second.mdb"_s), QDate(2026, 7, 2));
    EXPECT_EQ(whereUsed(u"L1"_s), u"B9<B7 B3<B1 B2 B7<B8 B8<B1 B1"_s) << "from one to another as well";
    EXPECT_EQ(tracer().searched(), 6);
}

TEST_F(ArchivedTraceTest, APatientOfBothIsOne) {
    prescription(1, 1, u"08-07"_s);  // of the batch that stayed
    const Tracer trace = tracer();
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {});
    EXPECT_EQ(recall.prescriptions.size(), 3U);
    EXPECT_EQ(recall.patients, 2);
    EXPECT_EQ(patientsToCall(recall).size(), 2U);
    EXPECT_EQ(lots(trace.dispensedTo(1, {})), u"B3 B1"_s);
    EXPECT_EQ(trace.dispensedTo(1, {{}, QDate(2026, 2, 1)}).hiddenPrescriptions, 1);
}

TEST_F(ArchivedTraceTest, ABatchThatLacksLinesThereIsNamed) {
    support::runSql(path(u"archive.mdb"_s), u"DELETE FROM LogChem WHERE LogID = 2"_s);
    const Tracer trace = tracer();
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {});
    EXPECT_EQ(lots(recall), u"B3<B1 B1"_s);
    ASSERT_EQ(recall.uncertain.size(), 1U);
    EXPECT_EQ(recall.uncertain[0].lot, u"B2"_s);
}

TEST_F(ArchivedTraceTest, APatientIsCalledWhereSheIsNow) {
    sql(u"UPDATE Patient SET pat_Phone = 'new', pat_LName = 'Kent' WHERE PatientID = 1"_s);
    const Tracer trace = tracer();
    const Recall recall = trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {QDate(), QDate(2026, 2, 1)});
    ASSERT_EQ(recall.prescriptions.size(), 1U);
    EXPECT_EQ(recall.prescriptions[0].phone, u"new"_s);
    EXPECT_EQ(recall.prescriptions[0].patientName, u"Kent, Margaret"_s);
}

TEST_F(ArchivedTraceTest, AnArchiveThatIsNotAtHandIsNamedWithItsDaysAndCount) {
    QFile::remove(path(u"archive.mdb"_s));
    const Tracer trace = tracer();
    ASSERT_EQ(trace.absentArchives().size(), 1U);
    EXPECT_EQ(trace.absentArchives()[0].first, QDate(2026, 1, 5));
    EXPECT_EQ(trace.absentArchives()[0].last, QDate(2026, 2, 5));
    EXPECT_EQ(trace.absentArchives()[0].batches, 2);
    EXPECT_EQ(trace.searched(), 1);
    EXPECT_EQ(whereUsed(u"L1"_s), QString());
}

TEST_F(ArchivedTraceTest, AnArchiveOfAnotherDatabaseOrABrokenFileIsNotTaken) {
    QFile::remove(path(u"archive.mdb"_s));
    folder.write(u"broken.mdb"_s, "not a database");
    QFile::copy(path(), path(u"copy.mdb"_s));  // holds a map, but of the one who gave off
    EXPECT_EQ(tracer().absentArchives().size(), 1U);
}

TEST_F(ArchivedTraceTest, OpenedItselfAnArchiveAnswersForAllItHolds) {
    auto connection = std::make_shared<platform::Connection>();
    connection->open(u"Data Source="_s + path(u"archive.mdb"_s));
    const Tracer trace(connection, {folder.path()});
    EXPECT_EQ(trace.searched(), 3);
    EXPECT_EQ(lots(trace.whereWent(trace.find(u"L1"_s).ingredients, {}, {})), u"B3<B1 B2 B1"_s);
}

}  // namespace
}  // namespace sorvanto
