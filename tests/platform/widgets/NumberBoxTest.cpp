// A number box from the keyboard's side: formats, marks, bounds, hints, and what callers read.
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

class NumberBoxes : public testing::Test {
protected:
    void SetUp() override {
        window.resize(400, 200);
        box.setParent(&window);
        other.setParent(&window);
        other.move(0, 100);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(support::becomesActive(&window));
        other.setFocus();
    }
    void type(const QString& text) {
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }
    void leave() { other.setFocus(); }
    QString shown() const { return static_cast<const QLineEdit&>(box).text(); }
    QString hint() const { return Hint::textOf(box); }

    QWidget window;
    NumberBox box;
    TextBox other;
};

TEST_F(NumberBoxes, IsEmptyAtFirst) {
    EXPECT_EQ(box.text(), "");
    EXPECT_FALSE(box.value().isValid());
    EXPECT_EQ(box.toDouble(), 0.0);
    EXPECT_EQ(box.toCurrency(), Currency());
    EXPECT_TRUE(box.acceptable());
    EXPECT_TRUE(box.alignment() & Qt::AlignRight);
}

TEST_F(NumberBoxes, ShowsTheDisplayFormatAndWhileEditingTheNumberAlone) {
    box.setFormats("$ ###,##0.00", "$ ###,##0.00");
    box.setValue(Currency::fromText("1211.2"));
    EXPECT_EQ(shown(), "$ 1,211.20");
    EXPECT_EQ(box.text(), "1211.2");
    box.setFocus();
    EXPECT_EQ(shown(), "1211.20");
    leave();
    EXPECT_EQ(shown(), "$ 1,211.20");
}

TEST_F(NumberBoxes, ALockedBoxKeepsItsDisplayFormatAndItsNumber) {
    box.setFormats("####0", "####0");
    box.setValue(100);
    box.setReadOnlyBox(true);
    EXPECT_TRUE(box.isReadOnlyBox());
    type("5");
    EXPECT_EQ(box.text(), "100");
    EXPECT_EQ(shown(), "100");
}

TEST_F(NumberBoxes, TheThirdPartOfTheFormatIsForAnEmptyBoxOnly) {
    box.setFormats("####0", "####0;;Null");
    box.setValue(0);
    EXPECT_EQ(shown(), "0");
    box.clear();
    EXPECT_EQ(shown(), "Null");
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.toDouble(), 0.0);
    box.setFocus();
    EXPECT_EQ(shown(), "");
}

TEST_F(NumberBoxes, WhatIsTypedCountsAtOnce) {
    box.setFormats("####0", "####0");
    QSignalSpy edited(&box, &NumberBox::valueEdited);
    type("250");
    EXPECT_EQ(box.text(), "250");
    EXPECT_EQ(box.toDouble(), 250.0);
    EXPECT_EQ(edited.count(), 3);
}

TEST_F(NumberBoxes, TakesPointAndComma) {
    box.setLocale(QLocale(QLocale::German, QLocale::Germany));
    box.setFormats("###,##0.00", "###,##0.00");
    type("12,5");
    EXPECT_EQ(box.text(), "12.5");
    leave();
    EXPECT_EQ(shown(), "12,50");
    type("12.5");
    EXPECT_EQ(box.text(), "12.5");
    type("1.234,5");
    EXPECT_EQ(box.text(), "1234.5");
    leave();
    EXPECT_EQ(shown(), "1.234,50");
}

TEST_F(NumberBoxes, RefusesWhatCanBeReadInTwoWays) {
    box.setFormats("###,##0.00", "###,##0.00");
    box.setValue(7);
    type("1.234,5");
    EXPECT_FALSE(box.acceptable());
    EXPECT_EQ(hint(),
              "This can be read in two ways. Leave out the thousands mark and use \".\" for decimals.");
    EXPECT_TRUE(box.property("invalid").toBool());
    leave();
    EXPECT_EQ(shown(), "1.234,5");
    EXPECT_FALSE(box.acceptable());
    EXPECT_EQ(box.text(), "");
    EXPECT_THROW(box.toCurrency(), RuntimeError);
    EXPECT_THROW(box.value(), RuntimeError);
}

TEST_F(NumberBoxes, RefusesAPastedTextThatCanBeReadInTwoWays) {
    box.setLocale(QLocale(QLocale::German, QLocale::Germany));
    QApplication::clipboard()->setText("1.234");
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(), "1.234");
    EXPECT_FALSE(box.acceptable());
    EXPECT_NE(hint(), "");
}

TEST_F(NumberBoxes, TheErrorSaysWhatTheHintSays) {
    box.setObjectName("txtfrm_AWP");
    type("x");
    try {
        box.toDouble();
        FAIL();
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.number(), error::typeMismatch);
        EXPECT_EQ(failure.description(), "Please type a number, such as 12.5.");
    }
}

TEST_F(NumberBoxes, TooMuchIsRefusedNotClipped) {
    box.setFormats("####0", "####0");
    box.setBounds(0, 1000);
    type("1000");
    EXPECT_EQ(hint(), "");
    QTest::keyClicks(&box, "1");
    EXPECT_EQ(shown(), "10001");
    EXPECT_EQ(hint(), "At most 1000.");
    EXPECT_FALSE(box.acceptable());
    leave();
    EXPECT_EQ(shown(), "10001");
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_EQ(hint(), "");
    EXPECT_EQ(box.text(), "1000");
    EXPECT_FALSE(box.property("invalid").toBool());
}

TEST_F(NumberBoxes, TooLittleIsToldOnLeaving) {
    box.setFormats("####0", "####0");
    box.setBounds(10, 99999);
    type("1");
    EXPECT_EQ(hint(), "");
    leave();
    EXPECT_EQ(hint(), "At least 10.");
    EXPECT_FALSE(box.acceptable());
    box.setFocus();
    QTest::keyClicks(&box, "5");
    EXPECT_EQ(hint(), "");
    EXPECT_EQ(box.text(), "15");
}

TEST_F(NumberBoxes, TheBoundsDoNotJudgeWhatTheProgramSets) {
    box.setFormats("####0", "####0");
    box.setBounds(0, 1000);
    box.setValue(1500);
    EXPECT_TRUE(box.acceptable());
    EXPECT_EQ(box.text(), "1500");
    EXPECT_EQ(shown(), "1500");
}

TEST_F(NumberBoxes, DecimalsBeyondTheEditFormatAreRefused) {
    box.setFormats("####0", "####0");
    type("2.5");
    EXPECT_EQ(hint(), "Whole numbers only.");
    EXPECT_FALSE(box.acceptable());
    box.setFormats("0.00", "0.00");
    type("2.55555");
    EXPECT_EQ(hint(), "No more than 4 decimals.");
    box.setFormats("0.00000", "0.00000");
    type("2.555555");
    EXPECT_EQ(hint(), "No more than 5 decimals.");
}

TEST_F(NumberBoxes, PricesOfLessThanACentCanBeTyped) {
    box.setFormats("$ ###,##0.00", "$ ###,##0.00");
    type("0.055");
    EXPECT_EQ(hint(), "");
    EXPECT_TRUE(box.acceptable());
    EXPECT_EQ(box.toCurrency().toText(), "0.055");
    leave();
    EXPECT_EQ(shown(), "$ 0.06");
    box.setFocus();
    EXPECT_EQ(shown(), "0.055");
    type("0.0125");
    EXPECT_EQ(box.toCurrency().toText(), "0.0125");
}

TEST_F(NumberBoxes, ARefusalLeadsTheUserToTheBox) {
    type("-");
    leave();
    delete window.findChild<QLabel*>("hintBubble");
    EXPECT_EQ(hint(), "");
    EXPECT_THROW(box.toDouble(), RuntimeError);
    EXPECT_TRUE(other.hasFocus()) << "reading leaves the focus alone";
    EXPECT_FALSE(box.acceptable());
    EXPECT_TRUE(box.hasFocus());
    EXPECT_EQ(hint(), "Please type a number, such as 12.5.");
    box.setValue(3);
    other.setFocus();
    EXPECT_TRUE(box.acceptable());
    EXPECT_TRUE(other.hasFocus());
}

TEST_F(NumberBoxes, AFinerStoredNumberIsShownWholeWhileEditingAndKept) {
    box.setFormats("$ ###,##0.00", "$ ###,##0.00");
    box.setValue(Currency::fromText("0.0125"));
    EXPECT_EQ(shown(), "$ 0.01");
    box.setFocus();
    EXPECT_EQ(shown(), "0.0125");
    leave();
    EXPECT_EQ(box.toCurrency().toText(), "0.0125");
}

TEST_F(NumberBoxes, EscapeGivesTheLastGoodNumberBack) {
    box.setValue(5);
    type("abc");
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_EQ(box.text(), "5");
    EXPECT_EQ(hint(), "");
}

TEST_F(NumberBoxes, AnEmptiedBoxIsNoFault) {
    box.setBounds(1, 10);
    box.setValue(5);
    box.setFocus();
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    leave();
    EXPECT_TRUE(box.acceptable());
    EXPECT_FALSE(box.value().isValid());
}

TEST_F(NumberBoxes, AValueSetByTheProgramTakesAHintAway) {
    type("1.234,5");
    box.setText("3.5");
    EXPECT_EQ(hint(), "");
    EXPECT_TRUE(box.acceptable());
    EXPECT_EQ(box.text(), "3.5");
}

TEST_F(NumberBoxes, TextMustBeANumberWithAPoint) {
    box.setText("0.00");
    EXPECT_EQ(box.toCurrency(), Currency());
    EXPECT_EQ(box.text(), "0");
    EXPECT_THROW(box.setText("abc"), RuntimeError);
    box.setText("");
    EXPECT_FALSE(box.value().isValid());
}

TEST_F(NumberBoxes, EmptyingItAsAPlainLineEmptiesTheNumber) {
    box.setValue(12);
    static_cast<QLineEdit&>(box).setText("");
    EXPECT_EQ(box.text(), "");
    EXPECT_FALSE(box.value().isValid());
}

TEST_F(NumberBoxes, MoneyIsExact) {
    type("0.0001");
    EXPECT_EQ(box.toCurrency().tenThousandths(), 1);
    box.setValue(Currency::fromTenThousandths(922337203685477));
    EXPECT_EQ(box.toCurrency().tenThousandths(), 922337203685477);
}

TEST_F(NumberBoxes, HintsAreTranslated) {
    setTextTranslator([](const QString& text) { return text == "At most %1." ? "Höchstens %1." : text; });
    box.setBounds(0, 10);
    type("11");
    EXPECT_EQ(hint(), u"Höchstens 10."_s);
    setTextTranslator({});
}

TEST_F(NumberBoxes, TheHintTakesNoFocusAndStaysInsideTheWindow) {
    box.move(330, 160);
    box.resize(60, 32);
    type("1.234,5");
    EXPECT_EQ(QApplication::focusWidget(), &box);
    const auto* bubble = window.findChild<QLabel*>("hintBubble");
    ASSERT_NE(bubble, nullptr);
    EXPECT_GE(bubble->x(), 0);
    EXPECT_LE(bubble->geometry().right(), window.width());
}

TEST_F(NumberBoxes, ShowsAChangeByTensInAmberUntilItIsStored) {
    box.setFormats("#0.000", "#0.000");
    box.setValue(1.25);
    type("125");
    EXPECT_EQ(hint(), "Please check: 1.25 before, 125 now.");
    EXPECT_TRUE(box.property("caution").toBool());
    EXPECT_FALSE(box.property("invalid").toBool());
    EXPECT_TRUE(box.acceptable());
    EXPECT_EQ(box.toDouble(), 125);
    leave();
    EXPECT_TRUE(box.property("caution").toBool());
    type("126");
    EXPECT_FALSE(box.property("caution").toBool());
    type("12.5");
    EXPECT_TRUE(box.property("caution").toBool());
    box.setValue(12.5);
    EXPECT_FALSE(box.property("caution").toBool());
}

TEST_F(NumberBoxes, RefusesTwoCellsPastedTogether) {
    box.setLocale(QLocale(QLocale::French));
    for (const char* cells : {"12\t345", "12\n345", "12\r\n345"}) {
        QApplication::clipboard()->setText(cells);
        type("7");
        box.selectAll();
        box.paste();
        EXPECT_FALSE(box.acceptable()) << cells;
        EXPECT_EQ(box.text(), "") << cells;
    }
}

TEST_F(NumberBoxes, TellsBothReadings) {
    type("1,250");
    EXPECT_EQ(hint(), "This can be read in two ways. Write 1250 or 1.25.");
    box.setLocale(QLocale(QLocale::German));
    type("1.250");
    EXPECT_EQ(hint(), "This can be read in two ways. Write 1250 or 1,25.");
    type("0.125");
    EXPECT_EQ(hint(), "Write 0,125.");
}

}  // namespace
