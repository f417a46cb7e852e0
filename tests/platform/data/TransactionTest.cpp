// Spans of changes: whole or not at all, nested, and nobody ends one in between.
#include "platform/data/Transaction.h"
#include "DataTest.h"
#include "platform/data/ReadAhead.h"
#include "platform/data/sqlite/FileEngine.h"

#include <sqlite3.h>

namespace platform {
namespace {

class TransactionTest : public DataTest {
protected:
    void setLot(const char* lot) const {
        connection->execute(
            u"UPDATE Chemical SET chm_Lot = '%1' WHERE ChemicalID = 1"_s.arg(QLatin1String(lot)));
    }
    QString lot() const { return stored(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s); }
    int exec(const char* sql) const { return sqlite3_exec(database(), sql, nullptr, nullptr, nullptr); }
    sqlite3* database() const { return sqlite::handleOf(connection->engine()); }
    Engine& engine() const { return connection->engine(); }
};

TEST_F(TransactionTest, CommittedIsKeptAndLeftIsTakenBack) {
    const QString before = lot();
    {
        const Transaction left(engine());
        setLot("LEFT");
    }
    EXPECT_EQ(lot(), before);
    {
        Transaction kept(engine());
        setLot("KEPT");
        EXPECT_EQ(lot(), before) << "not yet for others";
        kept.commit();
    }
    EXPECT_EQ(lot(), "KEPT");
    EXPECT_NE(sqlite3_get_autocommit(database()), 0);
}

TEST_F(TransactionTest, ALookIsOfOneMomentAndEndsByItself) {
    Connection other;
    other.open(source(location()));
    {
        const auto look = engine().beginLook();
        const QString before =
            rows(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s)->value(0).toString();
        EXPECT_EQ(failureOf([&] { other.execute(u"UPDATE Chemical SET chm_Lot = 'LATE'"_s); }).number(),
                  error::permissionDenied);
        EXPECT_EQ(rows(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s)->value(0).toString(), before);
        const auto inner = engine().beginLook();
    }
    EXPECT_NE(sqlite3_get_autocommit(database()), 0);
    other.execute(u"UPDATE Chemical SET chm_Lot = 'LATE'"_s);
    EXPECT_EQ(lot(), "LATE");
}

TEST_F(TransactionTest, WhatIsReadAheadIsOfOneMoment) {
    const QString first = u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s;
    const QString second = u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 2"_s;
    const QString before = stored(second);
    {
        const ReadAhead together(connection, {{second}});
        rows(first, CursorLocation::Client);
        EXPECT_FALSE(support::runSqlAtOnce(location(), u"UPDATE Chemical SET chm_Lot = 'LATE'"_s));
        EXPECT_EQ(rows(second, CursorLocation::Client)->value(0).toString(), before);
    }
    EXPECT_TRUE(support::runSqlAtOnce(location(), u"UPDATE Chemical SET chm_Lot = 'LATE'"_s));
    EXPECT_EQ(rows(second)->value(0).toString(), "LATE");
}

TEST_F(TransactionTest, AnInnerSpanIsTakenBackByItself) {
    {
        Transaction outer(engine());
        setLot("OUTER");
        {
            const Transaction left(engine());
            setLot("LEFT");
        }
        {
            Transaction kept(engine());
            connection->execute(u"UPDATE Chemical SET chm_Name = 'Kept' WHERE ChemicalID = 1"_s);
            kept.commit();
        }
        EXPECT_NE(exec("COMMIT"), SQLITE_OK) << "the guard is back after an inner span";
        outer.commit();
    }
    EXPECT_EQ(lot(), "OUTER");
    EXPECT_EQ(stored(u"SELECT chm_Name FROM Chemical WHERE ChemicalID = 1"_s), "Kept");
}

TEST_F(TransactionTest, NobodyElseEndsItOrAttachesAFile) {
    {
        const Transaction span(engine());
        setLot("LEFT");
        for (const char* control : {"COMMIT", "ROLLBACK", "END", "SAVEPOINT a", "/* */ COMMIT", "BEGIN",
                                    "ATTACH ':memory:' AS other"})
            EXPECT_EQ(exec(control), SQLITE_AUTH) << control;
    }
    EXPECT_NE(lot(), "LEFT");
    EXPECT_EQ(exec("BEGIN"), SQLITE_OK) << "outside of spans everything is as before";
    EXPECT_EQ(exec("COMMIT"), SQLITE_OK);
}

TEST_F(TransactionTest, ACommitThatMeetsALockIsToldAndNothingStaysOpen) {
    sqlite3_busy_timeout(database(), 0);
    sqlite3* reader = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &reader), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(reader, "BEGIN; SELECT count(*) FROM Chemical", nullptr, nullptr, nullptr),
              SQLITE_OK);
    const QString before = lot();
    const RuntimeError failure = failureOf([&] {
        Transaction span(engine(), u"the statement"_s);
        setLot("LOST");
        span.commit();
    });
    EXPECT_EQ(failure.number(), error::permissionDenied);
    EXPECT_NE(sqlite3_get_autocommit(database()), 0) << "later changes are kept by themselves again";
    sqlite3_close(reader);
    EXPECT_EQ(lot(), before);
    setLot("LATER");
    EXPECT_EQ(lot(), "LATER");
}

TEST_F(TransactionTest, ALockedFileIsRefusedAtTheBeginning) {
    sqlite3_busy_timeout(database(), 0);
    sqlite3* writer = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &writer), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(writer, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(failureOf([&] { const Transaction span(engine()); }).number(), error::permissionDenied);
    sqlite3_close(writer);
}

// A row of two tables: what one of them refuses, the other does not keep, and nothing stays open.
TEST_F(TransactionTest, ARowOfTwoTablesThatMeetsALockIsTakenBack) {
    const RecordsetPtr set = editable(
        u"SELECT FormChem.FormChemID, FormChem.fch_Qty, Chemical.ChemicalID, Chemical.chm_Lot FROM FormChem "
        u"INNER JOIN Chemical ON FormChem.ChemicalID = Chemical.ChemicalID WHERE FormChem.FormulaID = 1"_s);
    set->setValue(1, 7.5);
    set->setValue(3, u"LOCKED"_s);
    sqlite3_busy_timeout(database(), 0);
    sqlite3* reader = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &reader), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(reader, "BEGIN; SELECT count(*) FROM Chemical", nullptr, nullptr, nullptr),
              SQLITE_OK);
    EXPECT_EQ(failureOf([&] { set->update(); }).number(), error::permissionDenied);
    EXPECT_NE(sqlite3_get_autocommit(database()), 0);
    sqlite3_close(reader);
    EXPECT_EQ(stored(u"SELECT count(*) FROM Chemical WHERE chm_Lot = 'LOCKED'"_s), "0");
    EXPECT_EQ(stored(u"SELECT count(*) FROM FormChem WHERE fch_Qty = 7.5"_s), "0");
}

}  // namespace
}  // namespace platform
