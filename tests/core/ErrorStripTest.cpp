// The strip that shows error reports, and the window that lists them.
#include "core/ErrorStrip.h"
#include "Child.h"
#include "Heard.h"
#include "TestProgram.h"
#include "Waiting.h"
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
    void report(const QString& description, const QString& tag = "frmLog:saveForm",
                const QString& number = "5") {
        reporter->ReportError(description, number, "test", 0, tag, {}, true, false, true, true);
        expectReport(tag);
    }
    QString shown() { return child<QLabel>(strip, "lblReport")->text(); }
    ErrorReportList* list() {
        QTest::mouseClick(child<QPushButton>(strip, "cmdDetails"), Qt::LeftButton);
        return strip.findChild<ErrorReportList*>();
    }
    /// Whether the strip has gone; nothing in it has the focus.
    bool goneUnused() const {
        if (QWidget* focus = QApplication::focusWidget())
            focus->clearFocus();
        return !strip.isVisible();
    }
    ErrorStrip strip{nullptr};
};

/// What is said of a failure to save that nobody foresaw, and of one without room on the disk.
const char* const notSaved =
    "The record was not saved. What you typed is kept. Try again; if it comes back, start the "
    "program again. Details tell more.";
const char* const diskFull =
    "The record was not saved. What you typed is kept. The disk is full: make room, and try again.";

TEST_F(ErrorStripTest, SaysWhatTheNewestReportMeans) {
    EXPECT_FALSE(strip.isVisible());
    report("SQL logic error");
    EXPECT_TRUE(strip.isVisible());
    EXPECT_EQ(shown(), notSaved);
    QCoreApplication::processEvents();
    report("The disk is full", "frmLog:saveForm", "61");
    EXPECT_EQ(shown(), diskFull);
}

TEST_F(ErrorStripTest, ScreenReadersSayIt) {
    const support::Heard heard;
    report("SQL logic error");
    EXPECT_EQ(heard.all(), QStringList(notSaved));
    report("No current record", "frmLog:moveNext", "3021");
    EXPECT_EQ(heard.all().size(), 1) << "of one click the first alone, as it is shown";
    QCoreApplication::processEvents();
    report("The disk is full", "frmLog:saveForm", "61");
    EXPECT_EQ(heard.all(), (QStringList{notSaved, diskFull}));
}

TEST_F(ErrorStripTest, OfSeveralReportsInOneClickTheFirstIsShown) {
    report("The disk is full", "frmLog:saveForm", "61");
    report("Object variable not set", "frmLog:refreshForm", "91");
    report("No current record", "frmLog:moveNext", "3021");
    EXPECT_EQ(shown(), diskFull);
    EXPECT_EQ(child<QPushButton>(strip, "cmdDetails")->text(), "Details (3)");
    QCoreApplication::processEvents();
    report("The next one");
    EXPECT_EQ(shown(), notSaved);
    EXPECT_EQ(child<QPushButton>(strip, "cmdDetails")->text(), "Details");
}

TEST_F(ErrorStripTest, AQuestionInTheMidstOfAClickIsPartOfIt) {
    report("The disk is full", "frmLog:saveForm", "61");
    QDialog question;
    question.setModal(true);
    question.show();
    QCoreApplication::processEvents();
    report("Object variable not set");
    EXPECT_EQ(shown(), diskFull);
}

TEST_F(ErrorStripTest, AnErrorLogThatCannotBeWrittenIsSaidWithItsReason) {
    reporter->ReportPath(folder.path("missing"));
    report("Overflow");
    EXPECT_TRUE(shown().startsWith("errors.log: Can not be written (")) << shown().toStdString();
    EXPECT_TRUE(shown().endsWith(notSaved));
}

TEST_F(ErrorStripTest, AnOldReportGoesByItselfAndStaysInTheList) {
    strip.setStay(std::chrono::milliseconds(0));
    strip.activateWindow();
    report("The disk is full", "frmLog:saveForm", "61");
    EXPECT_TRUE(support::waitFor([&] { return goneUnused(); }));
    EXPECT_EQ(strip.problemsButton()->text(), "Problems: 1");
    strip.problemsButton()->click();
    auto* window = strip.findChild<ErrorReportList*>();
    ASSERT_TRUE(window && window->isVisible());
    EXPECT_EQ(child<QTableWidget>(*window, "grdReports")->item(0, 1)->text(), diskFull);
}

TEST_F(ErrorStripTest, WhileAQuestionIsOpenTheStripStays) {
    QDialog question;
    question.setModal(true);
    question.show();
    strip.setStay(std::chrono::milliseconds(0));
    report("The disk is full", "frmLog:saveForm", "61");
    for (int turn = 0; turn < 20; ++turn)
        QCoreApplication::processEvents();
    EXPECT_TRUE(strip.isVisible());
    question.close();
    strip.activateWindow();
    EXPECT_TRUE(support::waitFor([&] { return goneUnused(); }));
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

TEST_F(ErrorStripTest, WhatFailsAgainUnderTheUsersHandIsToldAgain) {
    QPushButton save("Save");
    QObject::connect(&save, &QPushButton::clicked, [this] {
        report("The disk is full", "frmLog:saveForm", "61");
        report("Object variable not set", "frmLog:refreshForm", "91");
    });
    save.show();
    for (int time = 0; time < 3; ++time) {
        QTest::mouseClick(&save, Qt::LeftButton);
        EXPECT_TRUE(strip.isVisible()) << time;
        EXPECT_EQ(shown(), diskFull) << "the first of the click, also when it is a repeated one";
        QTest::mouseClick(child<QToolButton>(strip, "cmdDismiss"), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QTest::keyClick(&save, Qt::Key_Space);
    EXPECT_TRUE(strip.isVisible());
    child<QToolButton>(strip, "cmdDismiss")->click();
    QCoreApplication::processEvents();
    report("The disk is full", "frmLog:saveForm", "61");
    EXPECT_FALSE(strip.isVisible()) << "nobody did anything";
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
    EXPECT_EQ(window->windowTitle(), "Problems");
    EXPECT_EQ(table->item(1, 2)->text(), "2") << "counted, not listed again";
    EXPECT_EQ(table->item(1, 1)->text(), notSaved);
    EXPECT_TRUE(table->item(0, 1)->text().startsWith("A step of the start failed"));
    EXPECT_EQ(child<QPlainTextEdit>(*window, "txtReport")->toPlainText(),
              "When\t3/7/2026 2:05:09 PM\nProcedure\tfrmMain:Form_Load\nNumber\t5\nSource\ttest\n"
              "Description\tOverflow\nStatement\tINSERT INTO Log");
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
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(notSaved));
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith("First"));
}

TEST_F(ErrorStripTest, ALongSentenceWrapsAndIsShownWhole) {
    report("Line one\nline two   " + QString(2000, 'x'), "clsLog:addLog");
    EXPECT_FALSE(shown().contains("line two")) << "the technical text is under Details";
    const auto* text = child<QLabel>(strip, "lblReport");
    for (const int width : {1200, 700, 400}) {
        strip.resize(width, strip.height());
        QCoreApplication::processEvents();
        EXPECT_EQ(strip.width(), width);
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << width;
    }
}

}  // namespace
