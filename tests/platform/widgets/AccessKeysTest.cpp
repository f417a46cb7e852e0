// Letters that press a button together with Alt.
#include "platform/widgets/AccessKeys.h"
#include "support/Waiting.h"

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

std::string keyed(const QString& caption, QString taken) {
    return withAccessKey(caption, taken).toStdString();
}

TEST(AccessKeysTest, TheFirstLetterThatIsFree) {
    EXPECT_EQ(keyed(u"Close"_s, {}), "&Close");
    EXPECT_EQ(keyed(u"Close"_s, u"C"_s), "C&lose");
    EXPECT_EQ(keyed(u"Закрыть"_s, u"З"_s), "З&акрыть");
    EXPECT_EQ(keyed(u"12 ab"_s, {}), "12 &ab") << "figures are no keys";
    EXPECT_EQ(keyed(u"aa"_s, u"A"_s), "aa");
}

TEST(AccessKeysTest, EachButtonOfAWindowHasItsOwnAndKeepsIt) {
    QDialog window;
    QPushButton take(u"Take 1 price"_s, &window), close(u"&Tell"_s, &window), lot(u"A && B"_s, &window);
    giveAccessKeys(window);
    EXPECT_EQ(take.text().toStdString(), "T&ake 1 price");
    EXPECT_EQ(close.text().toStdString(), "&Tell");
    EXPECT_EQ(lot.text().toStdString(), "A && &B");
    take.setText(u"Take 2 prices"_s);
    giveAccessKeys(window);
    EXPECT_EQ(take.text().toStdString(), "T&ake 2 prices");
    EXPECT_EQ(lot.text().toStdString(), "A && &B");
}

TEST(AccessKeysTest, AltAndTheLetterPressIt) {
    QDialog window;
    QPushButton add(u"Add Lot"_s, &window);
    giveAccessKeys(window);
    int pressed = 0;
    QObject::connect(&add, &QPushButton::clicked, &window, [&] { ++pressed; });
    window.show();
    window.activateWindow();
    ASSERT_TRUE(support::becomesActive(&window));
    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_EQ(pressed, 0) << "the letter alone";
    QTest::keyClick(&window, Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(support::waitFor([&] { return pressed == 1; })) << "the button is seen to go down first";
}

}  // namespace
}  // namespace platform
