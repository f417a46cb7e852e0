// Enter on a button, whatever window it is on.
#include "platform/widgets/EnterKey.h"
#include "support/Waiting.h"

#include <QCheckBox>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::EnterKey;

namespace {

class Pressed : public testing::Test {
protected:
    template <class Button>
    Button& add(const char* name) {
        auto* button = new Button(&window);
        QObject::connect(button, &QAbstractButton::clicked, &window,
                         [this, name] { presses << QString::fromLatin1(name); });
        return *button;
    }
    void show() {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(support::becomesActive(&window));
    }
    static void press(QWidget& widget, bool held = false, int key = Qt::Key_Return) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, u"\r"_s, held);
        QApplication::sendEvent(&widget, &event);
    }

    EnterKey enter{nullptr};
    QDialog window;
    QStringList presses;
};

TEST_F(Pressed, AButtonThatIsNoDefaultIsPressedByBothKeys) {
    auto& wizard = add<QPushButton>("wizard");
    wizard.setAutoDefault(false);
    auto& close = add<QToolButton>("close");
    show();
    press(wizard);
    press(close, false, Qt::Key_Enter);
    EXPECT_EQ(presses, (QStringList{u"wizard"_s, u"close"_s}));
}

TEST_F(Pressed, TheFocusedOneAndNotTheDefault) {
    add<QPushButton>("ok").setDefault(true);
    press(add<QPushButton>("cancel"));
    press(add<QToolButton>("folder"));
    EXPECT_EQ(presses, (QStringList{u"cancel"_s, u"folder"_s}));
}

TEST_F(Pressed, AHeldKeyPressesNothingAgain) {
    add<QPushButton>("ok").setDefault(true);
    auto& sign = add<QPushButton>("sign");
    show();
    press(sign);
    press(sign, true);
    press(sign, true);
    EXPECT_EQ(presses, QStringList(u"sign"_s));
}

TEST_F(Pressed, WhatIsOffStaysSo) {
    auto& start = add<QPushButton>("start");
    start.setEnabled(false);
    press(start);
    EXPECT_TRUE(presses.isEmpty());
}

TEST_F(Pressed, ACheckBoxLeavesEnterToTheDialog) {
    add<QPushButton>("ok").setDefault(true);
    auto& box = add<QCheckBox>("box");
    show();
    press(box);
    EXPECT_EQ(presses, QStringList(u"ok"_s));
    EXPECT_FALSE(box.isChecked());
}

}  // namespace
