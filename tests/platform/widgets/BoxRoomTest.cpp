// Texts and the room they have: columns that hold so many characters, lines that are pasted, values that are cut.
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CutText.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/OneLine.h"
#include "platform/widgets/ReportList.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <gtest/gtest.h>

using namespace platform;
using namespace Qt::StringLiterals;

namespace {

/// A box in a window on show, with the focus, and a second one to leave it for.
class BoxRoom : public testing::Test {
protected:
    void SetUp() override {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&box);
        column->addWidget(&other);
        window.resize(240, 160);
        window.show();
        window.activateWindow();
        box.setFocus();
        ASSERT_TRUE(support::becomesActive(&window));
    }
    void paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        QTest::keySequence(&box, QKeySequence::Paste);
    }
    QString tipOf(QWidget& widget) {
        QToolTip::hideText();  // takes a moment
        EXPECT_TRUE(support::waitFor([] { return !QToolTip::isVisible(); }));
        const QPoint middle = widget.rect().center();
        QHelpEvent event(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
        QApplication::sendEvent(&widget, &event);
        return QToolTip::text();
    }
    QWidget window;
    TextBox box, other;
};

TEST_F(BoxRoom, TheBoxTakesAsManyCharactersAsTheColumnHolds) {
    box.setColumnSize(5);
    QTest::keyClicks(&box, u"abcdefg"_s);
    EXPECT_EQ(box.text(), "abcde");
    EXPECT_EQ(Hint::textOf(box), "No more than 5 characters fit here.");
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_EQ(Hint::textOf(box), "");
    EXPECT_EQ(box.text(), "abcd");
}

TEST_F(BoxRoom, APastedTextThatDoesNotFitIsRefusedWhole) {
    box.setColumnSize(8);
    QTest::keyClicks(&box, u"lot "_s);
    paste(u"12345"_s);
    EXPECT_EQ(box.text(), "lot ");
    EXPECT_EQ(Hint::textOf(box), "No more than 8 characters fit here.");
    paste(u"1234"_s);
    EXPECT_EQ(box.text(), "lot 1234");
}

TEST_F(BoxRoom, ALongerTextOfTheProgramStaysWholeAndCanBeShortened) {
    box.setColumnSize(5);
    box.setText(u"abcdefghij"_s);
    EXPECT_EQ(box.text(), "abcdefghij");
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClicks(&box, u"k"_s);
    EXPECT_EQ(box.text(), "abcdefghij");
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_EQ(box.text(), "abcdefghi");
    box.undo();
    EXPECT_EQ(box.text(), "abcdefghij");
    box.setText(u"ab"_s);
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClicks(&box, u"cdefgh"_s);
    EXPECT_EQ(box.text(), "abcde");
}

TEST_F(BoxRoom, ACountShowsNearTheEndWhileTheBoxIsInUse) {
    box.setColumnSize(40);
    box.setText(QString(29, u'x'));
    EXPECT_EQ(box.countText(), "");
    EXPECT_EQ(box.textMargins().right(), 0);
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClicks(&box, u"y"_s);
    EXPECT_EQ(box.countText(), "30 / 40");
    EXPECT_GT(box.textMargins().right(), 0) << "the text would run under the count";
    other.setFocus();
    EXPECT_EQ(box.textMargins().right(), 0);
    box.setReadOnlyBox(true);
    EXPECT_EQ(box.countText(), "");
}

TEST(OneLine, BreaksBecomeBlanks) {
    EXPECT_EQ(onOneLine(u"Mill Road 4\r\nSpringfield\n"_s), "Mill Road 4 Springfield");
    EXPECT_EQ(onOneLine(u"a \n b\tc\u2028d"_s), "a b c d");
    EXPECT_EQ(onOneLine(u" two  blanks "_s), " two  blanks ") << "without a break nothing is changed";
}

TEST_F(BoxRoom, PastedLineBreaksBecomeBlanks) {
    paste(u"Mill Road 4\nSpringfield"_s);
    EXPECT_EQ(box.text(), "Mill Road 4 Springfield");
    box.undo();
    EXPECT_EQ(box.text(), "");
}

TEST_F(BoxRoom, TheMenuAndADropPasteOnOneLineToo) {
    QApplication::clipboard()->setText(u"a\nb"_s);
    QContextMenuEvent wish(QContextMenuEvent::Mouse, QPoint(5, 5), box.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&box, &wish);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    const QList<QAction*> actions = menu->actions();
    const auto paste = std::find_if(actions.begin(), actions.end(), [](const QAction* action) {
        return action->text().contains(u"Paste"_s);
    });
    ASSERT_NE(paste, actions.end());
    (*paste)->trigger();
    menu->close();
    EXPECT_EQ(box.text(), "a b");
    box.clear();
    QMimeData data;
    data.setText(u"c\r\nd"_s);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &drop);
    EXPECT_EQ(box.text(), "c d");
}

TEST_F(BoxRoom, ACutValueShowsItsBeginningAndTheWholeAsTip) {
    const QString text = u"Ketoprofen 10% & Lidocaine <5%> in a very long transdermal gel"_s;
    box.setText(text);
    other.setFocus();
    EXPECT_TRUE(isCut(box));
    EXPECT_TRUE(tipOf(box).contains(text.toHtmlEscaped()));
    box.setText(u"short"_s);
    EXPECT_FALSE(isCut(box));
    EXPECT_EQ(tipOf(box), "");
}

TEST_F(BoxRoom, ACutValueEndsInDots) {
    other.setFocus();
    const QString beginning = u"WWWW WWWW WWWW WWWW WWWW WWWW"_s;
    box.setText(beginning + u"WWWW WWWW"_s);
    const QImage longer = box.grab().toImage();
    box.setText(beginning + u"iiiii"_s);
    EXPECT_EQ(box.grab().toImage(), longer) << "both end in the same dots";
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    EXPECT_NE(box.grab().toImage(), longer) << "in use the box shows its text as it scrolls";
}

TEST_F(BoxRoom, ALockedBoxShowsItsBeginning) {
    box.setText(QString(80, u'x'));
    QTest::keyClick(&box, Qt::Key_End);
    EXPECT_EQ(box.cursorPosition(), 80);
    other.setFocus();
    box.setReadOnlyBox(true);
    EXPECT_EQ(box.cursorPosition(), 0);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_End);
    other.setFocus();
    EXPECT_EQ(box.cursorPosition(), 0);
}

TEST_F(BoxRoom, ACutNumberAndChoiceTellTheWholeToo) {
    NumberBox number(&window);
    number.setFormats(u"$ ###,##0.00"_s, u"$ ###,##0.00"_s);
    number.setValue(123456789.0);
    number.setGeometry(0, 0, 60, 30);
    number.show();
    EXPECT_TRUE(tipOf(number).contains(u"123,456,789.00"_s));
    ChoiceBox choice(&window);
    choice.setBoxText(u"a unit with a very long name"_s);
    choice.setGeometry(0, 30, 80, 30);
    choice.show();
    EXPECT_TRUE(tipOf(choice).contains(u"a unit with a very long name"_s));
}

}  // namespace
