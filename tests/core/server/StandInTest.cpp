// A server that is not there: its newest copy is read in its place and stays as it is, mixing goes on, and the batch is
// signed once the server is back. The real window, the mixer in memory.
#include "Announced.h"
#include "Child.h"
#include "ServerProxy.h"
#include "TestProgram.h"
#include "TestServer.h"
#include "config/clsOptions.h"
#include "core/CopyJob.h"
#include "core/CopySettings.h"
#include "core/DailyBackup.h"
#include "core/DatabaseRescue.h"
#include "core/Health.h"
#include "core/frmMain.h"
#include "db/DatabaseFile.h"
#include "mixer/MemoryLine.h"
#include "mixer/ctlSorvanto.h"
#include "mixing/frmSorvanto.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"
#include "shared/basMain.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using support::child;
using test::waitFor;

constexpr int longestWait = 60'000, never = 3'600'000;  // milliseconds
constexpr int enterKey = 13;
constexpr std::int64_t minute = 60'000;
const QString mark = u" of 3/7/2026 2:05 PM, read only"_s;
const QString lot = u"SV04260012"_s;
const QString keptLong =
    u" is kept in the journal. Sign it for the log when the program works on the server again."_s;

/// For waits that a server or a thread has its part in.
bool comes(const std::function<bool()>& holds) { return QTest::qWaitFor(holds, longestWait); }

class StandInTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        createSample(folder.path("sample.mdb"));
        support::makeServerRecords(folder.path("sample.mdb"));
        QFile::remove(folder.path("sample.mdb"));
        basMain::Options->DBLocation(server.address());
        basMain::Options->saveOptions();
        const QString identity = onServer(u"SELECT \"fid_Identity\" FROM \"FileIdentity\""_s);
        makeCopy({.location = support::serverAddress(), .identity = identity, .moment = platform::now()}, {});
        CopySettings::remember(server.address(), identity);
        before = backups();
        ASSERT_EQ(before.size(), 1);
        server.refuse(true);
    }
    void TearDown() override {
        window.reset();
        TestProgram::TearDown();
    }
    static QString onServer(const QString& statement) {
        return support::rowsText(support::runOnServer(statement)).trimmed();
    }
    static int logged(const QString& which) {
        return onServer(u"SELECT count(*) FROM \"Log\" WHERE \"log_Lot\" = '%1'"_s.arg(which)).toInt();
    }
    /// Each file of the folder, with all of its bytes.
    QMap<QString, QByteArray> backups() const {
        QMap<QString, QByteArray> all;
        for (const QString& name : QDir(folder.path("backups")).entryList(QDir::Files | QDir::Hidden))
            all.insert(name, folder.read("backups/" + name));
        return all;
    }
    QString copyPath() const { return folder.path("backups/" + before.firstKey()); }
    void readCopy() { context.standIn = StandIn{server.address(), copyPath(), platform::now()}; }

    /// The next window that says why there are no records, and the button of that name.
    void answer(const QString& button) {
        asker.expectModal(u"StartQuestion"_s, [this, button](QWidget& question) {
            said.clear();
            for (const auto* label : question.findChildren<QLabel*>())
                said << label->text();
            buttons.clear();
            for (const auto* each : question.findChildren<QPushButton*>())
                buttons << each->objectName();
            child<QPushButton>(question, button)->click();
        });
    }
    bool isSaid(const QString& part) const { return said.join('\n').contains(part); }

    /// As after the end of the one before.
    void startProgram() {
        window.reset();
        context.standIn.reset();
        context.connection.reset();
        basMain::Options.reset();
        basMain::Language.reset();
        Parts parts = realParts(context);
        parts.reporter = [this] { return reporter; };
        parts.copies = [] { return std::make_unique<DailyBackup>(context, never); };
        parts.mixerScreen = [this] { return std::make_unique<frmSorvanto>(context, line.environment()); };
        parts.serverLook = [this](ServerLook::Ways ways) {
            return std::make_unique<ServerLook>(context, std::move(ways), ServerLook::Times{20, 20, 50});
        };
        window = std::make_unique<frmMain>(parts);
        window->Form_Load();
        window->show();
    }
    void startOnCopy() {
        answer("cmdReadCopy");
        startProgram();
    }
    platform::Tool& tool(const QString& name) {
        const bool ofScreen = QStringList{u"cmdFormulas"_s, u"cmdChemicals"_s, u"cmdLogs"_s}.contains(name);
        return window->bar().band(ofScreen ? "FormBar" : "MainBar").tool(name);
    }
    void click(const QString& name) { window->bar().click(tool(name)); }
    /// The button of the panel that is on show under that name; nothing where there is none.
    QPushButton* panelButton(const QString& name) const {
        for (auto* button : window->mixer().findChildren<QPushButton*>(name)) {
            if (button->isVisible())
                return button;
        }
        return nullptr;
    }
    QString offer() const {
        for (const auto* label : window->mixer().findChildren<QLabel*>(u"mixerOffer"_s)) {
            if (label->isVisible())
                return label->text();
        }
        return {};
    }
    QString panelTexts() const {
        QStringList all;
        for (const auto* label : window->mixer().findChildren<QLabel*>())
            all << label->text();
        return all.join('\n');
    }
    void startMix() {
        tool("txtSearch").setText("Hydroc");
        window->ActiveBar_ToolKeyPress(tool("txtSearch"), enterKey);
        asker.expectModal(u"frmMake"_s,
                          [](QWidget& question) { child<QPushButton>(question, "OKButton")->click(); });
        click("cmdMake");
        ASSERT_TRUE(waitFor([this] {
            const QPushButton* start = panelButton("mixerStart");
            return start && start->isEnabled();
        })) << panelTexts().toStdString();
        panelButton("mixerStart")->click();
        ASSERT_TRUE(waitFor([this] { return panelButton("mixerPause") != nullptr; }));
    }
    void mix() {
        ASSERT_NO_FATAL_FAILURE(startMix());
        ASSERT_TRUE(waitFor([this] {
            line.run(minute);
            return !offer().isEmpty();
        })) << panelTexts().toStdString();
    }
    void expectSigning() {
        asker.expectModal(u"frmInitials"_s, [](QWidget& signing) {
            child<QLineEdit>(signing, "txtInitials")->setText("MR");
            child<QLineEdit>(signing, "txtVerified")->setText("JT");
            child<QPushButton>(signing, "cmdOK")->click();
        });
    }

    support::ServerProxy server{support::serverAddress()};
    test::MemoryLine line;
    std::unique_ptr<frmMain> window;
    QMap<QString, QByteArray> before;
    QStringList said, buttons;
};

TEST_F(StandInTest, TheNewestCopyIsOfferedAndOpenedSoThatNothingCanBeChanged) {
    basMain::rescueDatabase = [rescue = std::make_shared<DatabaseRescue>(context, false)](
                                  const QString& place) { return rescue->offer(place); };
    answer("cmdReadCopy");
    const auto connection = openDB();
    ASSERT_EQ(connection->state(), 1);
    EXPECT_TRUE(isSaid("Copy of today 2:05 PM, checked.")) << said.join('\n').toStdString();
    EXPECT_TRUE(isSaid("Batches in the copy: 12."));
    EXPECT_TRUE(isSaid("Nothing can be changed in it."));
    EXPECT_EQ(QFileInfo(connection->location()), QFileInfo(copyPath()));
    EXPECT_TRUE(connection->isReadOnly());
    for (const QString& change :
         {u"UPDATE Chemical SET chm_Lot = 'W' WHERE ChemicalID = 1"_s, u"DELETE FROM Log WHERE LogID = 1"_s,
          u"INSERT INTO Patient (pat_LName) VALUES ('Doe')"_s})
        EXPECT_THROW(connection->execute(change), platform::RuntimeError) << change.toStdString();
    EXPECT_EQ(backups(), before);
}

TEST_F(StandInTest, NoCopyIsOfferedWhereTheServerRefusesTheProgram) {
    server.refuse(false);
    support::runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 1.3"_s);
    basMain::rescueDatabase = [rescue = std::make_shared<DatabaseRescue>(context, false)](
                                  const QString& place) { return rescue->offer(place); };
    answer("cmdNone");
    EXPECT_EQ(openDB()->state(), 0);
    expectReport("frmMain:openDB");
    EXPECT_FALSE(buttons.contains("cmdReadCopy"));
    EXPECT_TRUE(isSaid("The records on the server belong to a newer program."));
}

TEST_F(StandInTest, ACopyThatIsNotSoundIsNotOffered) {
    // It opens and can be read: only the check of the whole finds that.
    support::runSql(copyPath(), u"PRAGMA ignore_check_constraints = ON; "
                                "UPDATE Chemical SET chm_Cost = 'dear' WHERE ChemicalID = 1"_s);
    basMain::rescueDatabase = [rescue = std::make_shared<DatabaseRescue>(context, false)](
                                  const QString& place) { return rescue->offer(place); };
    answer("cmdNone");
    openDB();
    expectReport("frmMain:openDB");
    EXPECT_FALSE(buttons.contains("cmdReadCopy"));
}

TEST_F(StandInTest, TheWindowSaysWhatItShowsAndRefusesEachChange) {
    startOnCopy();
    const QString whole = child<QLabel>(*window, "lblReadingOnly")->text();
    EXPECT_TRUE(whole.startsWith("Copy of ") && whole.endsWith(mark)) << whole.toStdString();
    EXPECT_TRUE(child<QLabel>(*window, "lblReadingOnly")->isVisible());
    EXPECT_TRUE(window->windowTitle().startsWith("Sorvanto Control Panel: Formulas  :  "));
    EXPECT_TRUE(window->windowTitle().endsWith(u"  \u2014  "_s + whole))
        << window->windowTitle().toStdString();
    WindowHealth health;
    health.readingOnly = whole;
    const HealthLine database = healthLines(context, health).front();
    EXPECT_EQ(database.detail, whole);
    EXPECT_TRUE(database.state.startsWith("Open for reading,")) << database.state.toStdString();
    EXPECT_FALSE(database.good);
    EXPECT_FALSE(child<QLabel>(*window, "lblDatabase")->toolTip().contains("At the next start"));
    for (const QString& change : {u"cmdEdit"_s, u"cmdNew"_s, u"cmdCopy"_s, u"cmdDelete"_s, u"cmdSave"_s}) {
        asker.expectMsgBox(whole, {platform::Buttons::Ok, platform::Icon::Information});
        window->ActiveBar_ToolClick(tool(change));
    }
    click("cmdLogs");
    click("cmdFormulas");
    EXPECT_EQ(backups(), before);
    EXPECT_EQ(CopySettings::identityOf(copyPath()), "");
}

// The chemicals come up unlocked, on a copy too.
TEST_F(StandInTest, WhatIsTypedIsKeptAndNotAskedAboutAtTheEnd) {
    startOnCopy();
    click("cmdChemicals");
    QTest::keyClicks(child<QLineEdit>(*window->screen(chemicals), "txtchm_Supplier"), "half a thought");
    window->close();
    EXPECT_EQ(programEnds, 1);
    const QStringList drafts = QDir(folder.path("drafts")).entryList(QDir::Files);
    ASSERT_EQ(drafts.size(), 1);
    EXPECT_TRUE(folder.read("drafts/" + drafts.first()).contains("half a thought"));
}

TEST_F(StandInTest, NoCopyIsMadeOfTheCopy) {
    readCopy();
    openDB();
    clock.set(QDateTime(QDate(2026, 3, 8), QTime(8, 12), Qt::UTC));
    DailyBackup backup(context, 0);
    backup.startSoon();
    ASSERT_TRUE(comes([&] { return !backup.running(); }));
    EXPECT_EQ(backups(), before);
}

TEST_F(StandInTest, AMixWaitsInTheJournalAndIsSignedOnTheServerOnce) {
    startOnCopy();
    ASSERT_NO_FATAL_FAILURE(mix());
    EXPECT_TRUE(offer().endsWith(": waits for the server")) << offer().toStdString();
    EXPECT_TRUE(panelTexts().contains(keptLong)) << panelTexts().toStdString();
    EXPECT_EQ(panelButton("mixerLogMix"), nullptr);
    EXPECT_TRUE(offer().contains(lot)) << offer().toStdString();
    EXPECT_EQ(backups(), before);

    server.refuse(false);
    startProgram();
    EXPECT_TRUE(offer().contains(lot)) << offer().toStdString();
    EXPECT_EQ(logged(lot), 0);
    expectSigning();
    ASSERT_NE(panelButton("mixerLogMix"), nullptr);
    panelButton("mixerLogMix")->click();
    ASSERT_TRUE(comes([] { return logged(lot) == 1; }));
    EXPECT_EQ(onServer(u"SELECT count(*) FROM \"Log\""_s), "13");
    ASSERT_TRUE(waitFor([this] { return offer().isEmpty(); }));

    startProgram();
    EXPECT_EQ(offer(), "");
    EXPECT_EQ(logged(lot), 1);
    EXPECT_EQ(folder.read("backups/" + before.firstKey()), before.first());
}

// What was logged on the server since stands not in the copy: it is neither offered again nor counted as missing.
TEST_F(StandInTest, BatchesLoggedSinceTheCopyAreNotOfferedAgain) {
    server.refuse(false);
    startProgram();
    ASSERT_NO_FATAL_FAILURE(startMix());
    expectSigning();
    ASSERT_TRUE(waitFor([this] {
        line.run(minute);
        return logged(lot) == 1;
    }));
    window.reset();
    server.refuse(true);
    server.cut();
    startOnCopy();
    EXPECT_EQ(offer(), "");
    EXPECT_FALSE(window->mixer().reconciliation().done) << "the copy can't tell";
    server.refuse(false);
    startProgram();
    EXPECT_EQ(offer(), "");
    EXPECT_TRUE(window->mixer().reconciliation().complete());
    EXPECT_EQ(logged(lot), 1);
}

TEST_F(StandInTest, AServerThatIsBackIsToldAndTheWayToItIsAStart) {
    startOnCopy();
    const auto* card = child<QWidget>(*window, "newsCard");
    EXPECT_FALSE(card->isVisible());
    server.refuse(false);
    ASSERT_TRUE(comes([&] { return card->isVisible(); }));
    EXPECT_EQ(child<QLabel>(*card, "lblNewsCard")->text(), "The server answers again.");
    child<QPushButton>(*card, "cmdNewsAction0")->click();
    EXPECT_EQ(restarts, std::vector<bool>{false});
    EXPECT_EQ(programEnds, 0);
}

TEST_F(StandInTest, AServerThatWasGoneOnWithoutIsLookedForWithoutAClick) {
    answer("cmdNone");
    startProgram();
    dropReports();
    const auto* card = child<QWidget>(*window, "newsCard");
    EXPECT_FALSE(card->isVisible());
    server.refuse(false);
    ASSERT_TRUE(comes([&] { return card->isVisible(); }));
    EXPECT_EQ(child<QLabel>(*card, "lblNewsCard")->text(), "The server answers again.");
    EXPECT_EQ(context.connection->state(), 0) << "nothing is opened below the user's hands";
    click("cmdChemicals");
    EXPECT_EQ(context.connection->state(), 1) << "the next statement opens it";
    child<QPushButton>(*card, "cmdNewsAction0")->click();
    EXPECT_EQ(restarts, std::vector<bool>{false});
}

TEST_F(StandInTest, AMixThatWaitedWithoutRecordsIsSignedOnceTheServerIsBack) {
    startOnCopy();
    ASSERT_NO_FATAL_FAILURE(mix());
    answer("cmdNone");
    startProgram();
    dropReports();
    EXPECT_TRUE(offer().contains(lot)) << offer().toStdString();
    const auto* card = child<QWidget>(*window, "newsCard");
    server.refuse(false);
    ASSERT_TRUE(comes([&] { return card->isVisible(); }));
    EXPECT_EQ(logged(lot), 0);
    child<QPushButton>(*card, "cmdNewsAction0")->click();
    EXPECT_EQ(restarts, std::vector<bool>{false});
    startProgram();
    ASSERT_TRUE(comes([this] { return panelButton("mixerLogMix") != nullptr; }))
        << panelTexts().toStdString();
    expectSigning();
    panelButton("mixerLogMix")->click();
    ASSERT_TRUE(comes([] { return logged(lot) == 1; }));
    EXPECT_EQ(onServer(u"SELECT count(*) FROM \"Log\""_s), "13");
    startProgram();
    EXPECT_EQ(offer(), "");
    EXPECT_EQ(logged(lot), 1);
}

// Neither line ends: the one that there was, nor those that are opened in its place.
TEST_F(StandInTest, AServerThatFallsSilentInTheDayIsTold) {
    server.refuse(false);
    startProgram();
    ASSERT_TRUE(comes([this] { return server.takeMessages().contains("look_around"); }));
    server.silence(true);
    const auto* text = child<QLabel>(*window, "lblNewsCard");
    EXPECT_TRUE(comes([&] { return text->text().startsWith("The server has not answered since 2:0"); }))
        << text->text().toStdString();
    dropReports();
}

TEST_F(StandInTest, AServerThatGoesAwayInTheDayIsToldAndTypedTextIsKeptOnTheWayToTheCopy) {
    server.refuse(false);
    startProgram();
    click("cmdEdit");
    QTest::keyClicks(child<QLineEdit>(*window->screen(formulas), "txtfrm_Desc"), "half a thought");
    server.refuse(true);
    server.cut();
    const auto* card = child<QWidget>(*window, "newsCard");
    ASSERT_TRUE(comes([&] {
        context.connection->engine().lookAfter();
        return card->isVisible();
    }));
    EXPECT_EQ(child<QLabel>(*card, "lblNewsCard")->text(), "The server has not answered since 2:05 PM.");
    child<QPushButton>(*card, "cmdNewsAction0")->click();
    EXPECT_EQ(restarts, std::vector<bool>{true});
    const QDir drafts(folder.path("drafts"));
    ASSERT_EQ(drafts.entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(folder.read("drafts/" + drafts.entryList(QDir::Files).first()).contains("half a thought"));
    dropReports();
}

TEST_F(StandInTest, AServerThatComesBackByItselfIsTold) {
    server.refuse(false);
    startProgram();
    server.refuse(true);
    server.cut();
    const auto* text = child<QLabel>(*window, "lblNewsCard");
    ASSERT_TRUE(comes([&] {
        context.connection->engine().lookAfter();
        return text->text().startsWith("The server has not answered");
    }));
    server.refuse(false);
    EXPECT_TRUE(comes([&] {
        context.connection->engine().lookAfter();
        return text->text() == "The server answers again.";
    }));
}

TEST_F(StandInTest, InTheMidstOfAMixTheProgramGoesOn) {
    startOnCopy();
    ASSERT_NO_FATAL_FAILURE(startMix());
    server.refuse(false);
    ASSERT_TRUE(comes([&] { return child<QWidget>(*window, "newsCard")->isVisible(); }));
    asker.expectMsgBox("A mix is under way. Try again when it has ended.",
                       {platform::Buttons::Ok, platform::Icon::Information});
    child<QPushButton>(*child<QWidget>(*window, "newsCard"), "cmdNewsAction0")->click();
    EXPECT_TRUE(restarts.empty());
    EXPECT_NE(panelButton("mixerPause"), nullptr);
}

TEST_F(StandInTest, TheCopyCanBeAskedForAtTheStart) {
    server.refuse(false);
    context.startsOnCopy = true;
    startProgram();
    EXPECT_TRUE(asker.asked().isEmpty()) << asker.asked().join('\n').toStdString();
    EXPECT_TRUE(window->windowTitle().endsWith(mark)) << window->windowTitle().toStdString();
}

}  // namespace
