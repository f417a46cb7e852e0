// Batch after batch over a line that flips, drops, doubles, delays, reorders and truncates, with the plug pulled in
// every phase. No frame is taken that was not sent, every mix is logged once with its own results, and nothing hangs.
#include "Campaign.h"
#include "Rig.h"

#include <array>
#include <gtest/gtest.h>
#include <iostream>

using namespace Qt::StringLiterals;
using sorvanto::protocol::Direction;

namespace fault {
namespace {

constexpr int framesOfANormalRun = 2000;
constexpr int framesOfALongRun = 100'000;
constexpr int oneInSpoiled = 3;
constexpr int oneInUnplugged = 80;
constexpr int mostDelay = 2000;
constexpr int longestUnplugged = 5000;

enum class Spoiling {
    Flipped,
    Burst,
    ByteLost,
    ByteTwice,
    Lost,
    Twice,
    Late,
    Overtaken,
    CutShort,
    Noise,
    InPieces
};
constexpr std::array names{"flipped", "burst",     "byte lost", "byte twice", "lost",     "twice",
                           "late",    "overtaken", "cut short", "noise",      "in pieces"};

/// Spoils by a seed. What it does to a frame is such that the frame's check finds it for certain: up to three bits
/// anywhere, or any within sixteen that lie together, or one byte lost or come twice.
class SpoiledLine {
public:
    SpoiledLine(Rig& rig, unsigned seed) : m_rig(rig), m_random(seed) {}

    void carry(Direction direction, const QByteArray& frame, const Rig::Hand& hand) {
        ++frames;
        const QByteArray phase =
            QByteArray(1, static_cast<char>(direction)) + frame.mid(4).split('*')[0].split(' ')[0];
        const bool firstTime = !phases.contains(phase);
        if (firstTime || drawn(oneInUnplugged)) {
            phases << phase;
            ++unplugs;
            if (drawn(2))
                hand(frame);
            return m_rig.unplug(1 + m_random.bounded(longestUnplugged));
        }
        if (m_held) {
            const auto held = std::exchange(m_held, nullptr);
            hand(frame);
            return held();
        }
        if (!drawn(oneInSpoiled))
            return hand(frame);
        const int kind = m_random.bounded(static_cast<int>(names.size()));
        ++counts[static_cast<std::size_t>(kind)];
        spoil(static_cast<Spoiling>(kind), frame, hand);
    }

    int frames = 0;
    int unplugs = 0;
    QSet<QByteArray> phases;
    std::array<int, names.size()> counts{};

private:
    bool drawn(int oneIn) { return m_random.bounded(oneIn) == 0; }
    qsizetype place(const QByteArray& frame) { return m_random.bounded(static_cast<int>(frame.size())); }
    QByteArray flipped(QByteArray frame) {
        const int bits = 1 + m_random.bounded(3);
        for (int i = 0; i < bits; ++i) {
            const qsizetype at = place(frame);
            frame[at] = static_cast<char>(frame[at] ^ (1 << m_random.bounded(8)));
        }
        return frame;
    }
    QByteArray burst(QByteArray frame) {
        const qsizetype at = place(frame);
        frame[at] = static_cast<char>(frame[at] ^ (1 + m_random.bounded(255)));
        if (at + 1 < frame.size())
            frame[at + 1] = static_cast<char>(frame[at + 1] ^ m_random.bounded(256));
        return frame;
    }
    QByteArray noise() {
        QByteArray bytes(1 + m_random.bounded(40), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(m_random.bounded(256));
        return bytes;
    }
    void spoil(Spoiling kind, const QByteArray& frame, const Rig::Hand& hand) {
        const qsizetype at = place(frame);
        switch (kind) {
        case Spoiling::Flipped:
            return hand(flipped(frame));
        case Spoiling::Burst:
            return hand(burst(frame));
        case Spoiling::ByteLost:
            return hand(QByteArray(frame).remove(at, 1));
        case Spoiling::ByteTwice:
            return hand(QByteArray(frame).insert(at, frame[at]));
        case Spoiling::Lost:
            return;
        case Spoiling::Twice:
            hand(frame);
            return hand(frame);
        case Spoiling::Late:
            return m_rig.later(1 + m_random.bounded(mostDelay), [hand, frame] { hand(frame); });
        case Spoiling::Overtaken:
            m_held = [hand, frame] { hand(frame); };
            return;
        case Spoiling::CutShort:
            return hand(frame.left(at));
        case Spoiling::Noise:
            hand(noise());
            return hand(frame);
        case Spoiling::InPieces:
            hand(frame.left(at));
            return hand(frame.mid(at));
        }
    }

    Rig& m_rig;
    QRandomGenerator m_random;
    std::function<void()> m_held;
};

}  // namespace

TEST(Line, NoSpoiledFrameIsTakenAndEveryMixIsLoggedOnce) {
    VirtualTime::run([](VirtualTime& time) {
        Rig rig(time);
        SpoiledLine line(rig, seedOfRun());
        rig.carry = [&](Direction direction, const QByteArray& frame, const Rig::Hand& hand) {
            line.carry(direction, frame, hand);
        };
        const int enough = longRun() ? framesOfALongRun : framesOfANormalRun;
        int batches = 0;
        while (line.frames < enough && rig.makeBatch())
            ++batches;
        EXPECT_GE(line.frames, enough) << "hangs: " << rig.whereItStands().toStdString();
        EXPECT_EQ(rig.wrongs().join('\n'_L1).toStdString(), "");
        EXPECT_EQ(rig.mixesRun(), rig.mixesLogged());
        EXPECT_EQ(rig.mixesLogged() + rig.mixesToldInVain(), batches);
        EXPECT_EQ(rig.openJournals(), 0);
        for (const char* phase : {">HELLO", ">STATUS", ">LOAD", ">STEP", ">READ", ">START", ">RESULT",
                                  ">CLEAR", "<HI", "<STAT", "<OK", "<HEAD", "<STEP", "<RES"})
            EXPECT_TRUE(line.phases.contains(phase)) << "never unplugged at " << phase;
        std::cout << "fault: line: " << line.frames << " frames, " << rig.accepted()
                  << " taken, each as it was sent; " << rig.mixesLogged() << " batches, "
                  << rig.mixesToldInVain() << " more told of whose start met an empty mixer; " << line.unplugs
                  << " times unplugged in " << line.phases.size() << " phases; ";
        for (std::size_t i = 0; i < names.size(); ++i)
            std::cout << (i == 0 ? "" : ", ") << line.counts[i] << ' ' << names[i];
        std::cout << '\n';
    });
}

}  // namespace fault
