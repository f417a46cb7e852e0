// Where the focus goes when what had it is switched off or hidden.
#include "platform/widgets/FocusLoss.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

class Window : public QWidget {
protected:
    bool focusNextPrevChild(bool next) override {
        return platform::hasLostFocus(*this) ? platform::passFocusOn(*this)
                                             : QWidget::focusNextPrevChild(next);
    }
};

class FocusLoss : public testing::Test {
protected:
    FocusLoss() {
        auto* column = new QVBoxLayout(&window);
        for (QWidget* each : {static_cast<QWidget*>(search), static_cast<QWidget*>(sign),
                              static_cast<QWidget*>(area), static_cast<QWidget*>(notes)})
            column->addWidget(each);
        auto* inside = new QWidget;
        auto* row = new QVBoxLayout(inside);
        row->addWidget(start);
        row->addWidget(pause);
        area->setWidget(inside);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(support::becomesActive(&window));
    }
    QWidget* focus() const { return QApplication::focusWidget(); }

    Window window;
    QLineEdit *search = new QLineEdit, *notes = new QLineEdit;
    QPushButton *sign = new QPushButton, *start = new QPushButton, *pause = new QPushButton;
    QScrollArea* area = new QScrollArea;
};

TEST_F(FocusLoss, NoButtonGetsItFromABoxThatIsSwitchedOff) {
    area->setFocusPolicy(Qt::NoFocus);
    search->setFocus();
    search->setEnabled(false);
    EXPECT_EQ(focus(), notes);
}

TEST_F(FocusLoss, NorFromOneThatIsHidden) {
    area->setFocusPolicy(Qt::NoFocus);
    search->setFocus();
    search->hide();
    EXPECT_EQ(focus(), notes);
}

TEST_F(FocusLoss, WhatLiesAroundItComesFirst) {
    start->setFocus();
    start->hide();
    EXPECT_EQ(focus(), area);
    pause->setFocus();
    pause->setEnabled(false);
    EXPECT_EQ(focus(), area);
}

TEST_F(FocusLoss, WhereOnlyButtonsAreLeftNobodyHasIt) {
    area->setFocusPolicy(Qt::NoFocus);
    notes->hide();
    search->setFocus();
    search->setEnabled(false);
    EXPECT_EQ(focus(), nullptr);
}

TEST_F(FocusLoss, AnAreaThatPassesItsFocusOnIsNoPlace) {
    area->setFocusProxy(sign);
    start->setFocus();
    start->hide();
    EXPECT_TRUE(focus() == notes || focus() == search);
}

TEST_F(FocusLoss, TabGoesWhereItAlwaysDoes) {
    search->setFocus();
    QTest::keyClick(search, Qt::Key_Tab);
    EXPECT_EQ(focus(), sign);
}

}  // namespace
