// Every message survives the line; every value outside its range spoils it.
#include "mixer/protocol/Messages.h"

#include <gtest/gtest.h>
#include <random>

using namespace sorvanto::protocol;

namespace {

Frame overLine(const Frame& frame) {
    const QByteArray text = encode(frame);
    const auto back = decode(text.chopped(1));
    return back.value_or(Frame{});
}

Frame with(Frame frame, int field, const char* text) {
    frame.fields[field] = text;
    return frame;
}

const Frame anyCommand{Direction::ToMixer, 0x2A, "STATUS", {}};

}  // namespace

TEST(Messages, RandomProgrammesSurvive) {
    std::mt19937 random(7);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    for (int round = 0; round < 500; ++round) {
        Programme p{QByteArray::number(random(), 16).toUpper().rightJustified(8, '0').right(8),
                    upTo(9),
                    1 + upTo(8),
                    upTo(65535) - 32768,
                    upTo(15),
                    1 + upTo(15),
                    {}};
        for (int steps = 1 + upTo(15); steps > 0; --steps) {
            const bool timed = upTo(1) == 0;
            p.steps.push_back(
                {1 + upTo(2879), 1 + upTo(2999), timed ? 1 + upTo(3599) : 0, timed ? 0 : 1 + upTo(254)});
        }
        const auto head = readLoad(overLine(loadCommand(p)));
        ASSERT_TRUE(head);
        Programme back = head->first;
        for (int n = 1; n <= head->second; ++n) {
            const auto step = readStep(overLine(stepCommand(n, p.steps[static_cast<std::size_t>(n) - 1])));
            ASSERT_TRUE(step);
            EXPECT_EQ(step->first, n);
            back.steps.push_back(step->second);
        }
        EXPECT_EQ(back, p);
        EXPECT_EQ(readHead(overLine(headReply(anyCommand, p)))->first.id, p.id);
    }
}

TEST(Messages, RepliesBearTheSequenceOfTheirCommand) {
    for (const Frame& reply :
         {okReply(anyCommand), refusalReply(anyCommand, "BUSY"), statusReply(anyCommand, {}),
          identityReply(anyCommand, {1, "2.1", "SV0426"}), stepReply(anyCommand, 1, {1, 1, 1, 0})}) {
        EXPECT_EQ(overLine(reply).sequence, 0x2A);
        EXPECT_EQ(overLine(reply).direction, Direction::ToProgram);
    }
}

TEST(Messages, ValuesSurvive) {
    const Status status{MixerState::Paused, "3FA21C09", 16, 16, 57600, 57600, 4080, 2880, 3000,
                        Reason::Overload};
    EXPECT_EQ(readStatus(overLine(statusReply(anyCommand, status))), status);
    EXPECT_EQ(readStatus(overLine(statusReply(anyCommand, {}))), Status{});
    for (const Reason reason :
         {Reason::None, Reason::User, Reason::LidOpen, Reason::EmergencyStop, Reason::Overload}) {
        Status s;
        s.reason = reason;
        EXPECT_EQ(readStatus(overLine(statusReply(anyCommand, s)))->reason, reason);
    }
    const MixResults results{"3FA21C09", 123456, 9, 8, 4080, true, 15, 2'880'000};
    EXPECT_EQ(readResults(overLine(resultsReply(anyCommand, results))), results);
    const Identity identity{1, "SIM-2.1", "SV0426"};
    EXPECT_EQ(readIdentity(overLine(identityReply(anyCommand, identity))), identity);
    EXPECT_TRUE(identity.simulated());
    EXPECT_FALSE((Identity{1, "2.1", "SV0426"}).simulated());
    EXPECT_EQ(readRefusal(overLine(refusalReply(anyCommand, "ESTOP"))), QByteArray("ESTOP"));
    EXPECT_TRUE(isOk(overLine(okReply(anyCommand))));
    EXPECT_EQ(readHello(overLine(helloCommand("9F3C12AB"))), QByteArray("9F3C12AB"));
    EXPECT_EQ(readRead(overLine(readCommand(16))), 16);
    EXPECT_EQ(readMixId(overLine(startCommand("3FA21C09"))), QByteArray("3FA21C09"));
    EXPECT_EQ(readMixId(overLine(resultCommand("3FA21C09"))), QByteArray("3FA21C09"));
}

TEST(Messages, OutOfRangeIsNoMessage) {
    const Frame load = loadCommand({"3FA21C09", 9, 7, 250, 2, 1, {{1, 1, 1, 0}}});
    ASSERT_TRUE(readLoad(load));
    const std::pair<int, const char*> badLoad[] = {
        {0, "3fa21c09"}, {0, "-"},  {0, "123"}, {1, "10"}, {1, "-1"}, {2, "0"},  {2, "10"},  {3, "32768"},
        {3, "x"},        {4, "16"}, {5, "0"},   {5, "17"}, {6, "0"},  {6, "17"}, {3, "007"}, {3, "1.5"}};
    for (const auto& [field, text] : badLoad)
        EXPECT_FALSE(readLoad(with(load, field, text))) << field << ' ' << text;
    const Frame step = stepCommand(1, {1200, 1200, 60, 0});
    ASSERT_TRUE(readStep(step));
    const std::pair<int, const char*> badStep[] = {{0, "0"},    {0, "17"},   {1, "0"}, {1, "2881"}, {2, "0"},
                                                   {2, "3001"}, {3, "3601"}, {3, "0"}, {4, "256"},  {4, "1"}};
    for (const auto& [field, text] : badStep)
        EXPECT_FALSE(readStep(with(step, field, text))) << field << ' ' << text;
    Frame longer = step;
    longer.fields << "1";
    EXPECT_FALSE(readStep(longer));
    const Frame identity = identityReply(anyCommand, {1, "2.1", "SV0426"});
    for (const char* serial : {"SV426", "sv0426", "0426SV", "SV04267"})
        EXPECT_FALSE(readIdentity(with(identity, 2, serial))) << serial;
    EXPECT_FALSE(readIdentity(with(identity, 0, "2"))) << "another protocol";
    EXPECT_FALSE(readStatus(with(statusReply(anyCommand, {}), 0, "SLEEPING")));
    EXPECT_FALSE(readStatus(with(statusReply(anyCommand, {}), 4, "-1")));
    EXPECT_FALSE(readStatus(with(statusReply(anyCommand, {}), 4, "2147483648")));
    const Frame results = resultsReply(anyCommand, {"3FA21C09", 1, 1, 1, 1, false, 0, 1});
    EXPECT_FALSE(readResults(with(results, 1, "0")));
    EXPECT_FALSE(readResults(with(results, 5, "X")));
    EXPECT_FALSE(readMixId(with(startCommand("3FA21C09"), 0, "-")));
}

TEST(Messages, LongestStatusFitsAFrame) {
    const Status status{MixerState::Loaded, "FFFFFFFF", 16, 16, 999'999, 999'999, 999'999, 2880, 3000,
                        Reason::Overload};
    EXPECT_FALSE(encode(statusReply(anyCommand, status)).isEmpty());
    EXPECT_FALSE(
        encode(resultsReply(anyCommand, {"FFFFFFFF", 999'999'999, 9, 9, 999'999, true, 15, 999'999'999}))
            .isEmpty());
}
