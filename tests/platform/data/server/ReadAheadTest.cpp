// What comes along with another answer: one way there and back, and never another value than the statement itself would
// have had.
#include "platform/data/ReadAhead.h"

#include "../DataTest.h"
#include "ServerProxy.h"
#include "TestServer.h"
#include "platform/data/Engine.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "platform/data/Waiter.h"

#include <functional>
#include <optional>
#include <utility>

namespace platform {
namespace {

using Fault = support::ServerProxy::Fault;

const QString rowStatement = u"SELECT [FormulaID],[frm_Name] FROM [Formula] WHERE ([FormulaID] = 2)"_s;
const QString names = u"SELECT chm_Name FROM Chemical WHERE ChemicalID < 3"_s;
const QString lots = u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s;
const QString wrong = u"SELECT chm_Lot FROM NoTable WHERE ChemicalID = 1"_s;

class ReadAheadTest : public DataTest {
protected:
    void SetUp() override {
        DataTest::SetUp();
        proxy = std::make_unique<support::ServerProxy>(location());
        connection = std::make_shared<Connection>();
        connection->open(source(proxy->address()));
        proxy->takeTrips();
    }
    RecordsetPtr whole(const QString& statement) const { return rows(statement, CursorLocation::Client); }
    QString text(const QString& statement) const { return whole(statement)->value(0).toString(); }
    void openRow() const { EXPECT_EQ(rows(rowStatement)->value(0).toInt(), 2); }
    void setLot(const char* lot) const {
        connection->execute(
            u"UPDATE Chemical SET chm_Lot = '%1' WHERE ChemicalID = 1"_s.arg(QLatin1String(lot)));
    }

    std::unique_ptr<support::ServerProxy> proxy;
};

TEST_F(ReadAheadTest, ARowComesWithItsKey) {
    const ReadAhead first(connection, {});
    const RecordsetPtr row = rows(u"SELECT FormulaID, frm_Name FROM Formula WHERE FormulaID = 2"_s);
    EXPECT_EQ(row->value(1).toString(), stored(u"SELECT frm_Name FROM Formula WHERE FormulaID = 2"_s));
    EXPECT_EQ(proxy->takeTrips(), 1);
}

TEST_F(ReadAheadTest, OfNoUseOnceItIsOver) {
    std::optional<ReadAhead> first(std::in_place, connection, std::vector<ReadAhead::Set>());
    const RecordsetPtr row = rows(u"SELECT ChemicalID, chm_Lot FROM Chemical WHERE ChemicalID = 1"_s);
    first.reset();
    elsewhere(u"UPDATE Chemical SET chm_Lot = 'OTHER' WHERE ChemicalID = 1"_s);
    EXPECT_EQ(row->value(1).toString(), "OTHER");
    first.emplace(connection, std::vector<ReadAhead::Set>());
    const RecordsetPtr again = rows(u"SELECT ChemicalID, chm_Lot FROM Chemical WHERE ChemicalID = 1"_s);
    first.reset();
    first.emplace(connection, std::vector<ReadAhead::Set>());
    elsewhere(u"UPDATE Chemical SET chm_Lot = 'THIRD' WHERE ChemicalID = 1"_s);
    EXPECT_EQ(again->value(1).toString(), "THIRD") << "nor during the next one";
}

TEST_F(ReadAheadTest, AChangeOfItsOwnShowsInARowThatCameAlong) {
    const ReadAhead first(connection, {});
    const RecordsetPtr row = rows(u"SELECT ChemicalID, chm_Lot FROM Chemical WHERE ChemicalID = 1"_s);
    setLot("NEW");
    EXPECT_EQ(row->value(1).toString(), "NEW");
    const RecordsetPtr other = rows(u"SELECT ChemicalID, chm_Lot FROM Chemical WHERE ChemicalID = 1"_s);
    {
        Transaction span(connection->engine());
        setLot("TAKEN BACK");
        const RecordsetPtr within = rows(u"SELECT ChemicalID, chm_Lot FROM Chemical WHERE ChemicalID = 1"_s);
        EXPECT_EQ(within->value(1).toString(), "TAKEN BACK");
        EXPECT_EQ(other->value(1).toString(), "TAKEN BACK");
    }
    EXPECT_EQ(rows(u"SELECT ChemicalID, chm_Lot FROM Chemical WHERE ChemicalID = 1"_s)->value(1).toString(),
              "NEW");
}

TEST_F(ReadAheadTest, ALongListIsReadPieceByPiece) {
    elsewhere(u"INSERT INTO Chemical (chm_Name) SELECT 'c' || n FROM generate_series(1, 300) n"_s);
    const ReadAhead first(connection, {});
    const RecordsetPtr list = rows(u"SELECT ChemicalID, chm_Name FROM Chemical ORDER BY ChemicalID DESC"_s);
    for (int row = 0; row < 300; ++row)
        EXPECT_EQ(list->valueAt(row, 1).toString(), u"c%1"_s.arg(300 - row));
    EXPECT_EQ(proxy->takeTrips(), 3);
    for (int row = 299; row >= 0; --row)
        EXPECT_EQ(list->valueAt(row, 1).toString(), u"c%1"_s.arg(300 - row));
    EXPECT_EQ(proxy->takeTrips(), 0) << "also backwards";
}

TEST_F(ReadAheadTest, RowsWithoutAnOrderComeByTheirKeysHoweverTheyLie) {
    elsewhere(u"INSERT INTO Chemical (chm_Name) SELECT 'c' || n FROM generate_series(1, 300) n"_s);
    elsewhere(u"UPDATE Chemical SET chm_Notes = 'moved' WHERE ChemicalID < 100"_s);
    const ReadAhead first(connection, {});
    const RecordsetPtr list = rows(u"SELECT ChemicalID, chm_Name FROM Chemical"_s);
    for (int row = 1; row < 100; ++row)
        EXPECT_LT(list->valueAt(row - 1, 0).toInt(), list->valueAt(row, 0).toInt());
    EXPECT_EQ(list->valueAt(0, 1).toString(),
              stored(u"SELECT chm_Name FROM Chemical WHERE ChemicalID = 1"_s));
    EXPECT_EQ(proxy->takeTrips(), 1);
}

TEST_F(ReadAheadTest, SetsComeAlongWithARow) {
    const ReadAhead rest(connection, {{names}, {lots}});
    openRow();
    EXPECT_EQ(whole(names)->recordCount(), 2);
    EXPECT_EQ(text(lots), stored(lots));
    EXPECT_EQ(proxy->takeTrips(), 1);
    EXPECT_EQ(text(lots), stored(lots)) << "once";
    EXPECT_EQ(proxy->takeTrips(), 1);
}

TEST_F(ReadAheadTest, NothingOfThemOutlivesAChange) {
    const ReadAhead rest(connection, {{names}, {lots}});
    openRow();
    EXPECT_EQ(whole(names)->recordCount(), 2);
    setLot("CHANGED");
    EXPECT_EQ(text(lots), "CHANGED");
}

TEST_F(ReadAheadTest, NothingOfThemOutlivesASpanThatIsTakenBack) {
    setLot("KEPT");
    std::optional<Transaction> span(connection->engine());
    setLot("TAKEN BACK");
    const ReadAhead rest(connection, {{lots}});
    openRow();
    span.reset();
    EXPECT_EQ(text(lots), "KEPT");
}

TEST_F(ReadAheadTest, NothingOfThemOutlivesWhatReadsThem) {
    {
        const ReadAhead rest(connection, {{lots}});
        openRow();
    }
    elsewhere(u"UPDATE Chemical SET chm_Lot = 'OTHER' WHERE ChemicalID = 1"_s);
    EXPECT_EQ(text(lots), "OTHER");
}

TEST_F(ReadAheadTest, InAnotherOrderEachIsStillItself) {
    const ReadAhead rest(connection, {{names}, {lots}});
    openRow();
    EXPECT_EQ(text(lots), stored(lots));
    EXPECT_EQ(whole(names)->recordCount(), 2);
    EXPECT_EQ(proxy->takeTrips(), 3);
}

TEST_F(ReadAheadTest, OneThatFailsIsToldWhereItIsOpened) {
    for (const bool inSpan : {false, true}) {
        std::optional<Transaction> span;
        if (inSpan) {
            span.emplace(connection->engine());
            setLot("SPAN");
        }
        const ReadAhead rest(connection, {{names}, {wrong}, {lots}});
        openRow();
        EXPECT_EQ(whole(names)->recordCount(), 2);
        const RuntimeError failure = failureOf([&] { whole(wrong); });
        EXPECT_EQ(failure.number(), error::statement);
        EXPECT_EQ(failure.statement(), wrong);
        EXPECT_EQ(text(lots), inSpan ? u"SPAN"_s : stored(lots));
        if (span)
            span->commit();
    }
    EXPECT_EQ(text(lots), "SPAN") << "the span was left as it was";
}

/// Does something once the server is waited for.
class OnceWaiting : public Waiter {
public:
    explicit OnceWaiting(std::function<bool()> action) : m_action(std::move(action)) {}
    bool goesOn(int) override {
        if (m_action && m_action())
            m_action = nullptr;
        return true;
    }
    void ended() override {}
    void foundSaved() override {}

private:
    std::function<bool()> m_action;  ///< false where it is not the time yet
};

TEST_F(ReadAheadTest, AllOfThemAreOfTheMomentOfTheFirst) {
    const QString before = stored(lots);
    Connection owner;
    owner.open(source(support::serverOwnerAddress()));
    std::optional<Transaction> span(owner.engine());
    run(owner.engine(), u"LOCK TABLE Chemical IN ACCESS EXCLUSIVE MODE"_s);
    const auto change = [&] {
        if (stored(u"SELECT count(*) FROM pg_locks WHERE NOT granted"_s) == "0")
            return false;
        owner.execute(u"UPDATE Chemical SET chm_Lot = 'LATE' WHERE ChemicalID = 1"_s);
        span->commit();
        span.reset();
        return true;
    };
    connection = std::make_shared<Connection>();
    connection->setWaiter(std::make_shared<OnceWaiting>(change));
    connection->open(source(location()));
    const ReadAhead rest(connection, {{lots}});
    openRow();
    EXPECT_EQ(text(lots), before);
    EXPECT_EQ(text(lots), "LATE");
    setLot("OWN");
    EXPECT_EQ(text(lots), "OWN") << "nothing was left open";
}

TEST_F(ReadAheadTest, WithinASpanTheyAreOfTheSpan) {
    Transaction span(connection->engine());
    setLot("SPAN");
    proxy->takeTrips();
    const ReadAhead rest(connection, {{names}, {lots}});
    openRow();
    EXPECT_EQ(whole(names)->recordCount(), 2);
    EXPECT_EQ(text(lots), "SPAN");
    EXPECT_EQ(proxy->takeTrips(), 1);
    span.commit();
    EXPECT_EQ(text(lots), "SPAN");
}

TEST_F(ReadAheadTest, ALostLineLosesNoneOfThem) {
    const ReadAhead rest(connection, {{names}, {lots}});
    proxy->arm("frm_Name", Fault::LoseReply);
    openRow();
    proxy->takeTrips();
    EXPECT_EQ(whole(names)->recordCount(), 2);
    EXPECT_EQ(text(lots), stored(lots));
    EXPECT_EQ(proxy->takeTrips(), 0) << "they came along with what was asked once more";
    EXPECT_EQ(proxy->lines(), 2);
}

TEST_F(ReadAheadTest, AStatementThatIsNoneIsLeftToItself) {
    const ReadAhead rest(connection, {{u"DELETE FROM Log"_s}, {u"'"_s}});
    openRow();
    EXPECT_NE(stored(u"SELECT count(*) FROM Log"_s), "0");
}

TEST_F(ReadAheadTest, AFileHasNoneOfThem) {
    const ConnectionPtr file = std::make_shared<Connection>();
    sorvanto::createSample(path(u"other.mdb"_s));
    file->open(source(path(u"other.mdb"_s)));
    const ReadAhead rest(file, {{wrong}});
    const RecordsetPtr set = Recordset::create();
    set->open(lots, file, LockType::ReadOnly, CursorLocation::Client);
    EXPECT_EQ(set->recordCount(), 1);
}

}  // namespace
}  // namespace platform
