// The test helpers themselves: a question out of script, a window left open, an unexpected report or
// warning must fail a test.
#include "support/Child.h"
#include "support/TestProgram.h"

#include "shared/Guard.h"

#include <QDialog>
#include <gtest/gtest-spi.h>

using platform::Answer;
using platform::MsgBox;
using support::child;

namespace {

class TestSupportTest : public support::TestProgram {};

TEST_F(TestSupportTest, AnswersInTheOrderOfTheScript) {
    asker.expectMsgBox("Delete?", platform::deletionStyle, Answer::Yes);
    asker.expectInputBox("Lot", "B12", "Find a lot", "A");
    asker.expectFile("Data|x.mdb", "/x.mdb");
    EXPECT_EQ(MsgBox("Delete?", platform::deletionStyle), Answer::Yes);
    EXPECT_EQ(platform::InputBox("Lot", "Find a lot", "A"), "B12");
    EXPECT_EQ(platform::asker().openFile("", "Data|x.mdb"), "/x.mdb");
    EXPECT_EQ(asker.asked().size(), 3);
}

TEST_F(TestSupportTest, AnUnexpectedQuestionFailsAndIsAnsweredHarmlessly) {
    Answer answer = Answer::Yes;
    EXPECT_NONFATAL_FAILURE(answer = MsgBox("Surprise?", platform::deletionStyle), "Asked unexpectedly");
    EXPECT_EQ(answer, Answer::Cancel);
    QString typed = "x";
    EXPECT_NONFATAL_FAILURE(typed = platform::InputBox("Lot"), "The script has next: nothing");
    EXPECT_EQ(typed, "");
}

TEST_F(TestSupportTest, EveryDetailOfABoxCounts) {
    asker.expectMsgBox("Text", {}, "Title");
    EXPECT_NONFATAL_FAILURE(MsgBox("Text"), "title \\\"Sorvanto Control Panel\\\"");
    asker.expectMsgBox("Text");
    EXPECT_NONFATAL_FAILURE(MsgBox("Text", {platform::Buttons::Ok, platform::Icon::Critical}),
                            "critical icon");
    asker.expectMsgBox("Text");
    EXPECT_NONFATAL_FAILURE(MsgBox("Other"), "Other");
}

TEST_F(TestSupportTest, WhatWasNeverAskedFails) {
    asker.expectMsgBox("Text");
    EXPECT_NONFATAL_FAILURE(asker.verify(), "Never asked: message box \"Text\"");
}

TEST_F(TestSupportTest, AWindowIsShownDrivenAndMustBeHidden) {
    QDialog dialog;
    dialog.setObjectName("frmMake");
    asker.expectModal("frmMake", [](QWidget& window) {
        EXPECT_TRUE(window.isVisible());
        window.close();
    });
    platform::asker().showModal(dialog, [] { FAIL() << "must not block"; });
    asker.expectModal("frmMake", nullptr);
    EXPECT_NONFATAL_FAILURE(platform::asker().showModal(dialog, [] {}), "left window frmMake open");
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(TestSupportTest, AStandingAnswerServesAnyNumberOfTimes) {
    asker.alwaysAnswer("Again?", Answer::No);
    EXPECT_EQ(MsgBox("Again?"), Answer::No);
    EXPECT_EQ(MsgBox("Again?"), Answer::No);
}

TEST_F(TestSupportTest, AnUnexpectedReportFails) {
    sorvanto::guarded("frmLog:saveForm", [] { throw std::runtime_error("broken"); });
    EXPECT_NONFATAL_FAILURE(expectReport("frmLog:openForm"), "frmLog:saveForm");
    EXPECT_NONFATAL_FAILURE(expectReport("frmLog:saveForm"), "No report came");
}

TEST_F(TestSupportTest, AnUnexpectedWarningFails) {
    qWarning("something odd");
    EXPECT_NONFATAL_FAILURE(warnings.verify(), "something odd");
    qWarning("something foreseen");
    warnings.expectWarning("foreseen");
}

TEST_F(TestSupportTest, AMissingControlIsNamedWithThoseThatAreThere) {
    QDialog dialog;
    auto* page = new QWidget(&dialog);
    page->setObjectName("tabDetails");
    auto* box = new QLineEdit(page);
    box->setObjectName("txtName");
    EXPECT_EQ(child<QLineEdit>(dialog, "tabDetails/txtName"), box);
    try {
        child<QLineEdit>(dialog, "tabDetails/txtOther");
        ADD_FAILURE();
    } catch (const std::runtime_error& failure) {
        EXPECT_NE(std::string(failure.what()).find("There are: txtName"), std::string::npos)
            << failure.what();
    }
}

TEST_F(TestSupportTest, TheDatabaseIsTheDeliveredOneAndOpenToPlainStatements) {
    openDatabase();
    sql("INSERT INTO Chemical (chm_Name) VALUES ('Zinc oxide')");
    EXPECT_EQ(sqlText("SELECT chm_Name, chm_Lot IS NULL FROM Chemical").section('|', 0, 0), "Zinc oxide");
    EXPECT_TRUE(statements.isEmpty());
    EXPECT_NONFATAL_FAILURE(sql("SELECT nonsense FROM Chemical"), "no such column");
}

}  // namespace
