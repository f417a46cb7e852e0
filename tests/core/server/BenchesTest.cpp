// What benches see of each other: who is at work and mixes what, whose mixer and record it is, what was added and deleted.
#include "ServerProxy.h"
#include "ServerStartTest.h"
#include "Waiting.h"
#include "core/BenchWatch.h"
#include "core/Health.h"
#include "core/RecordListPane.h"
#include "history/HistorySeal.h"
#include "platform/basic/Dates.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Engine.h"
#include "platform/data/Query.h"
#include "platform/widgets/RecordList.h"
#include "platform/widgets/UnderWay.h"
#include "screens/ListedTables.h"

#include <QTest>
#include <algorithm>

namespace sorvanto {
namespace {

using support::runOnServer;

class BenchesTest : public ServerStartTest {};

TEST_F(BenchesTest, TheHealthPageNamesTheBenchesInPlaceOfALock) {
    OtherBench other;
    openDB();
    openDB(other.context);
    const QString bench = currentWriter().person + u' ' + programVersion();
    QStringList names;
    for (const HealthLine& line : healthLines(context, {})) {
        names << line.name;
        EXPECT_NE(line.state, "Can not be read") << line.name.toStdString() << line.detail.toStdString();
        if (line.name == "Benches at work"_L1) {
            EXPECT_EQ(line.state, "2");
            EXPECT_EQ(line.detail, bench + u" · no mix under way\n"_s + bench + u" · no mix under way"_s);
        }
    }
    EXPECT_TRUE(names.contains(u"Benches at work"_s)) << names.join(u' ').toStdString();
    EXPECT_FALSE(names.contains(u"Lock of the program"_s));
}

TEST_F(BenchesTest, TheHealthPageTellsWhatEachBenchMixes) {
    OtherBench other;
    openDB();
    openDB(other.context)->execute(u"INSERT INTO Formula (frm_Name) VALUES ('Cooling Gel')"_s);
    const auto key = platform::number(context.connection->engine(), u"SELECT max(FormulaID) FROM Formula"_s);
    std::optional<BenchMix> mix = BenchMix{static_cast<int>(key), platform::now()};
    BenchWatch there(other.context, [&] { return mix; });
    const QString bench = currentWriter().person + u' ' + programVersion();
    const auto told = [this] {
        for (const HealthLine& line : healthLines(context, {})) {
            if (line.name == "Benches at work"_L1)
                return line.detail;
        }
        return QString();
    };
    const QString nothing = bench + u" · no mix under way\n"_s + bench;
    const QString since = platform::timeOfDay(platform::now().time());
    there.look();
    there.look();
    EXPECT_EQ(told(), nothing + u" · mixing Cooling Gel since "_s + since);
    mix = BenchMix{0, platform::now()};
    there.look();
    EXPECT_EQ(told(), nothing + u" · mixing since "_s + since) << "a formula that is not stored";
    mix.reset();
    there.look();
    EXPECT_EQ(told(), nothing + u" · no mix under way"_s);
}

TEST_F(BenchesTest, AMixIsToldOnTheWayOfALook) {
    openDB();
    support::ServerProxy proxy(support::serverAddress());
    OtherBench other;
    other.context.databaseLocation = [&] { return proxy.address(); };
    openDB(other.context);
    std::optional<BenchMix> mix;
    BenchWatch there(other.context, [&] { return mix; });
    there.look();
    for (const bool mixes : {false, true, true, false}) {
        mix = mixes ? std::optional(BenchMix{0, platform::now()}) : std::nullopt;
        proxy.takeTrips();
        there.look();
        EXPECT_EQ(proxy.takeTrips(), 1);
        EXPECT_EQ(benchesAtWork(context.connection->engine()).back().mix.has_value(), mixes);
    }
}

TEST_F(BenchesTest, NoLookGetsIntoWorkThatIsUnderWay) {
    support::ServerProxy proxy(support::serverAddress());
    OtherBench other;
    other.context.databaseLocation = [&] { return proxy.address(); };
    openDB(other.context);
    BenchWatch there(other.context, [] { return std::nullopt; });
    {
        const auto look = other.context.connection->engine().beginLook();
        const platform::UnderWay work;
        proxy.takeTrips();
        there.look();
        EXPECT_EQ(proxy.takeTrips(), 0);
    }
    there.look();
    EXPECT_EQ(proxy.takeTrips(), 2) << "the end of the span, and a look";
}

TEST_F(BenchesTest, AMixIsToldOverALineThatWasLostMeanwhile) {
    OtherBench other;
    openDB();
    openDB(other.context);
    BenchWatch there(other.context, [] { return BenchMix{0, platform::now()}; });
    there.look();
    support::runOnWholeServer(
        u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name LIKE '%@%'"_s);
    EXPECT_TRUE(support::waitFor([&] {
        other.context.connection->engine().lookAfter();
        there.look();
        const auto benches = benchesAtWork(context.connection->engine());
        return benches.size() == 2 &&
               std::count_if(benches.begin(), benches.end(),
                             [](const BenchAtWork& bench) { return bench.mix.has_value(); }) == 1;
    }));
}

TEST_F(BenchesTest, AMixerOfTheSameNumberAtAnotherBenchIsTold) {
    BatchBook mine(context);
    EXPECT_EQ(mine.otherBenchWith(u"SV0426"_s), "") << "no records are open, and none are opened";
    EXPECT_EQ(context.connection->state(), 0);
    openDB();
    EXPECT_EQ(mine.otherBenchWith(u"SV0426"_s), "");
    EXPECT_EQ(mine.otherBenchWith(u"SV0426"_s), "") << "asked once more";
    OtherBench second;
    openDB(second.context);
    EXPECT_EQ(second.log.otherBenchWith(u"SV0426"_s), currentWriter().person);
    EXPECT_EQ(second.log.otherBenchWith(u"SV0427"_s), "");
    EXPECT_EQ(mine.otherBenchWith(u"SV0427"_s), currentWriter().person);
    context.connection->close();
    EXPECT_TRUE(support::waitFor([&] { return second.log.otherBenchWith(u"SV0426"_s).isEmpty(); }))
        << "the program there has ended";
}

TEST_F(BenchesTest, ANameIsGivenUpAndKeptByAnother) {
    OtherBench second;
    platform::Engine &mine = openDB()->engine(), &theirs = openDB(second.context)->engine();
    EXPECT_TRUE(mine.keepName(u"x"_s));
    EXPECT_FALSE(theirs.keepName(u"x"_s));
    theirs.giveUpName(u"x"_s);
    EXPECT_FALSE(theirs.keepName(u"x"_s)) << "not theirs to give up";
    EXPECT_EQ(theirs.nameKeeper(u"x"_s), currentWriter().person + u' ' + programVersion());
    mine.giveUpName(u"x"_s);
    EXPECT_EQ(theirs.nameKeeper(u"x"_s), "");
    EXPECT_TRUE(theirs.keepName(u"x"_s));
    EXPECT_FALSE(mine.keepName(u"x"_s));
}

TEST_F(BenchesTest, ABatchThatAnotherBenchHasDeletedIsNotOfferedAgain) {
    OtherBench other;
    const auto theirs = openDB(other.context);
    const LogBook::Batch batch{u"SV0426'0012"_s, u"2026-03-07 14:05:09"_s};
    theirs->execute(u"INSERT INTO Log (log_Name, log_Date, log_Lot) VALUES ('Gel', '3/7/2026 2:05:09 PM', "
                    "'SV0426''0012')"_s);
    BatchBook mine(context);
    EXPECT_FALSE(mine.isArchived(batch));
    theirs->execute(u"DELETE FROM Log WHERE log_Name = 'Gel'"_s);
    EXPECT_TRUE(mine.isArchived(batch));
    EXPECT_FALSE(mine.isArchived({u"SV0426'0013"_s, batch.second}));
}

struct PatientScreen : ListedScreen {
    ListedTable listedTable() const override { return listedPatients(); }
    std::int16_t shownKey() const override { return 0; }
    SetPlace setPlace() const override { return {}; }
    bool canLeaveRecord() const override { return true; }
    void showRecord(std::int16_t) override {}
};

TEST_F(BenchesTest, TheRecordListShowsWhatAnotherBenchAdds) {
    openDB();
    OtherBench other;
    PatientScreen screen;
    platform::RecordList list;
    RecordListPane pane(context, list);
    BenchWatch others(context, [] { return std::nullopt; });
    QObject::connect(&others, &BenchWatch::looked, &pane, &RecordListPane::followOthers);
    pane.setScreen(&screen);
    pane.setShown(true);
    const auto rows = [&] { return list.model().rowCount(); };
    const auto stored = [] { return runOnServer(u"SELECT count(*) FROM \"Patient\""_s)[0][0].toInt(); };
    EXPECT_TRUE(support::waitFor([&] { return rows() == stored(); }));
    const int before = rows();
    openDB(other.context)->execute(u"INSERT INTO Patient (pat_LName) VALUES ('Doe')"_s);
    EXPECT_TRUE(support::waitFor([&] { return rows() == before + 1; })) << rows();
}

}  // namespace
}  // namespace sorvanto
