// The journal: its states on the disk, what is left of it at a start, and that no moment leaves half a file.
#include "KilledWriter.h"
#include "MemoryLine.h"
#include "support/FixedClock.h"
#include "support/Hindrances.h"
#include "support/TempProgramFolder.h"

#include "mixer/MixJournal.h"
#include "mixer/ResultsDocument.h"
#include "platform/basic/RuntimeError.h"

#include <set>

using namespace sorvanto;

namespace {

const protocol::MixId mixId = "3FA21C09";

platform::XmlDocumentPtr someResults(int preparation = 12) {
    return makeResultsDocument({1, "2.1", "SV0426"}, {mixId, preparation, 7, 9, 61, false, 2, 14952});
}

class MixJournalTest : public testing::Test {
protected:
    support::TempProgramFolder folder;
    support::FixedClock clock;

    QStringList files(const QString& below = "mixes") const {
        return QDir(folder.path(below)).entryList(QDir::Files | QDir::Hidden);
    }
    MixJournal readAgain() const {
        MixJournal journal;
        journal.read();
        return journal;
    }
};

}  // namespace

TEST_F(MixJournalTest, EmptyWithoutAFolderAndMakesNone) {
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_FALSE(folder.has("mixes"));
}

TEST_F(MixJournalTest, FileOfAFinishedMixIsForPeopleToo) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    clock.advance(60);
    journal.start(mixId, "SV0426");
    clock.advance(600);
    journal.finish(mixId, someResults(), false);
    EXPECT_EQ(files(), QStringList{"3FA21C09.xml"});
    EXPECT_EQ(QString::fromUtf8(folder.read("mixes/3FA21C09.xml")),
              "<Mix ID=\"3FA21C09\" State=\"finished\" Mixer=\"SV0426\" Loaded=\"2026-03-07 14:05:09\" "
              "Started=\"2026-03-07 14:06:09\" Finished=\"2026-03-07 14:16:09\">" +
                  test::shortFormula()->xml() + someResults()->xml() + "</Mix>");
}

TEST_F(MixJournalTest, FolderAndFilesAreTheirOwnersAlone) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    constexpr auto others = QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther;
    EXPECT_EQ(QFile::permissions(folder.path("mixes")) & others, QFile::Permissions());
    EXPECT_EQ(QFile::permissions(folder.path("mixes/3FA21C09.xml")) & others, QFile::Permissions());
    journal.close(mixId, JournalState::PutAside);
    EXPECT_EQ(QFile::permissions(folder.path("mixes/closed")) & others, QFile::Permissions());
}

TEST_F(MixJournalTest, EachStateSurvives) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    MixJournal again = readAgain();
    ASSERT_EQ(again.open().size(), 1U);
    EXPECT_EQ(again.open()[0].state, JournalState::Started);
    EXPECT_EQ(again.open()[0].serial, "SV0426");
    EXPECT_EQ(again.open()[0].name(), "Hydrocortisone 1% Cream");
    EXPECT_EQ(again.open()[0].quantity(), "250");
    EXPECT_EQ(again.open()[0].lot(), "");

    again.finish(mixId, someResults(), true);
    again = readAgain();
    EXPECT_EQ(again.open()[0].state, JournalState::Finished);
    EXPECT_EQ(again.open()[0].lot(), "SV04260012");
    EXPECT_TRUE(again.open()[0].lotTaken);
    EXPECT_EQ(again.open()[0].formula->xml(), test::shortFormula()->xml());
    EXPECT_EQ(again.open()[0].results->xml(), someResults()->xml());

    again.close(mixId, JournalState::Logged);
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_EQ(files("mixes/closed"), QStringList{"20260307-140509-3FA21C09.xml"});
    EXPECT_TRUE(folder.read("mixes/closed/20260307-140509-3FA21C09.xml").contains("State=\"logged\""));
}

TEST_F(MixJournalTest, OpenMixesStandInTheOrderOfTheirStarts) {
    for (const char* mix : {"00000003", "00000001", "00000002"}) {
        MixJournal journal;
        journal.load(mix, test::shortFormula());
        journal.start(mix, "SV0426");
        clock.advance(60);
    }
    const MixJournal journal = readAgain();
    ASSERT_EQ(journal.open().size(), 3U);
    EXPECT_EQ(journal.open()[0].mix, "00000003");
    EXPECT_EQ(journal.open()[1].mix, "00000001");
    EXPECT_EQ(journal.open()[2].mix, "00000002");
}

TEST_F(MixJournalTest, AnUndoneStartLeavesNothing) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    EXPECT_TRUE(folder.read("mixes/3FA21C09.xml").contains(" Started="));
    journal.undoStart(mixId);
    EXPECT_TRUE(journal.open().empty());
    EXPECT_TRUE(files().isEmpty());
    journal.undoStart(mixId);
    EXPECT_TRUE(readAgain().open().empty());
}

TEST_F(MixJournalTest, AbortedStaysUntilPutAside) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    journal.abort(mixId);
    MixJournal again = readAgain();
    ASSERT_EQ(again.open().size(), 1U);
    EXPECT_EQ(again.open()[0].state, JournalState::Aborted);
    EXPECT_EQ(again.open()[0].finished, clock.now());
    again.close(mixId, JournalState::PutAside);
    EXPECT_TRUE(readAgain().open().empty());
}

TEST_F(MixJournalTest, NeverStartedIsTidiedAway) {
    MixJournal journal;
    journal.load("00000001", test::shortFormula());
    journal.load("00000002", test::shortFormula());
    EXPECT_EQ(files(), QStringList{"00000002.xml"}) << "a newer formula takes the place";
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(MixJournalTest, ClosedButNotMovedIsMoved) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    journal.finish(mixId, someResults(), false);
    const QByteArray finished = folder.read("mixes/3FA21C09.xml");
    folder.write("mixes/3FA21C09.xml", QByteArray(finished).replace("\"finished\"", "\"put aside\""));
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_TRUE(folder.has("mixes/closed/20260307-140509-3FA21C09.xml"));
    folder.write("mixes/3FA21C09.xml", QByteArray(finished).replace("\"finished\"", "\"logged\""));
    const QByteArray closed = folder.read("mixes/3FA21C09.xml");
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_EQ(files("mixes/closed"), QStringList{"20260307-140509-3FA21C09.xml"});
    EXPECT_TRUE(files().isEmpty());
    // Over one that is there already; without a date in it, under that of today.
    folder.write("mixes/closed/20260307-140509-3FA21C09.xml", "older");
    folder.write("mixes/3FA21C09.xml", closed);
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(folder.read("mixes/closed/20260307-140509-3FA21C09.xml"), closed);
    folder.write("mixes/3FA21C09.xml", QByteArray(closed).replace(" Loaded=\"2026-03-07 14:05:09\"", ""));
    clock.advance(60);
    EXPECT_TRUE(readAgain().open().empty());
    EXPECT_EQ(files("mixes/closed").last(), "20260307-140609-3FA21C09.xml");
}

TEST_F(MixJournalTest, AThousandClosedMixesAreKeptTheNewestOnes) {
    QDir(folder.path()).mkpath("mixes/closed");
    const auto nameOf = [](int number) {
        return QString::fromLatin1("20250101-%1-3FA21C09.xml").arg(number, 6, 10, QChar('0'));
    };
    for (int number = 1; number <= 1003; ++number)
        folder.write("mixes/closed/" + nameOf(number), {});
    readAgain();
    const QStringList kept = files("mixes/closed");
    ASSERT_EQ(kept.size(), 1000);
    EXPECT_EQ(kept.first(), nameOf(4));
    EXPECT_EQ(kept.last(), nameOf(1003));
}

// A clock set back must not make the newest the first to go.
TEST_F(MixJournalTest, ClosedMixesStandInTheOrderInWhichTheyWereClosed) {
    const auto closeOne = [&](const protocol::MixId& mix) {
        MixJournal journal;
        journal.load(mix, test::shortFormula());
        journal.start(mix, "SV0426");
        journal.finish(mix, someResults(), false);
        journal.close(mix, JournalState::Logged);
    };
    closeOne("00000003");
    clock.advance(-400 * 86'400);
    closeOne("00000002");
    closeOne("00000001");
    EXPECT_EQ(files("mixes/closed"),
              (QStringList{"20260307-140509-00000003.xml", "20260307-140510-00000002.xml",
                           "20260307-140511-00000001.xml"}));
    MixJournal journal;
    const auto closed = journal.closed();
    ASSERT_EQ(closed.size(), 3U);
    EXPECT_EQ(closed[0].mix, "00000001") << "newest first";
}

TEST_F(MixJournalTest, AMixThatIsClosedAgainTakesItsPlaceAgain) {
    MixJournal journal;
    journal.load("00000001", test::shortFormula());
    journal.start("00000001", "SV0426");
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    journal.close("00000001", JournalState::PutAside);
    journal.finish(mixId, someResults(), false);
    journal.close(mixId, JournalState::Logged);
    const QStringList both{"20260307-140509-00000001.xml", "20260307-140510-3FA21C09.xml"};
    EXPECT_EQ(files("mixes/closed"), both);
    const QByteArray before = folder.read("mixes/closed/" + both[1]);
    journal.reopen(journal.closed().at(0));
    folder.write("mixes/closed/" + both[1], before);  // killed before it was taken away
    journal.close(mixId, JournalState::Logged);
    EXPECT_EQ(files("mixes/closed"), both);
}

TEST_F(MixJournalTest, WhatIsNoJournalStaysAndIsNamed) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    const QByteArray good = folder.read("mixes/3FA21C09.xml");
    folder.write("mixes/empty.xml", "");
    folder.write("mixes/garbage.xml", QByteArray("\x00\xFF<Mix", 6));
    folder.write("mixes/half.xml", good.left(good.size() / 2));
    // These bear the right names: what is wrong stands inside.
    int number = 0;
    const auto broken = [&](const char* part, const char* by) {
        const QByteArray id = QByteArray::number(++number).rightJustified(8, '0');
        const QByteArray text = QByteArray(good).replace("3FA21C09", id);
        folder.write("mixes/" + id + ".xml", QByteArray(text).replace(part, by));
        EXPECT_NE(folder.read("mixes/" + id + ".xml"), text) << part;
    };
    broken("\"loaded\"", "\"sleeping\"");
    broken("\"loaded\"", "\"finished\"");  // without results
    broken("\"loaded\"", "\"\"");
    broken(" State=\"loaded\"", "");
    broken(" ID=\"00000005\"", "");
    broken("Formula>", "Recipe>");
    folder.write("mixes/00000007.xml", "<Other ID=\"00000007\" State=\"started\">" +
                                           test::shortFormula()->xml().toUtf8() + "</Other>");
    folder.write("mixes/0000000X.xml", QByteArray(good).replace("3FA21C09", "0000000X"));
    const MixJournal again = readAgain();
    EXPECT_TRUE(again.open().empty());
    EXPECT_EQ(again.unreadable(), (QStringList{"00000001.xml", "00000002.xml", "00000003.xml", "00000004.xml",
                                               "00000005.xml", "00000006.xml", "00000007.xml", "0000000X.xml",
                                               "empty.xml", "garbage.xml", "half.xml"}));
    EXPECT_EQ(files().size(), 11) << "they stay, the one never started has gone";
    EXPECT_FALSE(folder.has("mixes/3FA21C09.xml"));
}

// A copy made by hand names a mix whose own file lies beside it.
TEST_F(MixJournalTest, AFileUnderAnotherMixsNameNeverTouchesThatMix) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    const QByteArray started = folder.read("mixes/3FA21C09.xml");
    for (const char* state : {"loaded", "started", "logged", "put aside"}) {
        const QByteArray copy = QByteArray(started).replace("\"started\"", QByteArray("\"") + state + '"');
        folder.write("mixes/00000001.xml", copy);
        const MixJournal again = readAgain();
        EXPECT_EQ(again.unreadable(), QStringList{"00000001.xml"}) << state;
        ASSERT_EQ(again.open().size(), 1U) << state;
        EXPECT_EQ(folder.read("mixes/3FA21C09.xml"), started) << state;
        EXPECT_EQ(folder.read("mixes/00000001.xml"), copy) << state;
    }
}

TEST_F(MixJournalTest, FullDiskThrowsAndLeavesTheOldFile) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    const QByteArray before = folder.read("mixes/3FA21C09.xml");
    {
        const support::FullDisk full;
        EXPECT_THROW(journal.finish(mixId, someResults(), false), platform::RuntimeError);
    }
    EXPECT_EQ(folder.read("mixes/3FA21C09.xml"), before);
    EXPECT_EQ(files(), QStringList{"3FA21C09.xml"}) << "no rest of the attempt";
    EXPECT_EQ(journal.open()[0].state, JournalState::Finished) << "not lost while the program runs";
}

// It stands in the log, and the full disk keeps the journal from knowing it when the user deletes it again.
TEST_F(MixJournalTest, ABatchDeletedAfterAFullDiskAtItsClosingIsClosedForGood) {
    MixJournal journal;
    journal.load(mixId, test::shortFormula());
    journal.start(mixId, "SV0426");
    journal.finish(mixId, someResults(), false);
    const BatchRows rows{QJsonObject{{"log_Lot", "SV04260012"}, {"log_Date", "2026-03-07 14:05:09"}}, {}};
    journal.sign(mixId, rows);
    {
        const support::FullDisk full;
        EXPECT_THROW(journal.close(mixId, JournalState::Logged), platform::RuntimeError);
    }
    EXPECT_EQ(files(), QStringList{"3FA21C09.xml"});
    journal.noteDeletion(rows);
    EXPECT_TRUE(readAgain().open().empty());
    ASSERT_EQ(journal.closed().size(), 1U);
    EXPECT_EQ(journal.closed()[0].state, JournalState::Deleted);
}

TEST_F(MixJournalTest, UnknownMixIsAnError) {
    MixJournal journal;
    EXPECT_THROW(journal.start(mixId, "SV0426"), platform::RuntimeError);
    EXPECT_THROW(journal.close(mixId, JournalState::Logged), platform::RuntimeError);
}

// A child writes the journal without end and is killed in each of its states, again and again.
TEST_F(MixJournalTest, KilledAtAnyMomentTheJournalIsWhole) {
    std::set<JournalState> seen;
    for (int round = 0; round < 24; ++round) {
        MixJournal journal;
        ASSERT_TRUE(support::killInTheMidst(round % 8, [&](int step) {
            const auto mix = QByteArray::number(step / 4 % 5 + 1).rightJustified(8, '0');
            if (step % 4 == 0)
                journal.load(mix, test::shortFormula());
            else if (step % 4 == 1 && journal.find(mix))
                journal.start(mix, "SV0426");
            else if (step % 4 == 2 && journal.find(mix))
                journal.finish(mix, someResults(step), false);
            else if (journal.find(mix))
                journal.close(mix, JournalState::PutAside);
        }));
        const MixJournal left = readAgain();
        EXPECT_TRUE(left.unreadable().isEmpty()) << left.unreadable().join(' ').toStdString();
        for (const JournalEntry& entry : left.open()) {
            seen.insert(entry.state);
            EXPECT_EQ(entry.formula->xml(), test::shortFormula()->xml());
            EXPECT_EQ(entry.state == JournalState::Finished, entry.results != nullptr);
        }
    }
    EXPECT_TRUE(seen.contains(JournalState::Started) && seen.contains(JournalState::Finished));
    EXPECT_FALSE(files("mixes/closed").isEmpty());
}
