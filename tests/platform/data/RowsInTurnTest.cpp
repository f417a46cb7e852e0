// Rows that are added together: as if each were added by itself, whichever of them is refused.
#include "DataTest.h"
#include "platform/data/Transaction.h"

#include <optional>

namespace platform {
namespace {

enum class Within { Nothing, ASpan };

class RowsInTurn : public DataTest, public ::testing::WithParamInterface<std::tuple<Within, CursorLocation>> {
protected:
    using Rows = std::vector<std::vector<QVariant>>;

    void SetUp() override {
        DataTest::SetUp();
        lines = rows(statement, std::get<CursorLocation>(GetParam()), LockType::Optimistic);
        before = lines->recordCount();
        lastKey = stored(u"SELECT max(LogChemID) FROM LogChem"_s).toLongLong();
        if (std::get<Within>(GetParam()) == Within::ASpan)
            m_span.emplace(connection->engine());
    }
    void add(const Rows& added) {
        lines->addRows({u"LogID"_s, u"ChemicalID"_s, u"lch_Name"_s, u"lch_QTY"_s}, added);
    }
    void commit() {
        if (m_span)
            m_span->commit();
    }
    static std::vector<QVariant> row(const QString& name, const QVariant& log = 12,
                                     const QVariant& quantity = 1.5) {
        return {log, u"4"_s, name, quantity};
    }
    /// Of the rows that the table has got since.
    QString added() const {
        return stored(
            u"SELECT LogChemID - %1, LogID, ChemicalID, lch_Name, lch_QTY FROM LogChem WHERE LogChemID > "
            "%1 ORDER BY LogChemID"_s.arg(lastKey));
    }
    std::int64_t newestKey() const { return rows(u"SELECT @@IDENTITY;"_s)->value(0).toLongLong(); }

    const QString statement =
        u"SELECT LogChemID, LogID, ChemicalID, lch_Name, lch_QTY FROM LogChem WHERE LogID = 12"_s;
    RecordsetPtr lines;
    std::int64_t before = 0, lastKey = 0;

private:
    std::optional<Transaction> m_span;
};

INSTANTIATE_TEST_SUITE_P(Each, RowsInTurn,
                         ::testing::Combine(::testing::Values(Within::Nothing, Within::ASpan),
                                            ::testing::Values(CursorLocation::Default,
                                                              CursorLocation::Client)));

TEST_P(RowsInTurn, StandInTheirOrderWithKeysWithoutAGap) {
    constexpr int count = 130;  // more than one message to a server
    Rows all;
    for (int i = 0; i < count; ++i)
        all.push_back(row(u"Line %1"_s.arg(i)));
    int heard = 0;
    lines->onChange([&] { ++heard; });
    add(all);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(lines->recordCount(), before + count);
    EXPECT_EQ(lines->position(), before + count - 1);
    EXPECT_EQ(newestKey(), lastKey + count);
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(lines->valueAt(before + i, 0).toLongLong(), lastKey + 1 + i);
        EXPECT_EQ(lines->valueAt(before + i, 3).toString(), u"Line %1"_s.arg(i));
    }
    commit();
    EXPECT_EQ(stored(u"SELECT count(*), max(LogChemID), min(lch_QTY) FROM LogChem WHERE LogChemID > %1"_s.arg(
                  lastKey)),
              u"%1|%2|1.5"_s.arg(count).arg(lastKey + count));
    EXPECT_EQ(added().section('\n', -1), u"%1|12|4|Line 129|1.5"_s.arg(count));
}

TEST_P(RowsInTurn, OfARefusedOneThoseInFrontStayAndNoKeyIsLost) {
    const RuntimeError failure = failureOf([&] {
        add({row(u"one"_s), row(u"two"_s), row(u"none"_s, 999), row(u"behind"_s)});
    });
    EXPECT_EQ(failure.number(), error::general);
    EXPECT_EQ(failure.statement(), statement);
    EXPECT_EQ(lines->recordCount(), before + 2);
    EXPECT_FALSE(lines->hasPendingChanges());
    add({row(u"three"_s)});
    EXPECT_EQ(newestKey(), lastKey + 3);
    commit();
    EXPECT_EQ(added(), "1|12|4|one|1.5\n2|12|4|two|1.5\n3|12|4|three|1.5");
}

TEST_P(RowsInTurn, AValueThatDoesNotFitEndsThemInItsPlace) {
    const RuntimeError failure = failureOf([&] {
        add({row(u"one"_s), row(u"none"_s, 12, u"x"_s), row(u"behind"_s)});
    });
    EXPECT_EQ(failure.number(), error::typeMismatch);
    EXPECT_EQ(lines->recordCount(), before + 1);
    commit();
    EXPECT_EQ(added(), "1|12|4|one|1.5");
}

TEST_P(RowsInTurn, WhatIsRefusedBeforeTheFirstIsNothing) {
    EXPECT_EQ(failureOf([&] { lines->addRows({u"no such field"_s}, {{1}}); }).number(), error::itemNotFound);
    EXPECT_EQ(failureOf([&] { rows(statement)->addRows({u"LogID"_s}, {{12}}); }).number(),
              error::notUpdatable);
    add({});
    commit();
    EXPECT_EQ(added(), "");
    EXPECT_EQ(lines->recordCount(), before);
}

TEST_P(RowsInTurn, OfADisconnectedSetStayInMemory) {
    lines->disconnect();
    add({row(u"one"_s), row(u"two"_s)});
    EXPECT_EQ(lines->recordCount(), before + 2);
    EXPECT_EQ(lines->valueAt(before, 3).toString(), "one");
    commit();
    EXPECT_EQ(added(), "");
}

}  // namespace
}  // namespace platform
