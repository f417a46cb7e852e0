// The strip that shows error reports, and the window that lists them.
#include "core/ErrorStrip.h"
#include "Child.h"
#include "TestProgram.h"
#include "core/ErrorReportList.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

namespace {

using namespace sorvanto;
using support::child;

class ErrorStripTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        strip.follow(reporter);
        // The strip lies in a window that is up.
        strip.show();
        strip.hide();
    }
    void report(const QString& description, const QString& tag = "frmLog:saveForm") {
        reporter->ReportError(description, "5", "test", 0, tag, {}, true, false, true, true);
        expectReport(tag);
    }
    QString shown() { return child<QLabel>(strip, "lblReport")->text(); }
    ErrorReportList* list() {
        QTest::mouseClick(child<QPushButton>(strip, "cmdDetails"), Qt::LeftButton);
        return strip.findChild<ErrorReportList*>();
    }
    ErrorStrip strip{nullptr};
};

TEST_F(ErrorStripTest, ShowsTheNewestReportWithItsTag) {
    EXPECT_FALSE(strip.isVisible());
    report("The disk is full");
    EXPECT_TRUE(strip.isVisible());
    EXPECT_EQ(shown(), "The disk is full   (frmLog:saveForm)");
    QCoreApplication::processEvents();
    report("Overflow", "frmMain:Form_Load");
    EXPECT_EQ(shown(), "Overflow   (frmMain:Form_Load)");
}

TEST_F(ErrorStripTest, OfSeveralReportsInOneClickTheFirstIsShown) {
    report("The file is locked");
    report("Object variable not set");
    report("No current record");
    EXPECT_EQ(shown(), "The file is locked   (frmLog:saveForm)");
    EXPECT_EQ(child<QPushButton>(strip, "cmdDetails")->text(), "Details (3)");
    QCoreApplication::processEvents();
    report("The next one");
    EXPECT_EQ(shown(), "The next one   (frmLog:saveForm)");
    EXPECT_EQ(child<QPushButton>(strip, "cmdDetails")->text(), "Details");
}

TEST_F(ErrorStripTest, AQuestionInTheMidstOfAClickIsPartOfIt) {
    report("The file is locked");
    QDialog question;
    question.setModal(true);
    question.show();
    QCoreApplication::processEvents();
    report("Object variable not set");
    EXPECT_EQ(shown(), "The file is locked   (frmLog:saveForm)");
}

TEST_F(ErrorStripTest, AnErrorLogThatCannotBeWrittenIsSaidWithItsReason) {
    reporter->ReportPath(folder.path("missing"));
    report("Overflow");
    EXPECT_TRUE(shown().startsWith("errors.log: Can not be written (")) << shown().toStdString();
    EXPECT_TRUE(shown().endsWith("Overflow   (frmLog:saveForm)"));
}

TEST_F(ErrorStripTest, ARepeatedReportDoesNotComeBackOnceItWasPutAside) {
    report("The disk is full");
    QTest::mouseClick(child<QToolButton>(strip, "cmdDismiss"), Qt::LeftButton);
    EXPECT_FALSE(strip.isVisible());
    report("The disk is full");
    EXPECT_FALSE(strip.isVisible());
    report("Another one");
    EXPECT_TRUE(strip.isVisible());
}

TEST_F(ErrorStripTest, DetailsListAllReportsNewestFirst) {
    report("The disk is full");
    reporter->setFailedStatement("INSERT INTO Log");
    report("Overflow", "frmMain:Form_Load");
    report("The disk is full");
    auto* window = list();
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    auto* table = child<QTableWidget>(*window, "grdReports");
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->item(1, 4)->text(), "2") << "counted, not listed again";
    EXPECT_EQ(table->item(0, 1)->text(), "frmMain:Form_Load");
    EXPECT_EQ(child<QPlainTextEdit>(*window, "txtReport")->toPlainText(),
              "3/7/2026 2:05:09 PM   frmMain:Form_Load\n5  test\nOverflow\n\nINSERT INTO Log");
}

TEST_F(ErrorStripTest, TheListGrowsWhileItIsOpenAndKeepsTheChosenOne) {
    report("First");
    auto* window = list();
    auto* table = child<QTableWidget>(*window, "grdReports");
    report("Second");
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->currentRow(), 1) << "the first one is still the chosen one";
    EXPECT_EQ(list(), window) << "one list, however often it is asked for";
    for (auto* button : window->findChildren<QPushButton*>()) {
        if (button->text() == "Copy")
            button->click();
    }
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith("First"));
}

TEST_F(ErrorStripTest, ALongDescriptionOfSeveralLinesStaysOneLine) {
    report("Line one\nline two   " + QString(2000, 'x'));
    EXPECT_FALSE(shown().contains('\n'));
    strip.resize(400, strip.sizeHint().height());
    EXPECT_LE(strip.minimumSizeHint().width(), 400);
}

}  // namespace
