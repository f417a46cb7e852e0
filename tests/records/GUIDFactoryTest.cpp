// Identity texts: groups, the letter that stays single, failures.
#include "records/GUIDFactory.h"
#include "platform/basic/RuntimeError.h"
#include "support/TestProgram.h"

#include <QRegularExpression>

using sorvanto::Guid;
using sorvanto::GUIDFactory;

namespace {

class GUIDFactoryTest : public support::TestProgram {
protected:
    void TearDown() override {
        GUIDFactory::setSource({});
        TestProgram::TearDown();
    }
    static void give(const Guid& guid) {
        GUIDFactory::setSource([guid](Guid& target) {
            target = guid;
            return 0;
        });
    }
    static std::string made() { return GUIDFactory().CreateGUID().toStdString(); }
};

TEST_F(GUIDFactoryTest, RandomTextsDifferAndAreUpperCaseHexadecimalInFiveGroups) {
    const QRegularExpression groups("^ *[0-9A-F]*(-[ 0-9A-F]{4}){3}-[0-9A-F]{12}$");
    QStringList all;
    for (int i = 0; i < 200; ++i) {
        const QString text = GUIDFactory().CreateGUID();
        EXPECT_EQ(text.size(), 36) << qPrintable(text);
        EXPECT_TRUE(groups.match(text).hasMatch()) << qPrintable(text);
        EXPECT_FALSE(all.contains(text));
        all << text;
    }
}

TEST_F(GUIDFactoryTest, PadsTheFirstThreePartsWithZeros) {
    give({0xA, 0xB, 0xFFFF, {16, 17, 18, 19, 20, 21, 22, 23}});
    EXPECT_EQ(made(), "0000000A-000B-FFFF-1011-121314151617");
    give({0xFFFFFFFF, 0xFFFF, 0, {255, 255, 255, 255, 255, 255, 255, 255}});
    EXPECT_EQ(made(), "FFFFFFFF-FFFF-0000-FFFF-FFFFFFFFFFFF");
}

TEST_F(GUIDFactoryTest, EveryByteIsPaddedWhenItReadsAsANumberAndLeftAloneOtherwise) {
    for (int byte = 0; byte < 256; ++byte) {
        give({0x11111111, 0x2222, 0x3333, {0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55, std::uint8_t(byte)}});
        const QString hex = QString::number(byte, 16).toUpper();
        const bool singleLetter = byte >= 10 && byte < 16;
        const QString expected = singleLetter
                                     ? " 1111111-1222-2333-3444-45555555555" + hex
                                     : "11111111-2222-3333-4444-5555555555" + hex.rightJustified(2, '0');
        EXPECT_EQ(made(), expected.toStdString());
    }
}

TEST_F(GUIDFactoryTest, SeveralSingleLettersGiveAsManyBlanksInFront) {
    give({0x12345678, 0x9ABC, 0xDEF0, {0xA, 0xB, 0xC, 0xD, 0xE, 0xF, 1, 2}});
    EXPECT_EQ(made(), "      12-3456-789A-BCDE-F0ABCDEF0102");
}

TEST_F(GUIDFactoryTest, ARefusingSourceGivesTheZerosInTheLastGroup) {
    GUIDFactory::setSource([](Guid&) { return 1; });
    EXPECT_EQ(made(), "        -    -    -    -    00000000");
}

TEST_F(GUIDFactoryTest, AFailureInTheSourceIsToldOnceAndNotReported) {
    GUIDFactory::setSource(
        [](Guid&) -> std::int32_t { throw platform::RuntimeError(platform::error::deviceIo, "No entropy"); });
    asker.expectMsgBox("Error 57: No entropy");
    EXPECT_EQ(made(), "        -    -    -    -    00000000");
    EXPECT_TRUE(reporter->calls.empty());
}

}  // namespace
