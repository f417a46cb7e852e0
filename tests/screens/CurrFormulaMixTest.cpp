// A finished mix among the real screens: signed, logged, and always ending on the formulas.
#include "FormulaScreenTest.h"

#include "mixer/ctlSorvanto.h"

using namespace sorvanto;
using platform::Answer;
using platform::TextBox;

namespace {

class CurrFormulaMixTest : public FormulaScreenTest {
protected:
    void SetUp() override {
        FormulaScreenTest::SetUp();
        load();
        click("cmdCurrent");
    }
    void finishMix(const QString& id, const QString& results = resultsXml()) const {
        emit window->mixer().mixDone(
            document("<Formula><ID>" + id +
                     "</ID><Name>x</Name><Type>5</Type><Size>2</Size><QTY>10</QTY>"
                     "<Make>20</Make><CustomMix PreGrind=\"1\" FreeSpin=\"2\"/></Formula>"),
            document(results));
    }
    void expectSigning(const QString& initials, const QString& verified, const QString& button = "cmdOK") {
        asker.expectModal("frmInitials", [=](QWidget& form) {
            EXPECT_EQ(str(support::child<QLabel>(form, "lbllog_Lot")->text()), "AB0012");
            support::child<TextBox>(form, "txtInitials")->setText(initials);
            support::child<TextBox>(form, "txtVerified")->setText(verified);
            support::child<QPushButton>(form, button)->click();
        });
    }
    QString logs() const {
        return sqlText(
            "SELECT log_Name, log_Lot, log_Quantity, log_FormType, log_JarSize, log_Initials, log_Verified,"
            " log_Version, log_Mix FROM Log");
    }
};

TEST_F(CurrFormulaMixTest, ASignedMixIsLoggedAndEndsOnTheFormulas) {
    expectSigning("RK", "LM");
    finishMix("1");
    EXPECT_EQ(str(logs()), "Cooling Gel|AB0012|20|5|2|RK|LM|S-2|<CustomMix PreGrind=\"1\" FreeSpin=\"2\"/>");
    EXPECT_EQ(str(sqlText("SELECT log_Results FROM Log")), str(resultsXml()));
    EXPECT_EQ(str(sqlText("SELECT lch_Name, lch_QTY, lch_Cost FROM LogChem ORDER BY LogChemID")),
              "Camphor|2.469|4.94\nMenthol|10.0|11\nBorax|1.0|0.03");
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(str(text(sorvanto::logs, "txtlog_Lot")), "AB0012") << "the log screen holds it";
}

TEST_F(CurrFormulaMixTest, ACancelledSigningLogsNothingAndEndsThereToo) {
    expectSigning("RK", "LM", "cmdCancel");
    finishMix("1");
    EXPECT_EQ(str(logs()), "");
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(CurrFormulaMixTest, AMixWithoutAFormulaAsksFirst) {
    click("cmdChemicals");
    asker.expectMsgBox("Log Formula", yesNo, "Logs", Answer::No);
    finishMix("0");
    EXPECT_EQ(window->current(), formulas);
    asker.expectMsgBox("Log Formula", yesNo, "Logs", Answer::Yes);
    expectSigning("RK", "LM");
    finishMix("0");
    EXPECT_EQ(str(logs()), "") << "no formula was named";
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(CurrFormulaMixTest, ANamedMixIsLogged) {
    asker.expectMsgBox("Log Formula", yesNo, "Logs", Answer::Yes);
    asker.expectModal("frmInitials", [this](QWidget& form) {
        asker.expectModal("frmMake", [](QWidget& make) {
            QTest::keyClicks(support::child<platform::NumberBox>(make, "txtQTY"), "30");
            support::child<QPushButton>(make, "OKButton")->click();
        });
        auto* name = support::child<TextBox>(form, "txtfrm_Name");
        name->setText("Cool");
        QTest::keyClick(name, Qt::Key_Return);
        support::child<TextBox>(form, "txtInitials")->setText("RK");
        support::child<TextBox>(form, "txtVerified")->setText("LM");
        support::child<QPushButton>(form, "cmdOK")->click();
    });
    finishMix("0");
    EXPECT_EQ(str(logs()), "Cooling Gel|AB0012|30|9|2|RK|LM|S-2|<CustomMix PreGrind=\"1\" FreeSpin=\"2\"/>");
}

TEST_F(CurrFormulaMixTest, ResultsWithoutTheirRootLogNothing) {
    finishMix("1", "<Other/>");
    expectReport("clsLog:addLog");
    EXPECT_EQ(str(logs()), "");
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(CurrFormulaMixTest, AnApostropheInTheInitialsBreaksTheStatementAndLogsNothing) {
    expectSigning("O'N", "LM");
    finishMix("1");
    expectReport("clsLog:addLog");
    EXPECT_EQ(str(logs()), "");
}

TEST_F(CurrFormulaMixTest, EachAttemptToCloseClosesTheMixer) {
    click("cmdFormulas");
    click("cmdEdit");
    auto* connect = support::child<QPushButton>(window->mixer(), "mixerConnect");
    EXPECT_FALSE(connect->isVisibleTo(&window->mixer()));
    asker.expectMsgBox("Formula data not saved! Save Changes?",
                       {platform::Buttons::YesNoCancel, platform::Icon::Exclamation, false, true},
                       "Save Data?", Answer::Cancel);
    window->close();
    EXPECT_EQ(programEnds, 0);
    EXPECT_TRUE(connect->isVisibleTo(&window->mixer()));
}

}  // namespace
