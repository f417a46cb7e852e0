// A batch from Make to its signatures, under every failure of the disk, and what the next start makes of it: whole
// in the log or on offer, never both, never neither.
#include "Campaign.h"
#include "Disk.h"
#include "Settle.h"
#include "mixer/ctlSorvanto.h"

#include <array>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <numeric>

using namespace Qt::StringLiterals;

namespace fault {
namespace {

// Of the normal run.
constexpr std::size_t mostBatchKills = 36;
constexpr std::size_t mostHalves = 2;
constexpr std::size_t mostKillsAgain = 10;
constexpr std::size_t mostBatchCuts = 32;
constexpr std::size_t mostBatchFailures = 20;

// Of a long run: behind each of these kills stand each of those, and each is a start of the whole program.
constexpr std::size_t mostHalvesOfLongRun = 12;
constexpr std::size_t mostKillsAgainOfLongRun = 40;

constexpr int preparationsBefore = 11;
const QString lot = u"SV04260012"_s;
constexpr std::int64_t longerThanTheMix = 600'000;

void prepare(World& world) {
    world.click(u"cmdFormulas"_s);
    world.search(u"Cooling Gel"_s);
    ASSERT_TRUE(sorvanto::test::waitFor([&] { return !world.line.transcript.isEmpty(); }));
}

/// Waits for what shall happen, or for a word of what keeps it from happening.
template <class Condition>
bool happens(World& world, const QStringList* usual, Condition condition) {
    bool happened = false;
    EXPECT_TRUE(sorvanto::test::waitFor([&] {
        happened = condition();
        return happened || (usual && !world.toldBeyond(*usual).isEmpty());
    })) << "hangs";
    return happened || condition();
}

/// Make, start, mix, sign. usual: what is told when nothing fails; without it no word ends the waiting.
void makeBatch(World& world, const QStringList* usual) {
    world.click(u"cmdMake"_s);
    if (!happens(world, usual, [&] { return world.panelButton("mixerStart")->isEnabled(); }))
        return;
    support::settle();  // nothing is on its way: the start goes out at once
    world.panelButton("mixerStart")->click();
    if (!happens(world, usual, [&] { return world.isShown("mixerStop"); }))
        return;
    world.line.run(longerThanTheMix);
    // A word said meanwhile does not end this: the mix has ended, and is signed or waits.
    EXPECT_TRUE(sorvanto::test::waitFor([&] { return world.user.signings > 0; })) << "hangs";
}

/// What the disk holds of the batch, and what is offered.
struct Found {
    std::string row;  ///< its columns, without the key; of two rows both
    std::string lines;
    int offers = 0;

    bool none() const { return row.empty() && lines.empty(); }
    std::string text() const { return row + "\n" + lines + "\n" + std::to_string(offers) + " offers"; }
};

/// Of the batch with this test's lot.
Found logged(const QString& database) {
    const auto rows = [&](const char* query) {
        return str(support::rowsText(support::runSql(database, QString::fromLatin1(query).arg(lot))));
    };
    return {
        rows("SELECT FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType, log_Quantity,"
             " log_JarSize, log_NDC, log_Date, log_Lot, log_Initials, log_Verified, log_Results, log_Version,"
             " log_AWP, log_Cost, log_Notes, log_Mix FROM Log WHERE log_Lot = '%1'"),
        rows("SELECT ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP, lch_Supplier,"
             " lch_Form, lch_GUID, lch_QTY FROM LogChem JOIN Log ON LogChem.LogID = Log.LogID"
             " WHERE log_Lot = '%1' ORDER BY LogChemID"),
        0};
}

/// The next start of the program on what was left, with the same mixer.
Found afterNextStart(const Image& left, const sorvanto::mixersim::SimulatedMixer& mixer) {
    World world(World::Window::Open, &left, &mixer);
    // The greeting, the state, the result asked for, and the state some times more.
    constexpr qsizetype words = 16;
    EXPECT_TRUE(sorvanto::test::waitFor([&] { return world.line.transcript.size() >= words; }));
    Found found = logged(world.databasePath());
    found.offers = static_cast<int>(world.offers().size());
    EXPECT_EQ(str(problemsOf(world.databasePath()).join('\n'_L1)), "");
    return found;
}

class Batches : public testing::Test {
protected:
    /// Once without a failure.
    void play() {
        World world;
        prepare(world);
        mixers[0] = world.line.mixer;
        Disk disk(world.folder.path());
        world.line.mixer.onPreparation = [&](int) { started = disk.operations().size(); };
        {
            const OpenHanded custom;
            makeBatch(world, nullptr);
        }
        world.line.mixer.onPreparation = nullptr;
        const Disk::Unseen own;
        mixers[1] = world.line.mixer;
        start = disk.start();
        operations = disk.operations();
        acts = disk.acts();
        told = world.told();
        reference = logged(world.databasePath());
        ASSERT_EQ(std::count(reference.lines.begin(), reference.lines.end(), '\n'), 2) << reference.text();
        ASSERT_GT(started, 0U);
        ASSERT_TRUE(killedAfter(start, operations, operations.size()).contents() ==
                    Image::of(world.folder.path()).contents());
        expectOwnersAlone(operations, world.folder.path());
    }
    bool isWhole(const Found& found) const {
        return found.row == reference.row && found.lines == reference.lines;
    }
    /// What holds after the next start. made: the mixer has run this mix.
    void judge(const Found& found, bool made) {
        const bool isHalf = !found.none() && !isWhole(found);
        if (!made) {
            EXPECT_TRUE(found.none()) << found.text();
            EXPECT_LE(found.offers, 1)
                << found.text();  // one without results, from a start that was never sent
        } else {
            EXPECT_FALSE(isHalf) << found.text();
            EXPECT_EQ(found.offers, found.none() ? 1 : 0) << found.text();
        }
        whole += isWhole(found) ? 1 : 0;
        offered += made && found.offers == 1 ? 1 : 0;
        half += isHalf ? 1 : 0;
        never += made ? 0 : 1;
    }
    /// Many places leave the same, which is looked at once.
    void judgeCrash(const Image& left, bool made) {
        const auto [found, isNew] = m_found.try_emplace({left.fingerprint(), made});
        if (isNew)
            found->second = afterNextStart(left, mixers[made ? 1 : 0]);
        judge(found->second, made);
    }
    void print(const char* what, std::size_t tried) const {
        std::cout << "fault: batch, " << what << ": " << tried << " tried; next start: " << whole
                  << " whole, " << offered << " on offer, " << never << " never mixed, " << half << " half\n";
    }
    std::vector<std::size_t> places() const {
        std::vector<std::size_t> all;
        for (std::size_t count = 0; count <= operations.size(); ++count)
            all.push_back(count);
        return all;
    }

    /// Of a place: the operation before it, and whether the mixer has begun to mix.
    std::pair<Act, bool> kindOf(std::size_t count) const {
        return {actBefore(operations, count), count >= started};
    }

    Image start;
    std::vector<Operation> operations;
    std::vector<Act> acts;
    QStringList told;
    std::size_t started = 0;  ///< operations before the mixer began to mix
    std::array<sorvanto::mixersim::SimulatedMixer, 2> mixers{
        sorvanto::mixersim::SimulatedMixer{{}, preparationsBefore},
        sorvanto::mixersim::SimulatedMixer{{}, preparationsBefore}};
    Found reference;
    int whole = 0, offered = 0, half = 0, never = 0;

private:
    std::map<std::pair<QByteArray, bool>, Found> m_found;
};

}  // namespace

TEST_F(Batches, KilledAnywhere) {
    play();
    const auto tried = drawn(places(), mostBatchKills, [&](std::size_t count) { return kindOf(count); });
    for (const std::size_t count : tried) {
        SCOPED_TRACE("killed behind " + described(operations, count));
        judgeCrash(killedAfter(start, operations, count), count >= started);
    }
    print("killed", tried.size());
}

// The start that completes a batch is killed itself.
TEST_F(Batches, KilledAgainAtTheNextStart) {
    play();
    std::vector<std::size_t> halves;
    for (const std::size_t count : places()) {
        killedAfter(start, operations, count).layOut(scratch());
        const Found found = logged(scratch() + u"/sorvanto.mdb"_s);
        if (!found.none() && !isWhole(found))
            halves.push_back(count);
    }
    ASSERT_FALSE(halves.empty());
    std::size_t tried = 0, possible = 0;
    for (const std::size_t count : sample(halves, longRun() ? mostHalvesOfLongRun : mostHalves)) {
        const Image left = killedAfter(start, operations, count);
        World world(World::Window::None, &left, &mixers[1]);
        Disk disk(world.folder.path());
        world.open();
        ASSERT_TRUE(sorvanto::test::waitFor([&] { return !world.line.transcript.isEmpty(); }));
        const std::vector<Operation> second = disk.operations();
        const Disk::Unseen own;
        ASSERT_FALSE(second.empty());
        std::vector<std::size_t> all(second.size() + 1);
        std::iota(all.begin(), all.end(), 0U);
        possible += all.size();
        for (const std::size_t again : sample(all, longRun() ? mostKillsAgainOfLongRun : mostKillsAgain)) {
            SCOPED_TRACE("killed behind " + described(operations, count) + ", and again behind " +
                         described(second, again));
            judgeCrash(killedAfter(disk.start(), second, again), true);
            ++tried;
        }
    }
    print("killed again at the next start", tried);
    std::cout << "fault: batch, killed again: " << halves.size()
              << " kills leave a half batch; the starts behind the "
              << "drawn ones have " << possible << " places (seed " << seedOfRun() << ")\n";
}

TEST_F(Batches, PowerCutAnywhere) {
    play();
    QRandomGenerator random(seedOfRun());
    std::vector<std::pair<std::size_t, Survival>> all;
    for (const std::size_t count : places())
        for (const Survival survival :
             {Survival::Nothing, Survival::NamesOnly, Survival::ContentOnly, Survival::Part, Survival::Part})
            all.emplace_back(count, survival);
    all = drawn(all, mostBatchCuts,
                [&](const auto& cut) { return std::pair(actBefore(operations, cut.first), cut.second); });
    all.emplace_back(operations.size(), Survival::Nothing);
    for (const auto& [count, survival] : all) {
        SCOPED_TRACE("power cut behind " + described(operations, count) + ", survival " +
                     std::to_string(static_cast<int>(survival)));
        judgeCrash(powerCutAfter(start, operations, count, survival, random), count >= started);
    }
    print("power cut", all.size());
}

TEST_F(Batches, EachCallFails) {
    play();
    std::vector<std::pair<std::size_t, Failure>> all;
    for (std::size_t call = 0; call < acts.size(); ++call)
        for (const Failure& failure : failuresOf(acts[call]))
            all.emplace_back(call, failure);
    all = drawn(all, mostBatchFailures,
                [&](const auto& failing) { return std::pair(acts[failing.first], failing.second.code); });
    for (const auto& [call, failure] : all) {
        SCOPED_TRACE(std::string("call ") + std::to_string(call) + ", " + nameOf(acts[call]) + ": " +
                     failure.word + (failure.lasting ? " from now on" : " once"));
        World world;
        prepare(world);
        {
            Disk disk(world.folder.path());
            disk.fail({static_cast<qsizetype>(call), failure.code, failure.lasting});
            makeBatch(world, &told);
            EXPECT_TRUE(disk.struck());
        }
        const Found found = afterNextStart(Image::of(world.folder.path()), world.line.mixer);
        judge(found, world.line.mixer.preparations() > preparationsBefore);
        if (!isWhole(found)) {
            EXPECT_FALSE(world.toldBeyond(told).isEmpty()) << "not logged, and not a word of it";
        }
    }
    print("failing calls", all.size());
}

}  // namespace fault
