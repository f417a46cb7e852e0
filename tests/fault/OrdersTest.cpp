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

enum class Accident { Lost, Twice, Unplugged, Killed, KilledAfter, Late, HeldBack, MixerRestarts };
const char* accidentName(Accident accident) {
    constexpr const char* accidentNames[]{"lost",         "twice", "unplugged", "killed",
                                          "killed after", "late",  "held back", "mixer restarts"};
    return accidentNames[static_cast<int>(accident)];
}

struct Event {
    int crossing;  ///< the how-manieth frame on the line
    Accident accident;
};

struct LineCourse {
    int crossings = 0;
    bool ended = false;
};

constexpr int lateness = 450;   // milliseconds: the program has asked again meanwhile
constexpr int heldBack = 3000;  // with all its repetitions: the program has given the command up
constexpr int unplugged = 2500;
constexpr int mostFailuresShown = 20;
constexpr std::size_t drawnBeyond = 2;  // accidents
constexpr int oneInDrawn = 12;

class Orders : public testing::Test {
protected:
    /// One course with these accidents.
    LineCourse played(VirtualTime& time, const std::vector<Event>& events) {
        Rig rig(time);
        LineCourse run;
        std::string frames;
        QByteArray held;
        rig.carry = [&](Direction, const QByteArray& frame, const Rig::Hand& hand) {
            const QByteArray kind = frame.mid(4).split('*')[0].split(' ')[0];
            states.insert(rig.whereItStands() + ' ' + frame[0] + kind);
            const int crossing = run.crossings++;
            const auto found = std::find_if(events.begin(), events.end(),
                                            [&](const Event& event) { return event.crossing == crossing; });
            const bool meets = found != events.end();
            if (meets && found->accident == Accident::HeldBack)
                held = frame;
            frames += '\n' + std::to_string(time.now()) + " ms, " + std::to_string(crossing) + ": " +
                      frame.trimmed().toStdString() +
                      (meets ? std::string("   ") + accidentName(found->accident) : "");
            if (frame == held)
                return rig.later(heldBack, [hand, frame] { hand(frame); });
            return meets ? happen(rig, found->accident, frame, hand) : hand(frame);
        };
        run.ended = rig.makeBatch();
        const int crossings = run.crossings;
        const bool againEnded = events.size() > 1 || rig.makeBatch();  // one that has to go as ever
        run.crossings = crossings;
        ++courses;
        QStringList wrongs = rig.wrongs();
        if (!run.ended || !againEnded)
            wrongs << u"hangs: "_s + QString::fromLatin1(rig.whereItStands());
        if (rig.openJournals() > 0)
            wrongs << u"%1 open journals"_s.arg(rig.openJournals());
        if (!wrongs.isEmpty() && ++failures <= mostFailuresShown)
            ADD_FAILURE() << text(events) << wrongs.join(u", "_s).toStdString() << frames;
        inVain += rig.mixesToldInVain();
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
        case Accident::HeldBack:
            return;  // by the line itself
        case Accident::MixerRestarts:
            return rig.restartMixer();
        }
    }
    static std::string text(const std::vector<Event>& events) {
        std::string all;
        for (const Event& event : events)
            all += std::string(accidentName(event.accident)) + " at " + std::to_string(event.crossing) + ", ";
        return all;
    }
    /// All courses with up to so many accidents, each later than the one before; of those with a third accident a
    /// part drawn by the seed.
    void explore(VirtualTime& time, std::vector<Event>& events, int most,
                 const std::vector<Accident>& accidents) {
        const bool isDrawn = events.size() > drawnBeyond;
        ++possible;
        if (isDrawn && random.bounded(oneInDrawn) != 0)
            return;
        const LineCourse run = played(time, events);
        if (most == 0)
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
                  << " kinds of accidents: " << courses << " of " << possible << " courses (seed "
                  << seedOfRun() << "), " << states.size() << " states, " << inVain
                  << " mixes told of whose start met an empty mixer\n";
        EXPECT_EQ(failures, 0);
    }

    QSet<QByteArray> states;
    QRandomGenerator random{seedOfRun()};
    int courses = 0, possible = 0, failures = 0, inVain = 0;
};

}  // namespace

TEST_F(Orders, OfLossesDoublesUnplugsAndKills) {
    exploreAll(longRun() ? 3 : 2, {Accident::Lost, Accident::Twice, Accident::Unplugged, Accident::Killed});
}

TEST_F(Orders, OfEveryKindOnce) {
    exploreAll(longRun() ? 2 : 1,
               {Accident::Lost, Accident::Twice, Accident::Unplugged, Accident::Killed, Accident::KilledAfter,
                Accident::Late, Accident::HeldBack, Accident::MixerRestarts});
}

}  // namespace fault
