// The mixer screen: a finished mix goes to the log, then the formula screen comes up.
#include "mixing/frmSorvanto.h"
#include "MixingTest.h"
#include "mixer/MixJournal.h"
#include "mixer/MixSession.h"
#include "mixing/FormulaDocument.h"
#include "platform/serial/SerialPort.h"

#include <QDir>

using namespace sorvanto;

namespace {

class frmSorvantoTest : public MixingTest {
protected:
    void SetUp() override {
        MixingTest::SetUp();
        screen = std::make_unique<frmSorvanto>(context);
        main->control = &screen->control();
        screen->Form_Load();
    }
    void TearDown() override {
        main->control = nullptr;
        screen.reset();
        MixingTest::TearDown();
    }
    void finishMix() const { emit screen->control().mixDone(document("<Formula/>"), document("<Results/>")); }

    /// The journal of an earlier run, which ended between the end of a mix and its way to the log.
    void leaveFinishedMix() const {
        // No mixer may answer: the first port is a file that is none.
        ASSERT_TRUE(QDir(folder.path()).mkdir("ports"));
        folder.write("ports/COM1", {});
        MixJournal journal;
        journal.load("3FA21C09", document(formulaXml()));
        journal.start("3FA21C09", "SV0426");
        journal.finish("3FA21C09",
                       document("<Results Value=\"SV0426\"><PreparationNumber Value=\"0012\"/></Results>"),
                       false);
        ASSERT_EQ(openMixes(), 1);
    }
    int openMixes() const {
        return static_cast<int>(QDir(folder.path("mixes")).entryList({"*.xml"}, QDir::Files).size());
    }

    std::unique_ptr<frmSorvanto> screen;
};

TEST_F(frmSorvantoTest, AFinishedMixGoesToTheLogAndThenToTheFormulas) {
    finishMix();
    EXPECT_EQ(str(main->trace.join('\n')), "addLog <Formula/> <Results/>\nclick cmdFormulas");
}

TEST_F(frmSorvantoTest, TheFormulasComeUpWithoutALogEntryToo) {
    main->logged = false;
    finishMix();
    EXPECT_EQ(str(main->trace.last()), "click cmdFormulas");
}

TEST_F(frmSorvantoTest, AFailureOfTheLogIsReported) {
    main->onLog = [] { throw platform::RuntimeError(5, "no log"); };
    finishMix();
    expectReport("frmSorvanto:ctlSorvanto1_mixDone");
}

TEST_F(frmSorvantoTest, TheControlMayBeCalledFromInsideItsOwnEvent) {
    main->onLog = [&] { screen->control().mixerInitialsClosed(); };
    finishMix();
    EXPECT_EQ(main->trace.size(), 2);
}

TEST_F(frmSorvantoTest, EnableFormIsHandedOn) {
    emit screen->control().enableForm();
    EXPECT_EQ(str(main->trace.join('\n')), "enableForm");
    main->trace.clear();
    basMain::Main = nullptr;
    emit screen->control().enableForm();
    basMain::Main = main.get();
    expectReport("frmSorvanto:ctlSorvanto1_enableForm");
}

TEST_F(frmSorvantoTest, ListensWithoutSettingTools) {
    screen->Listener(-1);
    EXPECT_EQ(screen->Listener(), -1);
    screen->Listener(0);
    EXPECT_EQ(screen->Listener(), 0);
    EXPECT_EQ(str(main->trace.join(' ')), "connect release");
    screen->m_frmMain_btnClick("cmdNext", "");
    basMain::Main = nullptr;
    screen->Listener(-1);
    basMain::Main = main.get();
    expectReport("frmSorvanto:setListener");
    screen->Listener(0);
}

TEST_F(frmSorvantoTest, AMixThatReachedTheLogIsNotOfferedAgain) {
    ASSERT_NO_FATAL_FAILURE(leaveFinishedMix());
    main->inLog = true;
    screen->control().StartControl();
    EXPECT_EQ(str(main->trace.join('\n')), "isLogged SV04260012");
    EXPECT_EQ(openMixes(), 0);
}

TEST_F(frmSorvantoTest, ALogThatCantBeReadIsReportedAndTheMixStaysOnOffer) {
    ASSERT_NO_FATAL_FAILURE(leaveFinishedMix());
    main->inLog = true;
    main->onLog = [] { throw platform::RuntimeError(platform::error::statement, "no such table: Log"); };
    screen->control().StartControl();
    EXPECT_EQ(str(expectReport("frmSorvanto:isLogged").description), "no such table: Log");
    EXPECT_EQ(openMixes(), 1);
}

/// Opens and closes, and that is all.
class SilentPort : public platform::SerialPort {
public:
    explicit SilentPort(bool& isOpen) : m_open(isOpen) {}
    bool open(const QString&, int) override { return m_open = true; }
    bool isOpen() const override { return m_open; }
    void close() override { m_open = false; }
    bool write(const QByteArray&) override { return true; }
    QString errorText() const override { return {}; }

private:
    bool& m_open;
};

TEST_F(frmSorvantoTest, EachClosingClosesTheControl) {
    bool isOpen = false;
    MixerEnvironment environment = MixerEnvironment::real();
    environment.makePort = [&] { return std::make_unique<SilentPort>(isOpen); };
    frmSorvanto other(context, std::move(environment));
    for (int attempt = 0; attempt < 2; ++attempt) {
        other.control().StartControl();
        ASSERT_TRUE(isOpen);
        EXPECT_EQ(other.closeForm(), 0);
        EXPECT_FALSE(isOpen) << attempt;
    }
}

TEST_F(frmSorvantoTest, ClosingNeverRefuses) {
    EXPECT_EQ(screen->closeForm(), 0);
    EXPECT_EQ(screen->closeForm(), 0);
}

TEST_F(frmSorvantoTest, TheIDOfADocument) {
    EXPECT_EQ(formulaDocumentID(nullptr), 0);
    EXPECT_EQ(formulaDocumentID(document("<Formula/>")), 0);
    EXPECT_EQ(formulaDocumentID(document("<Formula><ID>32767</ID></Formula>")), 32767);
    EXPECT_THROW(formulaDocumentID(document("<Formula><ID>32768</ID></Formula>")), platform::RuntimeError);
    EXPECT_THROW(formulaDocumentID(document("<Formula><ID/></Formula>")), platform::RuntimeError);
    EXPECT_EQ(formulaDocumentNumber(*document("<Formula><Make>12</Make></Formula>"), "Make"), 12);
    EXPECT_THROW(formulaDocumentNumber(*document("<Formula/>"), "Make"), platform::RuntimeError);
}

}  // namespace
