// Session, link and mixer under all orders of a small number of accidents: every frame of a batch is lost, comes
// twice or late, or the plug is pulled or the program killed at that moment, and again at every moment of the course
// that this leads to. Nothing is drawn and nobody waits.
#include "Campaign.h"
#include "Rig.h"

#include <gtest/gtest.h>
#include <iostream>

using namespace Qt::StringLiterals;
using sorvanto::protocol::Direction;

namespace fault {
namespace {

enum class Accident { Lost, Twice, Unplugged, Killed, KilledAfter, Late, MixerRestarts };
constexpr const char* accidentNames[]{"lost",         "twice", "unplugged",     "killed",
                                      "killed after", "late",  "mixer restarts"};

struct Event {
    int crossing;  ///< the how-manieth frame on the line
    Accident accident;
};

struct LineCourse {
    int crossings = 0;
    bool ended = false;
};

constexpr int lateness = 450;  // milliseconds: the program has asked again meanwhile
constexpr int unplugged = 2500;

class Orders : public testing::Test {
protected:
    /// One course with these accidents.
    LineCourse played(VirtualTime& time, const std::vector<Event>& events) {
        Rig rig(time);
        LineCourse run;
        int crossings = 0;
        rig.carry = [&](Direction, const QByteArray& frame, const Rig::Hand& hand) {
            states.insert(rig.whereItStands() + ' ' + frame.mid(4, 6));
            const int crossing = crossings++;
            const auto found = std::find_if(events.begin(), events.end(),
                                            [&](const Event& event) { return event.crossing == crossing; });
            if (found == events.end())
                return hand(frame);
            happen(rig, found->accident, frame, hand);
        };
        run.ended = rig.makeBatch();
        run.crossings = crossings;
        const bool againEnded = events.size() > 1 || rig.makeBatch();  // one that has to go as ever
        ++courses;
        const std::string what = text(events);
        EXPECT_TRUE(run.ended && againEnded) << "hangs: " << what << rig.whereItStands().toStdString();
        EXPECT_EQ(rig.wrongs().join('\n'_L1).toStdString(), "") << what;
        EXPECT_EQ(rig.openJournals(), 0) << what;
        const int toldOf = rig.mixesLogged() + rig.mixesWithoutResults();
        const bool restarted = std::any_of(events.begin(), events.end(), [](const Event& event) {
            return event.accident == Accident::MixerRestarts;
        });
        if (restarted) {
            EXPECT_LE(rig.mixesRun(), toldOf)
                << what;  // a start that it forgot counts as a mix without results
        } else {
            EXPECT_EQ(rig.mixesRun(), toldOf) << what;
            EXPECT_GE(rig.mixesLogged(), 1) << what;
        }
        return run;
    }
    static void happen(Rig& rig, Accident accident, const QByteArray& frame, const Rig::Hand& hand) {
        switch (accident) {
        case Accident::Lost:
            return;
        case Accident::Twice:
            hand(frame);
            return hand(frame);
        case Accident::Unplugged:
            return rig.unplug(unplugged);
        case Accident::Killed:
            return rig.kill();
        case Accident::KilledAfter:
            hand(frame);
            return rig.kill();
        case Accident::Late:
            return rig.later(lateness, [hand, frame] { hand(frame); });
        case Accident::MixerRestarts:
            return rig.restartMixer();
        }
    }
    static std::string text(const std::vector<Event>& events) {
        std::string all;
        for (const Event& event : events)
            all += std::string(accidentNames[static_cast<int>(event.accident)]) + " at " +
                   std::to_string(event.crossing) + ", ";
        return all;
    }
    /// All courses with up to so many accidents, each later than the one before.
    void explore(VirtualTime& time, std::vector<Event>& events, int most,
                 const std::vector<Accident>& accidents) {
        const LineCourse run = played(time, events);
        if (most == 0 || HasFailure())
            return;
        const int first = events.empty() ? 0 : events.back().crossing + 1;
        for (int crossing = first; crossing < run.crossings; ++crossing) {
            for (const Accident accident : accidents) {
                events.push_back({crossing, accident});
                explore(time, events, most - 1, accidents);
                events.pop_back();
            }
        }
    }
    void exploreAll(int most, const std::vector<Accident>& accidents) {
        VirtualTime::run([&](VirtualTime& time) {
            std::vector<Event> events;
            explore(time, events, most, accidents);
        });
        std::cout << "fault: orders of up to " << most << " of " << accidents.size()
                  << " kinds of accidents: " << courses << " courses, " << states.size() << " states\n";
    }

    QSet<QByteArray> states;
    int courses = 0;
};

}  // namespace

TEST_F(Orders, OfLossesDoublesUnplugsAndKills) {
    exploreAll(longRun() ? 3 : 2, {Accident::Lost, Accident::Twice, Accident::Unplugged, Accident::Killed});
}

TEST_F(Orders, OfEveryKindOnce) {
    exploreAll(longRun() ? 2 : 1, {Accident::Lost, Accident::Twice, Accident::Unplugged, Accident::Killed,
                                   Accident::KilledAfter, Accident::Late, Accident::MixerRestarts});
}

}  // namespace fault
