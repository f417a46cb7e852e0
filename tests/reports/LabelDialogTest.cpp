// The question for number and start of labels: geometry, flags, close box, numbers that 16 bits can't hold.
#include "Child.h"
#include "ReportTest.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Hint.h"
#include "reports/frmSelPrint.h"
#include "shared/basMain.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;
using support::child;

namespace {

class LabelDialogTest : public ReportTest {
protected:
    /// Shows the dialog, runs the script in it, and gives what it answers.
    struct Answer {
        int labels, row, column;
    };
    Answer ask(const std::function<void(QWidget&)>& script) {
        asker.expectModal("frmSelPrint", script);
        frmSelPrint form(context);
        form.showModal();
        return {form.NumLabels(), form.Row(), form.Column()};
    }
    static void type(QWidget& form, const QString& text) {
        auto* box = child<NumberBox>(form, "txtLabels");
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, text);
    }
    static QPushButton* position(QWidget& form, int index) {
        return child<QPushButton>(form, u"cmdPosition_%1"_s.arg(index));
    }
};

int pixels(int twips) { return qRound(twips / 15.0); }

}  // namespace

TEST_F(LabelDialogTest, ThirtyPositionsRowByRow) {
    frmSelPrint form(context);
    EXPECT_EQ(form.findChildren<QPushButton*>().size(), 30);
    for (int index = 1; index <= 30; ++index) {
        const int row = (index - 1) / 3, column = (index - 1) % 3;
        const QPushButton* button = position(form, index);
        EXPECT_EQ(str(button->text()), str(QString::number(index)));
        EXPECT_EQ(str(button->property("tag").toString()), str(u"%1,%2"_s.arg(column).arg(row)));
        EXPECT_EQ(button->x(), pixels(column * 1000));
        EXPECT_EQ(button->y(), pixels(row * 500 + 1500));
        EXPECT_NEAR(button->width(), 1000 / 15.0, 1);
        EXPECT_NEAR(button->height(), 500 / 15.0, 1);
        EXPECT_FALSE(button->autoDefault()) << "Enter in the number box presses nothing";
    }
    EXPECT_EQ(str(position(form, 30)->property("tag").toString()), "2,9");
    EXPECT_EQ(child<QWidget>(form, "fraSheet")->size(), QSize(pixels(3100), pixels(7000)));
}

TEST_F(LabelDialogTest, HeadStandsInTheMiddle) {
    frmSelPrint form(context);
    form.show();
    for (const auto& [name, top] : {std::pair{"lblNum", 120}, {"txtLabels", 480}, {"lblStart", 840}}) {
        const auto* control = child<QWidget>(form, name);
        EXPECT_EQ(control->y(), pixels(top)) << name;
        EXPECT_NEAR(control->x() + control->width() / 2.0, 3100 / 15.0 / 2, 1) << name;
        EXPECT_TRUE(control->isVisible());
    }
    kept(form, "label-positions");
    EXPECT_EQ(str(form.windowTitle()), "Print Labels");
    EXPECT_EQ(str(child<QLabel>(form, "lblNum")->text()), "Number of Labels");
    EXPECT_EQ(str(child<QLabel>(form, "lblStart")->text()), "Select start position for labels");
}

TEST_F(LabelDialogTest, NumberIsWholeFromOneOn) {
    frmSelPrint form(context);
    const auto* box = child<NumberBox>(form, "txtLabels");
    EXPECT_EQ(str(box->text()), "1");
    EXPECT_EQ(box->minimum(), 1);
    EXPECT_EQ(box->maximum(), 99999);
    EXPECT_EQ(form.NumLabels(), 1);
}

TEST_F(LabelDialogTest, FlagIsSetUntilAPositionIsPressed) {
    basMain::labelsCancelled = false;
    ask([](QWidget& form) {
        EXPECT_TRUE(basMain::labelsCancelled);
        position(form, 4)->click();
    });
    EXPECT_FALSE(basMain::labelsCancelled);
}

TEST_F(LabelDialogTest, LastButtonIsRowTenColumnThree) {
    const Answer answer = ask([](QWidget& form) {
        type(form, "12");
        position(form, 30)->click();
    });
    EXPECT_EQ(answer.labels, 12);
    EXPECT_EQ(answer.row, 10);
    EXPECT_EQ(answer.column, 3);
}

TEST_F(LabelDialogTest, EveryPositionIsItsRowAndColumn) {
    for (int index = 1; index <= 30; ++index) {
        const Answer answer = ask([index](QWidget& form) { position(form, index)->click(); });
        EXPECT_EQ(answer.row, (index - 1) / 3 + 1);
        EXPECT_EQ(answer.column, (index - 1) % 3 + 1);
    }
}

TEST_F(LabelDialogTest, CloseBoxPrintsNothing) {
    const Answer answer = ask([](QWidget& form) { form.close(); });
    EXPECT_EQ(answer.row, 0);
    EXPECT_EQ(answer.column, 0);
    EXPECT_TRUE(basMain::labelsCancelled);
}

TEST_F(LabelDialogTest, EscapeIsTheCloseBox) {
    const Answer answer = ask([](QWidget& form) { QTest::keyClick(&form, Qt::Key_Escape); });
    EXPECT_EQ(answer.row, 0);
    EXPECT_TRUE(basMain::labelsCancelled);
}

TEST_F(LabelDialogTest, NumberBeyondSixteenBitsIsRefusedWithAHint) {
    const Answer typed = ask([](QWidget& form) {
        const auto* box = child<NumberBox>(form, "txtLabels");
        for (const char* many : {"32768", "40000", "99999"}) {
            type(form, many);  // key by key: 9, 99, 999, 9999 were good
            EXPECT_EQ(str(Hint::textOf(*box)), "At most 32767.") << many;
            position(form, 1)->click();
            EXPECT_TRUE(form.isVisible()) << many;
            EXPECT_TRUE(basMain::labelsCancelled) << many;
            EXPECT_EQ(str(Hint::textOf(*box)), "At most 32767.") << many;
        }
        type(form, "400");
        EXPECT_EQ(str(Hint::textOf(*box)), "");
        position(form, 1)->click();
    });
    EXPECT_EQ(typed.labels, 400);
    const Answer empty = ask([](QWidget& form) {
        type(form, "7");
        type(form, "");
        position(form, 1)->click();
    });
    EXPECT_EQ(empty.labels, 7);
    const Answer largest = ask([](QWidget& form) {
        type(form, "32767");
        position(form, 1)->click();
    });
    EXPECT_EQ(largest.labels, 32767);
}

TEST_F(LabelDialogTest, NumberOutOfBoundsIsNotAccepted) {
    const Answer answer = ask([](QWidget& form) {
        for (const char* wrong : {"0", "100000", "1.5"}) {
            type(form, wrong);
            position(form, 1)->click();
            EXPECT_TRUE(form.isVisible()) << wrong;
            EXPECT_TRUE(basMain::labelsCancelled) << wrong;
        }
        type(form, "2");
        position(form, 1)->click();
    });
    EXPECT_EQ(answer.labels, 2);
}
