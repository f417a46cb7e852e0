// Frames and the search for them in a stream: what is accepted, and that nothing else ever is.
#include "mixer/protocol/Crc16.h"
#include "mixer/protocol/FrameDecoder.h"
#include "mixer/protocol/Messages.h"

#include <gtest/gtest.h>
#include <random>

using namespace sorvanto::protocol;

namespace {

Frame frame(const char* kind, QByteArrayList fields = {}, int sequence = 7) {
    return {Direction::ToMixer, static_cast<std::uint8_t>(sequence), kind, std::move(fields)};
}

QByteArray line(QByteArray text) {
    const auto hex = [](int value, int digits) {
        return QByteArray::number(value, 16).toUpper().rightJustified(digits, '0');
    };
    return text + '*' + hex(static_cast<int>(text.size()), 2) + hex(crc16(text), 4);
}

std::vector<Frame> samples() {
    Programme programme{"3FA21C09", 9, 7, 250, 2, 1, {{1440, 1992, 360, 0}}};
    Frame stat = statusReply(frame("STATUS"),
                             {MixerState::Mixing, "3FA21C09", 2, 4, 228, 540, 61, 1440, 1992, Reason::None});
    return {statusCommand(),          loadCommand(programme),  stepCommand(1, programme.steps[0]),
            startCommand("3FA21C09"), okReply(frame("START")), stat};
}

}  // namespace

TEST(Crc16, KnownValues) {
    EXPECT_EQ(crc16(QByteArray("123456789")), 0x29B1);
    EXPECT_EQ(crc16(QByteArray()), 0xFFFF);
    EXPECT_EQ(crc16(QByteArray("A")), 0xB915);
}

TEST(Crc16, FindsEveryChangeOfUpToThreeBitsInTheLongestFrame) {
    const QByteArray zeros(longestFrame, '\0');
    std::vector<std::uint16_t> changes;
    for (int bit = 0; bit < longestFrame * 8; ++bit) {
        QByteArray changed = zeros;
        changed[bit / 8] = static_cast<char>(1 << bit % 8);
        changes.push_back(static_cast<std::uint16_t>(crc16(changed) ^ crc16(zeros)));
    }
    // The changes add up: one, two or three go unseen only where their sum is none.
    std::vector<bool> single(1 << 16);
    for (const std::uint16_t change : changes) {
        EXPECT_NE(change, 0);
        EXPECT_FALSE(single[change]) << "two bits";
        single[change] = true;
    }
    for (std::size_t a = 0; a < changes.size(); ++a) {
        for (std::size_t b = 0; b < a; ++b)
            ASSERT_FALSE(single[changes[a] ^ changes[b]]) << "bits " << a << " and " << b;
    }
}

TEST(Frame, IsStartSequenceKindFieldsLengthAndCheck) {
    EXPECT_EQ(encode(frame("STATUS")), line(">07 STATUS") + '\n');
    EXPECT_EQ(encode(frame("START", {"3FA21C09"}, 0xAB)), line(">AB START 3FA21C09") + '\n');
    EXPECT_TRUE(encode(frame("STATUS")).startsWith(">07 STATUS*0A"));
}

TEST(Frame, IllFormedIsNotEncoded) {
    EXPECT_TRUE(encode(frame("start")).isEmpty());
    EXPECT_TRUE(encode(frame("A")).isEmpty());
    EXPECT_TRUE(encode(frame("ABCDEFGHI")).isEmpty());
    EXPECT_TRUE(encode(frame("LOAD", {""})).isEmpty());
    for (const char* bad :
         {"a b", "a*b", "a>b", "a<b", "it's", "\"", "a\nb", "\xC3\xA9", "1234567890123456789012345"})
        EXPECT_TRUE(encode(frame("LOAD", {bad})).isEmpty()) << bad;
    EXPECT_TRUE(encode(frame("LOAD", QByteArrayList(10, "1234567890"))).isEmpty());
}

TEST(Frame, FieldsAndKindsHaveTheirCharactersAndNoOther) {
    const QByteArray capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const QByteArray allowed = capitals + capitals.toLower() + "0123456789.-:_";
    for (int value = 0; value < 256; ++value) {
        const char c = static_cast<char>(value);
        EXPECT_EQ(!encode(frame("LOAD", {QByteArray(1, c)})).isEmpty(), allowed.contains(c)) << value;
        EXPECT_EQ(!encode(frame(QByteArray(2, c).constData())).isEmpty(), capitals.contains(c)) << value;
    }
}

TEST(Frame, TheLongestAndTheShortestOfEverything) {
    const auto survives = [](const Frame& sample) {
        const auto back = decode(encode(sample).chopped(1));
        return back && *back == sample;
    };
    EXPECT_TRUE(survives(frame("AB", {}, 0)));
    EXPECT_TRUE(survives(frame("ABCDEFGH", {}, 255)));
    EXPECT_TRUE(survives(frame("LOAD", {QByteArray(24, 'x'), "1"})));
    // 8 before the fields, 8 behind them, and a blank before each.
    const QByteArrayList fields{QByteArray(24, 'x'), QByteArray(24, 'y'), QByteArray(24, 'z')};
    const Frame longest = frame("LOAD", fields + QByteArrayList{"1234"});
    ASSERT_EQ(encode(longest).size(), longestFrame);
    EXPECT_TRUE(survives(longest));
    EXPECT_TRUE(encode(frame("LOAD", fields + QByteArrayList{"12345"})).isEmpty());
    EXPECT_FALSE(decode(line(">07 LOAD " + (fields + QByteArrayList{"12345"}).join(' '))));
}

TEST(Frame, DecodesOnlyWhatItEncodes) {
    for (const Frame& sample : samples()) {
        const QByteArray text = encode(sample);
        ASSERT_FALSE(text.isEmpty());
        const auto back = decode(text.chopped(1));
        ASSERT_TRUE(back);
        EXPECT_EQ(*back, sample);
    }
    // A right check does not make up for a wrong form.
    for (const char* bad :
         {"07 STATUS", ">7 STATUS", ">0g STATUS", ">0a STATUS", ">07STATUS", ">07  STATUS", ">07 STATUS ",
          ">07 STAT US*", ">07 status", ">07 ", ">07", "", "<07 S", ">07 LOAD a,b"})
        EXPECT_FALSE(decode(line(bad))) << bad;
    EXPECT_FALSE(decode(">07 STATUS*0000"));
    EXPECT_FALSE(decode(encode(frame("STATUS")).chopped(1).toLower()));
}

TEST(FrameDecoder, FramesInPiecesAndInOnePiece) {
    QByteArray all;
    for (const Frame& sample : samples())
        all += encode(sample);
    FrameDecoder whole(Direction::ToMixer);
    EXPECT_EQ(whole.feed(all).size(), 4U) << "the two replies are not for the mixer";
    FrameDecoder bytewise(Direction::ToProgram);
    std::vector<Frame> found;
    for (const char byte : all) {
        for (const Frame& one : bytewise.feed(QByteArray(1, byte)))
            found.push_back(one);
    }
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], samples()[4]);
    EXPECT_EQ(found[1], samples()[5]);
    EXPECT_EQ(bytewise.damaged(), 0);
}

TEST(FrameDecoder, IsInStepAgainAtTheNextWholeFrame) {
    const QByteArray good = encode(frame("STATUS"));
    for (const QByteArray& before :
         {QByteArray(">07 STA"), QByteArray("\x00\xFF\n\n*", 5), QByteArray(500, 'x'),
          QByteArray(">") + QByteArray(500, 'A'), QByteArray(">>><<>"), good.left(9) + '\n'}) {
        FrameDecoder decoder(Direction::ToMixer);
        const auto found = decoder.feed(before + good);
        ASSERT_EQ(found.size(), 1U) << before.constData();
        EXPECT_EQ(found[0], frame("STATUS"));
    }
}

// What can be no frame any more is dropped at once and not gathered until the line ends.
TEST(FrameDecoder, WhatIsTooLongOrNoTextIsDroppedAtOnce) {
    const QByteArray longest = '>' + QByteArray(longestFrame - 2, 'A');
    for (const QByteArray& bad : {longest + 'A', QByteArray(">07 STA\x01"), QByteArray(">07 STA\x7F"),
                                  QByteArray(">07 STA\xC4"), QByteArray(">07 STA\t")}) {
        FrameDecoder decoder(Direction::ToMixer);
        EXPECT_TRUE(decoder.feed(bad).empty());
        EXPECT_EQ(decoder.damaged(), 1) << bad.constData();
        EXPECT_TRUE(decoder.feed("\n").empty());
        EXPECT_EQ(decoder.damaged(), 1) << "counted once";
    }
    FrameDecoder decoder(Direction::ToMixer);
    decoder.feed(longest);
    EXPECT_EQ(decoder.damaged(), 0) << "may still end";
    decoder.feed(">07 STA ~");
    EXPECT_EQ(decoder.damaged(), 1) << "the one before has not ended";
}

TEST(FrameDecoder, NoOneOrTwoChangedBitsAreAccepted) {
    for (const Frame& sample : samples()) {
        const QByteArray text = encode(sample);
        const int bits = static_cast<int>(text.size()) * 8;
        const auto flipped = [](QByteArray bytes, int bit) {
            bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
            return bytes;
        };
        for (int first = 0; first < bits; ++first) {
            const QByteArray once = flipped(text, first);
            for (int second = first; second < bits; ++second) {
                FrameDecoder decoder(sample.direction);
                const auto found = decoder.feed(second == first ? once : flipped(once, second));
                ASSERT_TRUE(found.empty()) << text.constData() << " bits " << first << ' ' << second;
            }
        }
    }
}

TEST(FrameDecoder, NoMissingDoubledOrSwappedByteIsAccepted) {
    for (const Frame& sample : samples()) {
        const QByteArray text = encode(sample);
        for (int i = 0; i + 1 < text.size(); ++i) {
            QByteArray missing = text, doubled = text, swapped = text;
            missing.remove(i, 1);
            doubled.insert(i, text[i]);
            std::swap(swapped[i], swapped[i + 1]);
            for (const QByteArray& bytes : {missing, doubled, swapped}) {
                FrameDecoder decoder(sample.direction);
                for (const Frame& found : decoder.feed(bytes))
                    EXPECT_EQ(found, sample)
                        << bytes.constData();  // a doubled ">" still begins the same frame
            }
        }
    }
}

TEST(FrameDecoder, GarbageGivesNothingAndHarmsNothing) {
    std::mt19937 random(20260101);
    const char alphabet[] = "<> *0123456789ABCDEFSTEPLOAD\n";
    FrameDecoder decoder(Direction::ToMixer);
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes;
        for (int length = static_cast<int>(random() % 60); length > 0; --length)
            bytes += round % 2 ? static_cast<char>(random()) : alphabet[random() % (sizeof alphabet - 1)];
        EXPECT_TRUE(decoder.feed(bytes).empty()) << bytes.toHex().constData();
    }
    EXPECT_EQ(decoder.feed(encode(frame("STATUS"))).size(), 1U);
}
