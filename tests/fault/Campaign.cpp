// Kills and power cuts are worked out on the recorded course; failures are real runs, one each.
#include "Campaign.h"

#include "Disk.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cerrno>
#include <iostream>
#include <numeric>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace fault {
namespace {

// Of the normal run, which has two minutes for all gates.
constexpr std::size_t mostKills = 36;
constexpr std::size_t mostCuts = 36;
constexpr std::size_t mostFailures = 14;

struct Course {
    Image start;
    std::vector<Operation> operations;
    std::vector<Act> acts;
    std::set<std::string> states;  ///< allowed ones
    std::string old, fresh;
    QStringList told;
};

struct Counts {
    std::size_t kills = 0, cuts = 0, failures = 0, refused = 0;
    /// What kills and cuts have left, and whether the deed was done: many leave the same, which is looked at once.
    std::set<std::pair<QByteArray, bool>> left;
};

std::string stateIn(const Deed& deed, const QString& folder) {
    const Disk::Unseen own;
    return deed.state(folder);
}

/// Once without a failure, everything written down.
Course played(const Deed& deed) {
    Course course;
    World world(deed.window);
    deed.prepare(world);
    course.old = stateIn(deed, world.folder.path());
    course.states.insert(course.old);
    Disk disk(world.folder.path());
    if (deed.inSteps)
        world.onStatement = [&] { course.states.insert(stateIn(deed, world.folder.path())); };
    {
        const OpenHanded custom;
        deed.act(world);
    }
    world.onStatement = nullptr;
    const Disk::Unseen own;
    course.start = disk.start();
    course.operations = disk.operations();
    course.acts = disk.acts();
    course.fresh = deed.state(world.folder.path());
    course.states.insert(course.fresh);
    course.told = world.told();
    EXPECT_NE(course.old, course.fresh) << "the deed does nothing";
    EXPECT_EQ((course.old + course.fresh).find("<unreadable>"), std::string::npos)
        << "nothing would be noticed";
    EXPECT_TRUE(killedAfter(course.start, course.operations, course.operations.size()).contents() ==
                Image::of(world.folder.path()).contents())
        << "something was written past the eyes of the test";
    if (!deed.usersFile)
        expectOwnersAlone(course.operations, world.folder.path());
    return course;
}

void expectOldOrNew(const Deed& deed, const Course& course, const QString& folder, bool finished) {
    const std::string state = stateIn(deed, folder);
    EXPECT_TRUE(course.states.contains(state)) << "neither old nor new:\n" << state;
    if (finished && deed.durable) {
        EXPECT_EQ(state, course.fresh) << "it was done, and is not there";
    }
    EXPECT_EQ(str(problemsOf(folder + u"/sorvanto.mdb"_s).join('\n'_L1)), "");
}

void look(const Deed& deed, const Course& course, const Image& image, std::size_t count, Counts& counts) {
    const bool finished = count == course.operations.size();
    if (!counts.left.emplace(image.fingerprint(), finished).second)
        return;
    image.layOut(scratch());
    expectOldOrNew(deed, course, scratch(), finished);
}

std::vector<std::size_t> places(const Course& course) {
    std::vector<std::size_t> all;
    for (std::size_t count = 0; count <= course.operations.size(); ++count)
        all.push_back(count);
    return all;
}

/// Behind each change of a name: there a deed turns from undone to done.
std::set<std::size_t> turningPoints(const Course& course) {
    std::set<std::size_t> turns;
    for (const std::size_t count : places(course)) {
        const Act last = actBefore(course.operations, count);
        if (last == Act::Rename || last == Act::Link || last == Act::Remove)
            turns.insert(count);
    }
    return turns;
}

void killEverywhere(const Deed& deed, const Course& course, Counts& counts) {
    std::set<std::size_t> all = turningPoints(course);
    const auto kindOf = [&](std::size_t count) { return actBefore(course.operations, count); };
    for (const std::size_t count : drawn(places(course), mostKills, kindOf))
        all.insert(count);
    for (const std::size_t count : all) {
        SCOPED_TRACE("killed behind " + described(course.operations, count));
        look(deed, course, killedAfter(course.start, course.operations, count), count, counts);
        ++counts.kills;
    }
}

void cutEverywhere(const Deed& deed, const Course& course, Counts& counts) {
    std::vector<std::pair<std::size_t, Survival>> all;
    for (const std::size_t count : places(course))
        for (const Survival survival : {Survival::Nothing, Survival::NamesOnly, Survival::ContentOnly,
                                        Survival::Part, Survival::Part, Survival::Part})
            all.emplace_back(count, survival);
    QRandomGenerator random(seedOfRun());
    all = drawn(all, mostCuts, [&](const auto& cut) {
        return std::pair(actBefore(course.operations, cut.first), cut.second);
    });
    for (const Survival last : {Survival::Nothing, Survival::NamesOnly, Survival::ContentOnly})
        all.emplace_back(course.operations.size(), last);
    for (const std::size_t turn : turningPoints(course))
        all.emplace_back(turn, Survival::Nothing);
    for (const auto& [count, survival] : all) {
        SCOPED_TRACE("power cut behind " + described(course.operations, count) + ", survival " +
                     std::to_string(static_cast<int>(survival)));
        look(deed, course, powerCutAfter(course.start, course.operations, count, survival, random), count,
             counts);
        ++counts.cuts;
    }
}

/// The first lock behind each turning point: there the engine reports a failure of what it has done.
std::vector<std::size_t> locksBehindTurns(const Course& course) {
    std::set<std::size_t> locks;
    for (const std::size_t turn : turningPoints(course)) {
        const auto from = course.acts.begin() + course.operations[turn - 1].call;
        if (const auto lock = std::find(from, course.acts.end(), Act::Lock); lock != course.acts.end())
            locks.insert(static_cast<std::size_t>(lock - course.acts.begin()));
    }
    return {locks.begin(), locks.end()};
}

void failEverywhere(const Deed& deed, const Course& course, Counts& counts) {
    std::vector<std::pair<std::size_t, Failure>> all;
    for (std::size_t call = 0; call < course.acts.size(); ++call)
        for (const Failure& failure : failuresOf(course.acts[call]))
            all.emplace_back(call, failure);
    all = drawn(all, mostFailures, [&](const auto& failing) {
        return std::pair(course.acts[failing.first], failing.second.code);
    });
    for (const std::size_t lock : locksBehindTurns(course))
        all.emplace_back(lock, failuresOf(Act::Lock).back());
    for (const auto& [call, failure] : all) {
        SCOPED_TRACE(std::string("call ") + std::to_string(call) + ", " + nameOf(course.acts[call]) + ": " +
                     failure.word + (failure.lasting ? " from now on" : " once"));
        World world(deed.window);
        deed.prepare(world);
        {
            Disk disk(world.folder.path());
            disk.fail({static_cast<qsizetype>(call), failure.code, failure.lasting});
            deed.act(world);
            EXPECT_TRUE(disk.struck()) << "another course than the recorded one";
        }
        const std::string state = stateIn(deed, world.folder.path());
        expectOldOrNew(deed, course, world.folder.path(), false);
        const QStringList told = world.toldBeyond(course.told);
        if (!deed.silent && state != course.fresh) {
            EXPECT_FALSE(told.isEmpty()) << "not done, and not a word of it";
        }
        counts.refused += state == course.fresh ? 0 : 1;
        ++counts.failures;
    }
}

}  // namespace

const QString& scratch() {
    static const QTemporaryDir place(u"/dev/shm/sorvanto-fault-XXXXXX"_s);
    static const QString folder = (place.isValid() ? place.path() : QDir::tempPath()) + u"/left"_s;
    return folder;
}

bool longRun() { return qEnvironmentVariableIntValue("SORVANTO_LONG") != 0; }

unsigned seedOfRun() {
    return qEnvironmentVariableIsSet("SEED") ? qEnvironmentVariable("SEED").toUInt() : 1U;
}

OpenHanded::OpenHanded() : m_mask(::umask(0)) {}
OpenHanded::~OpenHanded() { ::umask(m_mask); }

void expectOwnersAlone(const std::vector<Operation>& operations, const QString& folder) {
    constexpr QFileDevice::Permissions others(0x0077);  // of the group and of everybody
    for (const Operation& operation : operations) {
        const bool makes = operation.act == Act::Create || operation.act == Act::MakeFolder ||
                           operation.act == Act::Rename || operation.act == Act::Link;
        const QString name = operation.to.isEmpty() ? operation.name : operation.to;
        const QFileInfo file(folder + '/'_L1 + name);
        if (makes && file.exists() && !name.endsWith(".lock"_L1)) {
            EXPECT_FALSE(file.permissions() & others) << str(name) << " can be read by others";
        }
    }
}

std::vector<std::size_t> drawnOrder(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), 0U);
    QRandomGenerator random(seedOfRun());
    for (std::size_t left = count; left > 1; --left)
        std::swap(order[left - 1], order[random.bounded(static_cast<quint32>(left))]);
    return order;
}

Act actBefore(const std::vector<Operation>& operations, std::size_t count) {
    return count == 0 ? Act::Open : operations[count - 1].act;
}

std::vector<Failure> failuresOf(Act act) {
    switch (act) {
    case Act::Create:
    case Act::Write:
    case Act::Truncate:
    case Act::MakeFolder:
        return {
            {ENOSPC, false, "full"}, {ENOSPC, true, "full"}, {EIO, false, "broken"}, {EIO, true, "broken"}};
    case Act::Lock:
        return {{EAGAIN, false, "busy"}, {EAGAIN, true, "busy"}};
    default:
        return {{EIO, false, "broken"}, {EIO, true, "broken"}};
    }
}

std::string described(const std::vector<Operation>& operations, std::size_t count) {
    if (count == 0)
        return "the beginning";
    const Operation& last = operations[count - 1];
    return "operation " + std::to_string(count) + " of " + std::to_string(operations.size()) + ", " +
           nameOf(last.act) + " " + last.name.toStdString();
}

void campaign(const Deed& deed) {
    const Course course = played(deed);
    Counts counts;
    killEverywhere(deed, course, counts);
    cutEverywhere(deed, course, counts);
    failEverywhere(deed, course, counts);
    std::cout << "fault: " << deed.name << ": " << course.acts.size() << " calls, " << counts.kills
              << " kills, " << counts.cuts << " power cuts, leaving " << counts.left.size() << " states, "
              << counts.failures << " failing calls (" << counts.refused << " stopped it)\n";
}

}  // namespace fault
