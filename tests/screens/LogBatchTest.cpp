// A finished mix arrives: its question, its signatures, its entry, and what is shown of it.
#include "LogScreenTest.h"

#include "mixing/frmInitials.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"

#include <QPushButton>

using namespace sorvanto;

namespace {

class LogBatchTest : public LogScreenTest {
protected:
    static platform::XmlDocumentPtr mixed(const QString& id = "1") {
        return document("<Formula><ID>" + id +
                        "</ID><Name>Cooling Gel</Name><Type>9</Type><Make>30</Make>"
                        "<Size>4</Size><CustomMix PreGrind=\"3\" FreeSpin=\"5\"><Mix LiftRPM=\"720\""
                        " MixRPM=\"900\" MixTime=\"00:01:00\" Cycles=\"0\"/></CustomMix></Formula>");
    }
    static platform::XmlDocumentPtr resultsOf(const QString& lot = "CD") {
        return document(resultsXml(lot, "0077"));
    }
    void expectSigning(const QString& initials = "RK") {
        asker.expectModal("frmInitials", [initials](QWidget& form) {
            support::child<platform::TextBox>(form, "txtInitials")->setText(initials);
            support::child<platform::TextBox>(form, "txtVerified")->setText("LM");
            support::child<QPushButton>(form, "cmdOK")->click();
        });
    }
    int batches() const { return sqlText("SELECT count(*) FROM Log").toInt(); }
};

TEST_F(LogBatchTest, AStoredFormulaIsLoggedWithoutAQuestionAndShown) {
    load();
    expectSigning();
    EXPECT_TRUE(log().addLog(mixed(), resultsOf()));
    EXPECT_EQ(batches(), 4);
    EXPECT_EQ(window->current(), logs);
    EXPECT_EQ(str(shown("txtlog_Lot")), "CD0077");
    EXPECT_EQ(str(shown("txtlog_Quantity")), "30");
    EXPECT_EQ(str(shown("txtlog_JarSize")), str(basMain::JarSizes.at(4)));
    EXPECT_EQ(str(shown("txtlog_PreGrind")), "3");
    EXPECT_EQ(lines().model()->rowCount(), 3);
    EXPECT_TRUE(lines().dataSource()->hasField("chm_Notes")) << "the lines are those of a second opening";
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Logs  :  Cooling Gel");
    EXPECT_TRUE(log().isLogged("CD0077"));
}

TEST_F(LogBatchTest, TheNewEntryIsInTheSetThatIsWalked) {
    openScreen();
    expectSigning();
    log().addLog(mixed(), resultsOf());
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
    QStringList lots{shown("txtlog_Lot")};
    for (int move = 0; move < 3; ++move) {
        click("cmdNext");
        lots << shown("txtlog_Lot");
    }
    EXPECT_TRUE(lots.contains("CD0077")) << str(lots.join(' '));
}

TEST_F(LogBatchTest, ACancelledSigningChangesNothingAndSwitchesNowhere) {
    load();
    asker.expectModal("frmInitials",
                      [](QWidget& form) { support::child<QPushButton>(form, "cmdCancel")->click(); });
    EXPECT_FALSE(log().addLog(mixed(), resultsOf()));
    EXPECT_EQ(batches(), 3);
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
}

TEST_F(LogBatchTest, WithoutAStoredFormulaItIsAskedFirstAndNoLeavesAllAsItWas) {
    load();
    for (const auto& given : {mixed("0"), mixed("-3"), document("<Formula/>"), platform::XmlDocumentPtr()}) {
        asker.expectMsgBox("Log Formula", yesNo, "Logs", platform::Answer::No);
        EXPECT_FALSE(log().addLog(given, resultsOf()));
    }
    EXPECT_EQ(batches(), 3);
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
}

TEST_F(LogBatchTest, YesOpensTheDialogForANamedFormula) {
    load();
    asker.expectMsgBox("Log Formula", yesNo, "Logs", platform::Answer::Yes);
    expectSigning();
    EXPECT_FALSE(log().addLog(mixed("0"), resultsOf())) << "no formula was named";
    EXPECT_EQ(batches(), 3);
}

TEST_F(LogBatchTest, AnUnreadableKeyIsReportedAndTheQuestionFollows) {
    load();
    asker.expectMsgBox("Log Formula", yesNo, "Logs", platform::Answer::No);
    EXPECT_FALSE(log().addLog(mixed("forty thousand"), resultsOf()));
    expectReport("frmLog:addLog");
    asker.expectMsgBox("Log Formula", yesNo, "Logs", platform::Answer::No);
    EXPECT_FALSE(log().addLog(mixed("40000"), resultsOf()));
    expectReport("frmLog:addLog");
}

TEST_F(LogBatchTest, ResultsLackingANodeWriteNoRow) {
    load();
    EXPECT_FALSE(log().addLog(mixed(), nullptr));
    expectReport("clsLog:addLog");
    EXPECT_FALSE(log().addLog(mixed(), document("<Results Value=\"CD\"/>")));
    expectReport("clsLog:addLog");
    expectSigning();
    EXPECT_FALSE(
        log().addLog(mixed(), document("<Results Value=\"CD\"><PreparationNumber Value=\"1\"/></Results>")));
    expectReport("clsLog:addLog");
    EXPECT_EQ(batches(), 3);
}

TEST_F(LogBatchTest, AnApostropheInTheInitialsBreaksTheInsert) {
    load();
    expectSigning("O'B");
    EXPECT_FALSE(log().addLog(mixed(), resultsOf()));
    expectReport("clsLog:addLog");
    EXPECT_EQ(batches(), 3);
}

TEST_F(LogBatchTest, AFailureOnTheWayGoesOnToTheLogScreen) {
    openScreen();
    click("cmdFormulas");
    openDB()->setTrace([](const QString& statement) {
        if (statement == "SELECT LogID FROM Log")
            throw platform::RuntimeError(5, "Made to fail");
    });
    expectSigning();
    EXPECT_TRUE(log().addLog(mixed(), resultsOf()));
    expectReport("frmLog:getData");
    EXPECT_EQ(window->current(), logs);
    EXPECT_EQ(str(shown("txtlog_Lot")), "CD0077");
}

}  // namespace
