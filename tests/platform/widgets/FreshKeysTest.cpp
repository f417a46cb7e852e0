// A window that comes up under typing hands takes no keys that were meant for another.
#include "platform/widgets/FreshKeys.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace platform;
using namespace Qt::StringLiterals;

namespace {

class FreshKeysTest : public testing::Test {
protected:
    FreshKeysTest() {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&box);
        layout->addWidget(&button);
        button.setText(u"&OK"_s);
        button.setDefault(true);
        QObject::connect(&button, &QPushButton::clicked, &button, [this] { ++presses; });
    }
    ~FreshKeysTest() override { setTypingRest(std::chrono::milliseconds(0)); }
    void show(int rest) {
        setTypingRest(std::chrono::milliseconds(rest));
        window.show();
        ASSERT_TRUE(support::becomesActive(&window));
        box.setFocus();
    }
    static void repeat(QWidget& to, int key, const QString& text) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text, true);
        QApplication::sendEvent(&to, &press);
    }

    QDialog window;
    QLineEdit box;
    QPushButton button;
    int presses = 0;
    FreshKeys* keys = new FreshKeys(window);
};

const auto designed = typingRest();  // of the program; the tests have one of their own

TEST_F(FreshKeysTest, TheRestIsOneSecond) { EXPECT_EQ(designed, std::chrono::seconds(1)); }

TEST_F(FreshKeysTest, KeysOfTheFirstMomentAreSwallowed) {
    show(600'000);
    EXPECT_FALSE(keys->isOpen());
    QTest::keyClicks(&box, u"stir well"_s);
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(box.text(), QString());
    EXPECT_EQ(presses, 0);
    EXPECT_TRUE(window.isVisible());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(presses, 1) << "the mouse is not touched";
}

TEST_F(FreshKeysTest, FreshPressesCountAfterwardsAndRepeatsDoNot) {
    show(50);
    ASSERT_TRUE(support::waitFor([&] { return keys->isOpen(); }));
    repeat(box, Qt::Key_W, u"w"_s);
    repeat(box, Qt::Key_Return, u"\r"_s);
    EXPECT_EQ(box.text(), QString());
    EXPECT_EQ(presses, 0);
    QTest::keyClicks(&box, u"RK"_s);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.text(), u"RK"_s);
    EXPECT_EQ(presses, 1);
}

TEST_F(FreshKeysTest, TextOfAnInputMethodWaitsToo) {
    show(600'000);
    QInputMethodEvent typed;
    typed.setCommitString(u"w"_s);
    QApplication::sendEvent(&box, &typed);
    EXPECT_EQ(box.text(), QString());
}

TEST_F(FreshKeysTest, OtherWindowsAreNotTouched) {
    show(600'000);
    QLineEdit other;
    QTest::keyClicks(&other, u"a"_s);
    EXPECT_EQ(other.text(), u"a"_s);
}

}  // namespace
