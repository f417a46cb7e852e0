// Text, memo, date, choice and up-down boxes under real keys and mouse.
#include "platform/widgets/Boxes.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/StepEntry.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

QDateTime day(int year, int month, int date) {
    return QDateTime(QDate(year, month, date), QTime(0, 0), Qt::UTC);
}

class Boxes : public testing::Test {
protected:
    template <class Box>
    void show(Box& box) {
        box.setParent(&window);
        window.resize(400, 300);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(support::becomesActive(&window));
        box.show();
        box.setFocus();
    }
    void wheel(QWidget& widget) {
        const QPointF at(5, 5);
        QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
        EXPECT_FALSE(event.isAccepted());
    }
    QWidget window;
};

// Text and memo

TEST_F(Boxes, ALockedTextCannotBeChangedButSelected) {
    TextBox box;
    show(box);
    box.setText("abc");
    box.setReadOnlyBox(true);
    QTest::keyClicks(&box, "x");
    EXPECT_EQ(box.text(), "abc");
    box.selectAll();
    EXPECT_EQ(box.selectedText(), "abc");
    box.setReadOnlyBox(false);
    QTest::keyClicks(&box, "x");
    EXPECT_EQ(box.text(), "x");
}

TEST_F(Boxes, ALockedBoxReachedByTabSelectsNothing) {
    TextBox first, text;
    NumberBox number;
    for (QLineEdit* box : std::initializer_list<QLineEdit*>{&first, &text, &number})
        show(*box);
    text.setText("abc");
    number.setText("7");
    for (const bool locked : {true, false}) {
        text.setReadOnlyBox(locked);
        number.setReadOnlyBox(locked);
        text.setFocus(Qt::TabFocusReason);
        EXPECT_EQ(text.hasSelectedText(), !locked);
        number.setFocus(Qt::TabFocusReason);
        EXPECT_EQ(number.hasSelectedText(), !locked);
        first.setFocus();
    }
}

TEST_F(Boxes, ALongTextShowsItsBeginning) {
    TextBox box;
    box.setText(QString(500, u'x'));
    EXPECT_EQ(box.cursorPosition(), 0);
    show(box);
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClicks(&box, "y");
    EXPECT_EQ(box.cursorPosition(), 501);
}

TEST_F(Boxes, TabLeavesAMemo) {
    MemoBox memo;
    show(memo);
    TextBox next(&window);
    next.show();
    QWidget::setTabOrder(&memo, &next);
    QTest::keyClicks(&memo, "two");
    QTest::keyClick(&memo, Qt::Key_Return);
    QTest::keyClicks(&memo, "lines");
    QTest::keyClick(&memo, Qt::Key_Tab);
    EXPECT_EQ(memo.text(), "two\nlines");
    EXPECT_TRUE(next.hasFocus());
}

TEST_F(Boxes, PastingFromAnEmptyClipboardChangesNothing) {
    struct Memo : MemoBox {
        using MemoBox::insertFromMimeData;
    };
    Memo memo;
    show(memo);
    memo.setText("kept");
    const QMimeData nothing;  // what the windowing system hands over then
    memo.insertFromMimeData(&nothing);
    memo.insertFromMimeData(nullptr);
    EXPECT_EQ(memo.text(), "kept");
}

TEST_F(Boxes, ATextOfTenThousandCharactersIsKept) {
    const QString text(10000, u'x');
    TextBox line;
    line.setText(text);
    EXPECT_EQ(line.text(), text);
    MemoBox memo;
    memo.setText(text);
    EXPECT_EQ(memo.text(), text);
}

// Date

TEST_F(Boxes, AHintGoesWithItsField) {
    auto* field = new QLineEdit;
    show(*field);
    Hint::tell(*field, "No number.");
    const auto* hint = window.findChild<QLabel*>("hintBubble");
    ASSERT_TRUE(hint && hint->isVisible());
    delete field;
    EXPECT_FALSE(hint->isVisible());
    window.resize(window.width() + 50, window.height());  // the bubble would look for its field's place
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window.findChild<QLabel*>("hintBubble"), nullptr);
}

TEST_F(Boxes, TheZeroDateIsAnEmptyBoxAndBack) {
    DateBox box;
    show(box);
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.value(), zeroDate());
    box.setValue(day(1965, 3, 27));
    EXPECT_EQ(box.text(), "3/27/1965");
    box.setValue(zeroDate());
    EXPECT_EQ(box.text(), "");
    box.setValue(QDateTime());
    EXPECT_EQ(box.value(), zeroDate());
}

TEST_F(Boxes, ADateIsTyped) {
    DateBox box;
    show(box);
    QSignalSpy edited(&box, &DateBox::valueEdited);
    auto* line = box.findChild<QLineEdit*>();
    QTest::keyClicks(line, "3/27/1965");
    EXPECT_EQ(box.value(), day(1965, 3, 27));
    EXPECT_GE(edited.count(), 1);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    EXPECT_EQ(box.value(), zeroDate());
    EXPECT_TRUE(box.acceptable());
}

TEST_F(Boxes, WhatIsNoDateIsToldAndNotTaken) {
    DateBox box;
    show(box);
    box.setValue(day(1965, 3, 27));
    auto* line = box.findChild<QLineEdit*>();
    for (const char* typed : {"13/45/2020", "abc", "5", "2/30/2020", "10:30"}) {
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, typed);
        EXPECT_FALSE(box.acceptable()) << typed;
        EXPECT_EQ(Hint::textOf(*line), "Please type a date, such as 3/27/1965.");
        EXPECT_EQ(box.value(), day(1965, 3, 27)) << typed;
        QTest::keyClick(line, Qt::Key_Escape);
        EXPECT_TRUE(box.acceptable());
        EXPECT_EQ(box.text(), "3/27/1965");
    }
}

TEST_F(Boxes, ARefusedDateLeadsTheUserToItsBox) {
    DateBox box;
    show(box);
    TextBox other(&window);
    other.show();
    auto* line = box.findChild<QLineEdit*>();
    QTest::keyClicks(line, "abc");
    other.setFocus();
    delete window.findChild<QLabel*>("hintBubble");
    EXPECT_FALSE(box.acceptable());
    EXPECT_TRUE(line->hasFocus());
    EXPECT_EQ(Hint::textOf(*line), "Please type a date, such as 3/27/1965.");
}

TEST_F(Boxes, TheTimeIsShownWhenAskedFor) {
    DateBox box;
    const QDateTime noon(QDate(2026, 3, 7), QTime(12, 5, 9), Qt::UTC);
    box.setValue(noon);
    EXPECT_EQ(box.text(), "3/7/2026");
    EXPECT_EQ(box.value(), noon);
    box.setWithTime(true);
    EXPECT_EQ(box.text(), "3/7/2026 12:05:09 PM");
}

TEST_F(Boxes, TheCalendarChoosesADay) {
    DateBox box;
    show(box);
    box.setValue(day(2026, 3, 7));
    QTest::mouseClick(box.findChild<QToolButton*>(), Qt::LeftButton);
    auto* calendar = box.findChild<QCalendarWidget*>();
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 3, 7));
    QTest::keyClick(calendar->findChild<QWidget*>("qt_calendar_calendarview"), Qt::Key_Right);
    QTest::keyClick(calendar->findChild<QWidget*>("qt_calendar_calendarview"), Qt::Key_Return);
    EXPECT_EQ(box.value(), day(2026, 3, 8));
    EXPECT_EQ(box.text(), "3/8/2026");
}

TEST_F(Boxes, ALockedDateHasNoCalendar) {
    DateBox box;
    show(box);
    box.setReadOnlyBox(true);
    EXPECT_TRUE(box.isReadOnlyBox());
    EXPECT_FALSE(box.findChild<QToolButton*>()->isVisible());
    QTest::keyClick(box.findChild<QLineEdit*>(), Qt::Key_Down);
    EXPECT_EQ(box.findChild<QCalendarWidget*>(), nullptr);
}

TEST_F(Boxes, ADateAsText) {
    DateBox box;
    box.setText("3/27/1965");
    EXPECT_EQ(box.value(), day(1965, 3, 27));
    box.setText("");
    EXPECT_EQ(box.value(), zeroDate());
    EXPECT_THROW(box.setText("no date"), RuntimeError);
    box.setValue(day(2020, 1, 1));
    box.clear();
    EXPECT_EQ(box.value(), zeroDate());
}

// Choice

class Choices : public Boxes {
protected:
    void SetUp() override {
        box.addItems({"AMP", "MCG", "MCG", "MLS"});
        show(box);
    }
    ChoiceBox box;
};

TEST_F(Choices, NothingIsChosenByItself) {
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(box.boxText(), "");
    box.clear();
    box.addItem("one");
    EXPECT_EQ(box.listIndex(), -1);
}

TEST_F(Choices, SettingTheRowAlwaysRaisesClicked) {
    QSignalSpy clicked(&box, &ChoiceBox::clicked);
    box.setListIndex(2);
    box.setListIndex(2);
    box.setListIndex(-1);
    box.setListIndex(99);
    EXPECT_EQ(clicked.count(), 4);
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(box.boxText(), "");
}

TEST_F(Choices, SettingTheTextNeverRaisesClicked) {
    QSignalSpy clicked(&box, &ChoiceBox::clicked);
    box.setBoxText("Select Units");
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(box.boxText(), "Select Units");
    box.setBoxText("MCG");
    EXPECT_EQ(box.listIndex(), 1);
    EXPECT_EQ(box.boxText(), "MCG");
    box.setBoxText("mcg");
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(box.boxText(), "mcg");
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Choices, AForeignTextIsPainted) {
    const QImage empty = box.grab().toImage();
    box.setBoxText("Something else");
    EXPECT_NE(box.grab().toImage(), empty);
}

TEST_F(Choices, TheUserChoosesWithKeys) {
    QSignalSpy clicked(&box, &ChoiceBox::clicked);
    box.setBoxText("Select Units");
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.boxText(), "AMP");
    EXPECT_EQ(clicked.count(), 1);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.listIndex(), 1);
    EXPECT_EQ(clicked.count(), 2);
}

TEST_F(Choices, TheWheelChangesNothing) {
    box.setListIndex(1);
    wheel(box);
    EXPECT_EQ(box.listIndex(), 1);
}

TEST_F(Choices, ALockedBoxStaysClosedAndUnchanged) {
    box.setListIndex(1);
    box.setReadOnlyBox(true);
    EXPECT_TRUE(box.isReadOnlyBox());
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClicks(&box, "A");
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_FALSE(box.view()->isVisible());
    EXPECT_EQ(box.listIndex(), 1);
    box.setReadOnlyBox(false);
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_TRUE(box.view()->isVisible());
    box.hidePopup();
}

// Up-down

class UpDowns : public Boxes {
protected:
    void SetUp() override {
        show(updown);
        updown.setBounds(1, 250);
        updown.setValue(100);
        updown.setBuddy(&label);
        label.setText("designed");
    }
    QToolButton* arrow(const char* name) { return updown.findChild<QToolButton*>(name); }
    UpDown updown;
    QLabel label;
};

TEST_F(UpDowns, TheLabelFollowsFromTheNextChangeOn) {
    EXPECT_EQ(label.text(), "designed");
    QTest::mouseClick(arrow("up"), Qt::LeftButton);
    EXPECT_EQ(label.text(), "101");
    label.setText("7");
    updown.setValue(101);
    EXPECT_EQ(label.text(), "7");
    QTest::mouseClick(arrow("down"), Qt::LeftButton);
    EXPECT_EQ(label.text(), "100");
}

TEST_F(UpDowns, StopsAtItsBoundsWithoutAnEvent) {
    QSignalSpy changed(&updown, &UpDown::changed);
    updown.setValue(9999);
    EXPECT_EQ(updown.value(), 250);
    updown.stepUp();
    EXPECT_EQ(updown.value(), 250);
    updown.setValue(-5);
    EXPECT_EQ(updown.value(), 1);
    updown.stepDown();
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(UpDowns, ALoweredMaximumLeavesTheValue) {
    updown.setValue(250);
    QSignalSpy changed(&updown, &UpDown::changed);
    updown.setMaximum(166);
    EXPECT_EQ(updown.value(), 250);
    EXPECT_EQ(changed.count(), 0);
    updown.stepUp();
    EXPECT_EQ(updown.value(), 250);
    updown.stepDown();
    EXPECT_EQ(updown.value(), 166);
    updown.stepDown();
    EXPECT_EQ(updown.value(), 165);
}

TEST_F(UpDowns, StepsOfTenAndKeys) {
    updown.setBounds(300, 600);
    updown.setStep(10);
    updown.setValue(300);
    QTest::keyClick(&updown, Qt::Key_Up);
    EXPECT_EQ(updown.value(), 310);
    QTest::keyClick(&updown, Qt::Key_PageUp);
    EXPECT_EQ(updown.value(), 410);
    QTest::keyClick(&updown, Qt::Key_Down);
    EXPECT_EQ(updown.value(), 400);
    QTest::keyClick(&updown, Qt::Key_PageDown);
    EXPECT_EQ(updown.value(), 300);
}

TEST_F(UpDowns, RepeatsWhileHeld) {
    QTest::mousePress(arrow("up"), Qt::LeftButton);
    EXPECT_TRUE(support::waitFor([this] { return updown.value() >= 103; }));
    QTest::mouseRelease(arrow("up"), Qt::LeftButton);
}

TEST_F(UpDowns, TheWheelChangesNothing) {
    wheel(updown);
    EXPECT_EQ(updown.value(), 100);
}

TEST_F(UpDowns, SwitchedOffItDoesNothing) {
    updown.setEnabled(false);
    QTest::mouseClick(arrow("up"), Qt::LeftButton);
    QTest::keyClick(&updown, Qt::Key_Up);
    EXPECT_EQ(updown.value(), 100);
}

TEST_F(UpDowns, ArrowsHaveNames) {
    EXPECT_EQ(arrow("up")->accessibleName(), "Up");
    EXPECT_EQ(arrow("down")->accessibleName(), "Down");
}

TEST_F(Boxes, ANumberChangesNeitherByTheWheelNorByArrowKeys) {
    NumberBox box;
    box.setFormats(u"####0"_s, u"####0"_s);
    box.setValue(100.0);
    show(box);
    wheel(box);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown})
        QTest::keyClick(&box, key);
    EXPECT_EQ(box.text(), u"100"_s);
}

/// Arrows beside their label, as on a form: one of value counts 24 there.
class TypedSteps : public Boxes {
protected:
    void SetUp() override {
        auto* row = new QHBoxLayout(&form);
        row->addWidget(&label);
        row->addWidget(&upDown);
        row->addWidget(&next);
        upDown.setBounds(1, 120);
        upDown.setValue(50);
        typed = new StepEntry(upDown, label, 24);
        QObject::connect(&upDown, &UpDown::changed, &label,
                         [this](int value) { label.setText(QString::number(value * 24)); });
        label.setText(u"1200"_s);
        show(form);
        upDown.setFocus();
    }
    QLineEdit* entry() { return typed; }
    void type(const QString& digits) {
        for (const QChar digit : digits)
            QTest::keyClick(QApplication::focusWidget(), digit.toLatin1());
    }

    QWidget form;
    QLabel label{&form};
    UpDown upDown{&form};
    QPushButton next{&form};
    StepEntry* typed = nullptr;
};

TEST_F(TypedSteps, AreTakenInTheLabelsUnit) {
    type(u"1440"_s);
    EXPECT_EQ(entry()->text(), u"1440"_s);
    EXPECT_EQ(label.text(), u"1200"_s) << "until it is taken";
    QTest::keyClick(entry(), Qt::Key_Return);
    EXPECT_EQ(upDown.value(), 60);
    EXPECT_EQ(label.text(), u"1440"_s);
    EXPECT_FALSE(entry()->isVisible());
    EXPECT_TRUE(upDown.hasFocus());
}

TEST_F(TypedSteps, AreTakenWhenTheFieldIsLeft) {
    type(u"48"_s);
    next.setFocus();
    EXPECT_EQ(upDown.value(), 2);
    EXPECT_TRUE(next.hasFocus());
}

TEST_F(TypedSteps, ShowWhereTheLabelShowedSomethingElse) {
    label.setText(u"7"_s);
    QSignalSpy changed(&upDown, &UpDown::changed);
    type(u"1200"_s);
    QTest::keyClick(entry(), Qt::Key_Return);
    EXPECT_EQ(upDown.value(), 50);
    EXPECT_EQ(label.text(), u"1200"_s);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(TypedSteps, WhatIsNotOnTheStepNamesItsNeighboursAndChangesNothing) {
    type(u"1000"_s);
    QTest::keyClick(entry(), Qt::Key_Return);
    EXPECT_EQ(Hint::textOf(*entry()), u"1000 cannot be set. The nearest are 984 and 1008."_s);
    EXPECT_EQ(upDown.value(), 50);
    EXPECT_FALSE(typed->acceptable());
    next.setFocus();
    EXPECT_TRUE(entry()->isVisible()) << "what was typed is not lost";
    EXPECT_EQ(upDown.value(), 50);
    entry()->setFocus();
    QTest::keyClick(entry(), Qt::Key_Escape);
    EXPECT_TRUE(typed->acceptable());
    EXPECT_EQ(label.text(), u"1200"_s);
}

TEST_F(TypedSteps, OutsideTheBoundsTheBoundIsNamed) {
    const auto refusal = [this](const QString& digits) {
        upDown.setFocus();
        type(digits);
        QTest::keyClick(entry(), Qt::Key_Return);
        const QString hint = Hint::textOf(*entry());
        QTest::keyClick(entry(), Qt::Key_Escape);
        return hint;
    };
    EXPECT_EQ(refusal(u"3000"_s), u"At most 2880."_s);
    EXPECT_EQ(refusal(u"23"_s), u"At least 24."_s);
    upDown.setMaximum(100);
    EXPECT_EQ(refusal(u"2424"_s), u"At most 2400."_s);
    EXPECT_EQ(upDown.value(), 50);
}

TEST_F(TypedSteps, ArrowKeysStepFromWhatIsTyped) {
    type(u"48"_s);
    QTest::keyClick(entry(), Qt::Key_Up);
    EXPECT_EQ(upDown.value(), 3);
}

TEST_F(TypedSteps, SwitchedOffTheyAreDropped) {
    type(u"48"_s);
    upDown.setEnabled(false);
    EXPECT_FALSE(entry()->isVisible());
    EXPECT_EQ(upDown.value(), 50);
}

TEST_F(TypedSteps, LettersAndTheWheelDoNothing) {
    type(u"x"_s);
    EXPECT_FALSE(entry()->isVisible());
    type(u"4"_s);
    wheel(*entry());
    EXPECT_EQ(entry()->text(), u"4"_s);
}

TEST_F(TypedSteps, HomeAndEndGoToTheBounds) {
    QTest::keyClick(&upDown, Qt::Key_End);
    EXPECT_EQ(upDown.value(), 120);
    QTest::keyClick(&upDown, Qt::Key_Home);
    EXPECT_EQ(upDown.value(), 1);
}

TEST_F(TypedSteps, TheFocusIsMarked) {
    const QImage focused = upDown.grab().toImage();
    next.setFocus();
    EXPECT_NE(upDown.grab().toImage(), focused);
    upDown.setFocus();
    EXPECT_EQ(upDown.grab().toImage(), focused);
}

}  // namespace
