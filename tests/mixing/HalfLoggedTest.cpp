// A batch is written in several steps, and a failure between two of them leaves half of it. The journal knows
// the rest: whatever the moment, the batch is whole after the next start, or on offer.
#include "HalfLoggedTest.h"

#include "history/HistoryChain.h"
#include "mixer/MixJournal.h"
#include "records/Restoration.h"
#include "records/clsLog.h"
#include "support/Hindrances.h"
#include "support/KilledChild.h"
#include "support/Settle.h"

#include <csignal>

using namespace sorvanto;

namespace {

/// A batch that was written without any failure, and how many statements that took.
struct WholeBatch {
    QString rows;
    int statements = 0;
};

class HalfLoggedTest : public HalfLogged {
protected:
    WholeBatch writeWhole() {
        WholeBatch whole;
        leaveFinishedMix();
        MixerDesk& at = restart();
        {
            const StatementWatch watch(platform::sqlite::handleOf(basMain::gConnection->engine()),
                                       [&](const QByteArray&) { ++whole.statements; });
            EXPECT_TRUE(at.logTheOffer());
        }
        whole.rows = batches();
        EXPECT_EQ(str(sqlText("SELECT count(*) FROM LogChem")), "3");
        desk.reset();
        sql("DELETE FROM Log; DELETE FROM sqlite_sequence WHERE name LIKE 'Log%'");
        EXPECT_TRUE(QDir(folder.path("mixes")).removeRecursively());
        return whole;
    }
    /// After whatever happened, the batch is on offer or in the log, and in the end equal to the whole one.
    void expectWholeOrOffered(const WholeBatch& whole) {
        MixerDesk& at = restart();
        EXPECT_EQ(str(sqlText("PRAGMA integrity_check")), "ok");
        if (at.offers()) {
            EXPECT_EQ(str(sqlText("SELECT count(*) FROM Log")), "0");
            EXPECT_TRUE(at.logTheOffer());
        }
        EXPECT_EQ(str(batches()), str(whole.rows));
        EXPECT_TRUE(openFiles().isEmpty());
        EXPECT_TRUE(at.reconciliation().complete());
        EXPECT_EQ(at.reconciliation().preparations, 1);
        desk.reset();
        sql("DELETE FROM Log; DELETE FROM sqlite_sequence WHERE name LIKE 'Log%'");
        EXPECT_TRUE(QDir(folder.path("mixes")).removeRecursively());
    }
    void deleteFromLog(int key, platform::Answer answer = platform::Answer::Yes) {
        const auto log = std::make_shared<clsLog>();
        log->openLog(key, {});
        asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, answer);
        clsLog().deleteLog(log);
    }
};

void keepAHistory() {
    QFile history(QString::fromLatin1(SORVANTO_SOURCE_DIR "/data/history.sql"));
    ASSERT_TRUE(history.open(QIODevice::ReadOnly));
    support::runSql(basMain::databaseLocation(), QString::fromUtf8(history.readAll()));
    basMain::gConnection->close();  // opened anew it keeps history
    openDB();
}

}  // namespace

TEST_F(HalfLoggedTest, KilledBeforeEachStatementItIsWholeAtTheNextStart) {
    const WholeBatch whole = writeWhole();
    ASSERT_GE(whole.statements, 6);
    basMain::gConnection->close();
    for (int at = 1; at <= whole.statements; ++at) {
        SCOPED_TRACE(at);
        leaveFinishedMix();
        ASSERT_TRUE(support::childIsKilled("HalfLoggedChild.*", folder.path(), at));
        ASSERT_EQ(openDB()->state(), 1);
        ASSERT_NO_FATAL_FAILURE(expectWholeOrOffered(whole));
        basMain::gConnection->close();
    }
}

// The child's part; in an ordinary run there is nothing to do.
TEST(HalfLoggedChild, SignsAndIsKilled) {
    const QString folder = support::folderOfChild();
    if (folder.isEmpty())
        return;
    platform::setProgramFolder(folder);
    const support::FixedClock clock;
    basMain::gConnection = std::make_shared<platform::Connection>();
    basMain::databaseLocation = [&] { return folder + "/sorvanto.mdb"; };
    MixerDesk desk;
    desk.start();
    ASSERT_TRUE(desk.offers());
    int left = support::numberOfChild();
    const StatementWatch watch(platform::sqlite::handleOf(openDB()->engine()), [&](const QByteArray&) {
        if (--left == 0)
            std::raise(SIGKILL);
    });
    desk.logTheOffer();
}

TEST_F(HalfLoggedTest, OnAFullDiskFromEachStatementOnItIsWholeAtTheNextStart) {
    const WholeBatch whole = writeWhole();
    for (int at = 1; at <= whole.statements; ++at) {
        SCOPED_TRACE(at);
        leaveFinishedMix();
        MixerDesk& signing = restart();
        {
            std::unique_ptr<support::FullDisk> full;
            int left = at;
            const StatementWatch watch(platform::sqlite::handleOf(basMain::gConnection->engine()),
                                       [&](const QByteArray&) {
                                           if (--left == 0)
                                               full = std::make_unique<support::FullDisk>();
                                       });
            signing.logTheOffer();
        }
        dropReports();
        ASSERT_NO_FATAL_FAILURE(expectWholeOrOffered(whole));
    }
}

TEST_F(HalfLoggedTest, LinesAreAddedAtTheNextStartAndThatIsSaid) {
    const WholeBatch whole = writeWhole();
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    MixerDesk& at = restart();
    EXPECT_EQ(str(at.notice()), "Batch SV04260012: 2 missing ingredient lines were added.");
    EXPECT_FALSE(at.offers());
    EXPECT_EQ(str(batches()), str(whole.rows));
    EXPECT_TRUE(closedFile().contains("State=\"logged\""));
    EXPECT_EQ(str(restart().notice()), "") << "once";
}

TEST_F(HalfLoggedTest, OneLineIsOneLine) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(2));
    EXPECT_EQ(str(restart().notice()), "Batch SV04260012: 1 missing ingredient line was added.");
}

TEST_F(HalfLoggedTest, AWholeBatchWhoseJournalIsStillOpenIsClosedWithoutAWord) {
    leaveFinishedMix();
    ASSERT_TRUE(restart().logTheOffer());
    MixJournal journal;
    journal.reopen(journal.closed().front());
    EXPECT_FALSE(restart().offers());
    EXPECT_EQ(str(desk->notice()), "");
    EXPECT_TRUE(openFiles().isEmpty());
}

TEST_F(HalfLoggedTest, LinesAreAddedWhenTheUserAsksForTheLog) {
    const WholeBatch whole = writeWhole();
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(0));
    EXPECT_FALSE(desk->reconciliation().complete());
    EXPECT_TRUE(desk->logTheOffer());
    EXPECT_EQ(str(desk->notice()), "Batch SV04260012: 3 missing ingredient lines were added.");
    EXPECT_EQ(str(batches()), str(whole.rows));
    EXPECT_EQ(str(desk->account()), "");
}

TEST_F(HalfLoggedTest, LinesThatCantBeAddedStayInTheJournalAndThatIsSaid) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(0));
    {
        const support::FullDisk full;
        EXPECT_FALSE(desk->logTheOffer());
    }
    EXPECT_TRUE(
        desk->notice().startsWith("Batch SV04260012: its missing ingredient lines could not be added: "))
        << str(desk->notice());
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM LogChem")), "0");
    EXPECT_TRUE(desk->logTheOffer());
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM LogChem")), "3");
}

TEST_F(HalfLoggedTest, TheRowIsKnownByAllItsColumnsNotByItsLot) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    sql("INSERT INTO Log (FormulaID, log_Name, log_Date, log_Lot) VALUES"
        " (1, 'Cooling Gel', '2026-03-07 14:05:09', 'SV04260012'), (9, 'Other', NULL, 'SV04260012')");
    restart();
    EXPECT_EQ(str(sqlText("SELECT LogID, count(*) FROM LogChem GROUP BY LogID")), "1|3");
}

TEST_F(HalfLoggedTest, AnotherBatchOfThatLotDoesNotCloseTheJournal) {
    leaveFinishedMix();
    sql("INSERT INTO Log (FormulaID, log_Name, log_Date, log_Lot) VALUES"
        " (1, 'Cooling Gel', '2026-03-07 14:05:09', 'SV04260012')");
    MixJournal journal;
    journal.read();
    journal.sign("3FA21C09", {{{"log_Lot", "SV04260012"}, {"log_Date", "2026-03-07 14:05:09"}}, {}});
    EXPECT_TRUE(restart().offers());
}

TEST_F(HalfLoggedTest, InitialsAndNotesMayHaveBeenChangedSince) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    sql("UPDATE Log SET log_Notes = 'late', log_Initials = 'XY'");
    EXPECT_EQ(str(restart().notice()), "Batch SV04260012: 2 missing ingredient lines were added.");
}

TEST_F(HalfLoggedTest, WithTwoEqualRowsNothingIsWrittenAndBothAreNamed) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    sql("CREATE TEMP TABLE twin AS SELECT * FROM Log; UPDATE twin SET LogID = 7; INSERT INTO Log SELECT * FROM twin");
    const QString before = batches();
    const QString said =
        "Batch SV04260012 stands in the log more than once (entries 1, 7). Nothing was written.";
    MixerDesk& at = restart();
    EXPECT_EQ(str(at.notice()), str(said));
    EXPECT_FALSE(at.logTheOffer()) << "nor is it signed once more";
    EXPECT_EQ(str(at.notice()), str(said));
    EXPECT_EQ(str(batches()), str(before));
    EXPECT_EQ(str(at.account()), "1 of 2 preparations not accounted for: SV04260012");
}

TEST_F(HalfLoggedTest, LinesThatAreOthersAreLeftAlone) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    sql("UPDATE LogChem SET lch_Cost = 99");
    const QString before = batches();
    EXPECT_EQ(str(restart().notice()),
              "Batch SV04260012: its ingredient lines in the log are not those that were signed. "
              "Nothing was written.");
    EXPECT_EQ(str(batches()), str(before));
}

TEST_F(HalfLoggedTest, NothingIsWrittenThatTheJournalCantTakeDown) {
    leaveFinishedMix();
    MixerDesk& at = restart();
    const QString journal = folder.path("mixes/3FA21C09.xml");
    ASSERT_TRUE(QFile::rename(journal, folder.path("aside")) && QDir().mkdir(journal));
    EXPECT_FALSE(at.logTheOffer());
    expectReports("clsLog:addLog");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Log")), "0");
    ASSERT_TRUE(QDir().rmdir(journal) && QFile::rename(folder.path("aside"), journal));
    EXPECT_TRUE(at.logTheOffer());
}

// ---- deleted by the user --------------------------------------------------------------------------

TEST_F(HalfLoggedTest, AHalfWrittenBatchThatTheUserDeletesIsNeverOfferedAgain) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    deleteFromLog(1);
    EXPECT_TRUE(closedFile().contains("State=\"deleted\""));
    for (int starts = 0; starts < 2; ++starts) {
        EXPECT_FALSE(restart().offers());
        EXPECT_EQ(str(sqlText("SELECT count(*) FROM Log")), "0");
        EXPECT_EQ(str(desk->account()), "");
    }
}

TEST_F(HalfLoggedTest, AWholeBatchThatTheUserDeletesIsNeverOfferedAgain) {
    leaveFinishedMix();
    ASSERT_TRUE(restart().logTheOffer());
    sql("UPDATE Log SET log_Verified = 'EF'");
    deleteFromLog(1);
    EXPECT_FALSE(restart().offers());
    EXPECT_TRUE(desk->reconciliation().complete());
    EXPECT_EQ(desk->reconciliation().closed, 1);
}

TEST_F(HalfLoggedTest, ADeletionThatIsRefusedIsNotNoted) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    sql("INSERT INTO Patient (PatientID) VALUES (1); INSERT INTO RXs (LogID, PatientID) VALUES (1, 1)");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("Cooling Gel\r\nis currently used in a prescription,\rit can not be deleted.",
                       {platform::Buttons::Ok}, "");
    const auto log = std::make_shared<clsLog>();
    log->openLog(1, {});
    clsLog().deleteLog(log);
    EXPECT_EQ(openFiles(), QStringList{"3FA21C09.xml"});
    EXPECT_EQ(str(restart().notice()), "Batch SV04260012: 2 missing ingredient lines were added.");
}

TEST_F(HalfLoggedTest, ADeletionThatWasNotedAndNeverHappenedIsTakenBack) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    MixJournal journal;
    journal.read();
    journal.noteDeletion(journal.open().front().rows);  // and then the program died
    EXPECT_TRUE(closedFile().contains("State=\"deleted\""));
    EXPECT_EQ(str(restart().notice()), "Batch SV04260012: 2 missing ingredient lines were added.");
    EXPECT_TRUE(closedFile().contains("State=\"logged\""));
}

// ---- other databases, other copies ----------------------------------------------------------------

TEST_F(HalfLoggedTest, ABatchThatAnOlderCopyLacksIsOfferedAgain) {
    leaveFinishedMix();
    ASSERT_TRUE(restart().logTheOffer());
    sql("DELETE FROM Log");  // as the copy of this morning has it
    EXPECT_TRUE(restart().offers());
    EXPECT_TRUE(desk->logTheOffer());
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM LogChem")), "3");
}

TEST_F(HalfLoggedTest, ABatchThatWentIntoAnArchiveIsAccountedForThere) {
    leaveFinishedMix();
    ASSERT_TRUE(restart().logTheOffer());
    sql("CREATE TABLE ArchivedBatch (abt_Archive TEXT(32), abt_Lot TEXT(40), abt_Date DATETIME);"
        "INSERT INTO ArchivedBatch SELECT 'x', log_Lot, log_Date FROM Log; DELETE FROM Log");
    EXPECT_FALSE(restart().offers());
    EXPECT_TRUE(desk->reconciliation().complete());
    EXPECT_EQ(desk->reconciliation().archived, 1);
}

TEST_F(HalfLoggedTest, ABatchOfAnotherDatabaseIsNotMixedUp) {
    ASSERT_NO_FATAL_FAILURE(leaveHalfWritten(1));
    sql("UPDATE FileIdentity SET fid_Identity = 'ffffffffffffffffffffffffffffffff'");
    const QString before = batches();
    MixerDesk& at = restart();
    EXPECT_FALSE(at.offers());
    EXPECT_EQ(str(batches()), str(before));
    EXPECT_TRUE(support::child<QLabel>(*at.screen, "mixerOffer")
                    ->text()
                    .endsWith(": made with another database. Open that database to log it."));
    EXPECT_EQ(openFiles(), QStringList{"3FA21C09.xml"});
}

TEST_F(HalfLoggedTest, EachPreparationIsAccountedForOrNamed) {
    leaveFinishedMix();
    ASSERT_TRUE(restart().logTheOffer());
    sql("INSERT INTO Log (log_Name, log_Date, log_Lot) VALUES ('Older', '2020-01-01 00:00:00', 'SV04260001')");
    EXPECT_EQ(str(restart().account()), "All 2 preparations accounted for.");
    EXPECT_EQ(desk->reconciliation().inLog, 2);
    sql("DELETE FROM LogChem WHERE lch_Name LIKE 'M%'");
    EXPECT_EQ(str(restart().account()), "1 of 2 preparations not accounted for: SV04260012");
}

// A history whose end is cut later is known from there.
TEST_F(HalfLoggedTest, TheJournalNotesWhereTheHistoryStood) {
    keepAHistory();
    leaveFinishedMix();
    MixerDesk& at = restart();
    openDB()->execute("UPDATE Chemical SET chm_Notes = 'x' WHERE ChemicalID = 1");
    const HistoryHead head = historyHead(basMain::gConnection->engine());
    ASSERT_EQ(head.count, 2);
    ASSERT_TRUE(at.logTheOffer());
    EXPECT_TRUE(closedFile().contains(toText(head).toUtf8()));
    EXPECT_EQ(historyHead(basMain::gConnection->engine()).count, 6) << "the batch and its three lines";
    EXPECT_TRUE(chainProblems(basMain::gConnection->engine()).isEmpty());
    desk.reset();
}

TEST_F(HalfLoggedTest, ARestoredBatchIsNoLongerNotedAsDeleted) {
    keepAHistory();
    leaveFinishedMix();
    ASSERT_TRUE(restart().logTheOffer());
    EXPECT_EQ(
        str(sqlText("SELECT hst_Table, hst_Deed FROM History WHERE hst_What = 'made' ORDER BY HistoryID")),
        "Log|signed\nLogChem|signed\nLogChem|signed\nLogChem|signed");
    const QString before = sqlText("SELECT * FROM Log; SELECT * FROM LogChem");
    const DeletedRecord deleted = aboutToDelete(context, "Log", 1);
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, platform::Answer::Yes);
    const auto log = std::make_shared<clsLog>();
    log->openLog(1, {});
    ASSERT_TRUE(clsLog().deleteLog(log));
    ASSERT_TRUE(closedFile().contains("State=\"deleted\""));
    EXPECT_EQ(takeBackDeletion(context, deleted), Restored::Whole);
    EXPECT_TRUE(closedFile().contains("State=\"logged\""));
    EXPECT_EQ(str(sqlText("SELECT * FROM Log; SELECT * FROM LogChem")), str(before));
    EXPECT_FALSE(restart().offers());
    sql("DELETE FROM Log");  // as a copy from before it was logged has it
    EXPECT_TRUE(restart().offers()) << "as any batch that was logged";
    desk.reset();
}
