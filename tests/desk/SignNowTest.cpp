// The card of a mix that waits, and what becomes of one that was not logged.
#include "FreeDeskTest.h"

#include "mixer/NoticeCard.h"
#include "mixer/ctlSorvanto.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {

class SignNowTest : public FreeDeskTest {};

TEST_F(SignNowTest, TheCardSaysSoAndIsReachedByF6AndItsAccessKey) {
    click(u"cmdLogs"_s);
    click(u"cmdEdit"_s);
    startMix();
    notes().setText(u"typed"_s);
    endMix();
    EXPECT_EQ(child<NoticeCard>(window->mixer(), "mixerWaiting")->text(),
              u"The mix has ended. Sign it when you are ready."_s);
    EXPECT_FALSE(panelButton("mixerStart")->isVisible());
    QPushButton* button = panelButton("mixerSign");
    EXPECT_EQ(button->text(), u"&Sign now"_s);
    for (int press = 0; press < 8 && QApplication::focusWidget() != button; ++press)
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : window.get(), Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), button);
    sign();
    QTest::keyClick(button, Qt::Key_Space);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
}

TEST_F(SignNowTest, TheAccessKeySignsAndTheTypedTextIsOffered) {
    click(u"cmdLogs"_s);
    click(u"cmdEdit"_s);
    startMix();
    notes().setText(u"typed"_s);
    endMix();
    EXPECT_TRUE(waits());
    sign();
    window->activateWindow();
    QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
    EXPECT_TRUE(child<QWidget>(*window, "draftStrip")->isVisible());
    EXPECT_EQ(sqlText(u"SELECT COUNT(*) FROM Log WHERE log_Notes = 'typed'"_s), u"0"_s);
}

TEST_F(SignNowTest, SignNowDoesNothingBehindADialog) {
    click(u"cmdLogs"_s);
    startMix();
    whileOpen(u"AskDialog"_s, [&](QWidget& box) {
        endMix();
        panelButton("mixerSign")->click();
        expectNothingOpens();
        child<QPushButton>(box, "Cancel")->click();
    });
    sign();
    click(u"cmdDelete"_s);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(shown, (QStringList{u"AskDialog"_s, u"frmInitials"_s}));
}

TEST_F(SignNowTest, ACancelledSigningIsNotRaisedAgainByItself) {
    click(u"cmdLogs"_s);
    cancelSigning();
    startMix();
    endMix();
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 3);
    ASSERT_TRUE(test::waitFor([&] { return offers().size() == 1; }));
    EXPECT_FALSE(waits());
    sign();
    panelButton("mixerLogMix")->click();
    ASSERT_TRUE(test::waitFor([&] { return logCount() == 4; }));
    EXPECT_TRUE(test::waitFor([&] { return offers().isEmpty(); }));
}

TEST_F(SignNowTest, NoLotIsAddedBeforeAMixIsLogged) {
    const auto asked = [this](const QString& kind, const char* button) {
        click(u"cmdChemicals"_s);  // the end of a mix shows the formulas
        whileOpen(kind, [&](QWidget& box) { child<QPushButton>(box, button)->click(); });
        click(u"cmdNewLot"_s);
        return shown.takeLast();
    };
    startMix();
    EXPECT_EQ(asked(u"AskDialog"_s, "OK"), u"AskDialog"_s) << "it is mixed";
    cancelSigning();
    endMix();
    ASSERT_TRUE(isSigned());
    ASSERT_TRUE(test::waitFor([&] { return offers().size() == 1; }));
    EXPECT_EQ(asked(u"AskDialog"_s, "OK"), u"AskDialog"_s) << "it is on offer";
    sign();
    panelButton("mixerLogMix")->click();
    ASSERT_TRUE(test::waitFor([&] { return logCount() == 4 && offers().isEmpty(); }));
    EXPECT_EQ(asked(u"NewLotWindow"_s, "cmdCancel"), u"NewLotWindow"_s);
}

class LoadedMixTest : public SignNowTest {
protected:
    /// What New Lot brings up for the chemical on show: a refusal that says why, or its window.
    QString askNewLot(bool isRefused) {
        if (isRefused)
            answer("OK", u"A formula with this chemical is in the mixer and not mixed yet"_s);
        else
            whileOpen(u"NewLotWindow"_s,
                      [](QWidget& form) { child<QPushButton>(form, "cmdCancel")->click(); });
        click(u"cmdNewLot"_s);
        return shown.isEmpty() ? QString() : shown.takeLast();
    }
    /// In Cooling Gel.
    void showBorax() {
        click(u"cmdChemicals"_s);
        click(u"cmdCancel"_s);
        click(u"cmdNext"_s);
        ASSERT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Borax");
    }
    static constexpr bool refused = true;
};

// The lots are read when the batch is signed, and what is loaded has been weighed from the former one.
TEST_F(LoadedMixTest, NoLotIsAddedOfWhatALoadedFormulaTakes) {
    showBorax();
    EXPECT_EQ(askNewLot(!refused), u"NewLotWindow"_s) << "nothing is loaded";
    loadMix();
    EXPECT_EQ(askNewLot(refused), u"AskDialog"_s);
    click(u"cmdFirst"_s);
    ASSERT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Aspirin");
    EXPECT_EQ(askNewLot(!refused), u"NewLotWindow"_s) << "no formula that is loaded takes it";
    loadMix(u"Arnica Salve"_s, 3);
    EXPECT_EQ(askNewLot(refused), u"AskDialog"_s);
    loadMix(u"unnamed"_s, 0);
    EXPECT_EQ(askNewLot(refused), u"AskDialog"_s) << "what it takes is said when it is signed";
}

TEST_F(LoadedMixTest, NorWhileItCanBeLoadedAgainAfterAFailure) {
    showBorax();
    startMix();
    line.mixer.pressEmergencyStop();
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerOk")->isVisible(); }));
    line.mixer.releaseEmergencyStop();
    panelButton("mixerOk")->click();
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerLoadAgain")->isVisible(); }));
    EXPECT_EQ(askNewLot(refused), u"AskDialog"_s);
}

TEST_F(LoadedMixTest, AFormulaThatTheMixerCanNotHaveStandsInNoWay) {
    loadMix();
    showBorax();
    window->mixer().loadFormula(document(u"<Formula><ID>1</ID></Formula>"_s));
    EXPECT_EQ(askNewLot(!refused), u"NewLotWindow"_s) << "the one before it can't be started any more";
}

TEST_F(SignNowTest, AFailedSigningIsNotRaisedAgainByItself) {
    click(u"cmdLogs"_s);
    sign(u"O'N"_s);  // breaks the statement
    startMix();
    endMix();
    ASSERT_TRUE(isSigned());
    expectReport(u"clsLog:addLog"_s);
    ASSERT_TRUE(test::waitFor([&] { return offers().size() == 1; }));
    expectNothingOpens(false);
    EXPECT_EQ(logCount(), 3);
    EXPECT_EQ(shown, QStringList{u"frmInitials"_s});
    sign();
    panelButton("mixerLogMix")->click();
    ASSERT_TRUE(test::waitFor([&] { return logCount() == 4 && offers().isEmpty(); }));
}

TEST_F(SignNowTest, AMixWhoseFormulaIsGoneSaysSoAndStaysOnOffer) {
    startMix(u"Lost Cream"_s, 77);
    whileOpen(u"frmInitials"_s, [](QWidget& form) {
        child<platform::TextBox>(form, "txtInitials")->setText(u"RK"_s);
        child<platform::TextBox>(form, "txtVerified")->setText(u"LM"_s);
        child<QPushButton>(form, "cmdOK")->click();
    });
    endMix();
    ASSERT_TRUE(isSigned());
    expectReport(u"frmInitials:setformula"_s);
    EXPECT_EQ(logCount(), 3);
    ASSERT_TRUE(test::waitFor([&] { return offers().size() == 1; }));
    EXPECT_EQ(str(child<NoticeCard>(window->mixer(), "mixerNotice")->text()),
              "The formula \"Lost Cream\" of this mix is no longer in the database, so the mix can not be "
              "logged. It stays on offer below.");
}

}  // namespace
