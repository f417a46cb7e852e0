// The folder of drafts: who may read it, how many and how long, and what else may lie in it.
#include "shared/DraftStore.h"

#include "support/Hindrances.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

using sorvanto::Draft;
using sorvanto::DraftStore;

namespace {

class DraftStoreTest : public support::TestProgram {
protected:
    static Draft draft(int number, int daysAgo = 0) {
        Draft made{u"%1"_s.arg(number, 32, 16, QChar('0')),
                   u"/data/sorvanto.mdb"_s,
                   {},
                   {u"Chemical"_s, 3, u"G3"_s, u"Camphor"_s},
                   platform::now().addDays(-daysAgo).addSecs(number),
                   {{u"txtchm_Notes"_s, u"Notes"_s, u"text %1"_s.arg(number), QString()}}};
        return made;
    }
    static QString nameOf(int number) { return u"drafts/"_s + draft(number).id + u".json"_s; }
    QStringList files() const {
        return QDir(folder.path("drafts")).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }
    static QStringList texts(const DraftStore& store) {
        QStringList texts;
        for (const Draft& draft : store.drafts())
            texts << draft.fields.front().typed;
        return texts;
    }
};

constexpr auto ownerFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr auto othersAndGroup = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                                QFile::WriteOther | QFile::ExeOther;

TEST_F(DraftStoreTest, MakesNothingUntilTheFirstDraft) {
    DraftStore store;
    store.read();
    store.remove(draft(1).id);
    store.flush();
    EXPECT_FALSE(QFileInfo::exists(folder.path("drafts")));
}

TEST_F(DraftStoreTest, FilesAreWrittenByAThreadOfTheirOwn) {
    const auto threads = [] {
        return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    };
    DraftStore store;
    const auto before = threads();
    store.put(draft(1));
    EXPECT_EQ(threads(), before + 1);
}

TEST_F(DraftStoreTest, FolderAndFilesAreTheOwnersAlone) {
    DraftStore store;
    store.put(draft(1));
    store.flush();
    EXPECT_EQ(QFile::permissions(folder.path("drafts")) & othersAndGroup, QFile::Permissions());
    EXPECT_EQ(QFile::permissions(folder.path(nameOf(1))) & (othersAndGroup | ownerFile | QFile::ExeOwner),
              ownerFile);
}

TEST_F(DraftStoreTest, AFolderOpenToOthersIsClosed) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("drafts"));
    QFile::setPermissions(folder.path("drafts"), QFile::Permissions(0x7777));
    DraftStore store;
    store.put(draft(1));
    store.flush();
    EXPECT_EQ(QFile::permissions(folder.path("drafts")) & othersAndGroup, QFile::Permissions());
}

TEST_F(DraftStoreTest, TheNextRunOffersWhatThisOneLeft) {
    {
        DraftStore store;
        store.put(draft(1));
        store.put(draft(2));
        Draft again = draft(1);
        again.fields.front().typed = "more text";
        store.put(again);
        EXPECT_FALSE(store.find(draft(1).id)->offered);
    }
    DraftStore next;
    next.read();
    EXPECT_EQ(texts(next), (QStringList{"text 2", "more text"}));
    const Draft* read = next.find(draft(1).id);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->offered && read->earlier);
    EXPECT_EQ(read->record, draft(1).record);
    EXPECT_EQ(read->time, draft(1).time);
}

TEST_F(DraftStoreTest, ARemovedDraftIsGoneForGood) {
    DraftStore store;
    store.put(draft(1));
    store.remove(draft(1).id);
    store.flush();
    EXPECT_TRUE(store.drafts().empty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(DraftStoreTest, KeepsTheNewestTwenty) {
    DraftStore store;
    for (int number = 1; number <= 25; ++number)
        store.put(draft(number));
    store.flush();
    EXPECT_EQ(store.drafts().size(), DraftStore::mostKept);
    EXPECT_EQ(texts(store).first(), "text 25");
    EXPECT_EQ(texts(store).last(), "text 6");
    EXPECT_EQ(files().size(), 20);
}

TEST_F(DraftStoreTest, WhatIsOlderThanThirtyDaysGoes) {
    {
        DraftStore store;
        store.put(draft(1, 29));
        store.put(draft(2, 0));
    }
    clock.set(clock.now().addDays(2));
    DraftStore next;
    next.read();
    next.flush();
    EXPECT_EQ(texts(next), QStringList{"text 2"});
    EXPECT_EQ(files().size(), 1);
    clock.set(clock.now().addDays(29));
    next.put(draft(3));
    next.flush();
    EXPECT_EQ(texts(next), QStringList{"text 3"}) << "a program that runs for weeks thins out as well";
    EXPECT_EQ(files().size(), 1);
}

TEST_F(DraftStoreTest, DamagedAndForeignFilesStayAsTheyAre) {
    {
        DraftStore store;
        store.put(draft(1));
    }
    folder.write(nameOf(2), "{\"version\": 1, \"tab");
    folder.write(nameOf(3), {});
    folder.write("drafts/notes.json", draftFile(draft(4)));
    folder.write("drafts/readme.txt", "mine");
    DraftStore store;
    store.read();
    store.flush();
    EXPECT_EQ(texts(store), QStringList{"text 1"});
    EXPECT_EQ(folder.read(nameOf(2)), "{\"version\": 1, \"tab");
    EXPECT_EQ(files().size(), 5);
}

TEST_F(DraftStoreTest, AFileOfFourMillionBytesIsTheLargestThatIsRead) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("drafts"));
    Draft large = draft(1);
    large.fields.front().typed.clear();
    large.fields.front().typed.fill('x', 4'000'000 - draftFile(large).size());
    folder.write(nameOf(1), draftFile(large));
    large.fields.front().typed += 'x';
    folder.write(nameOf(2), draftFile(large));
    DraftStore store;
    store.read();
    EXPECT_TRUE(store.find(draft(1).id));
    EXPECT_FALSE(store.find(draft(2).id));
    EXPECT_EQ(files().size(), 2) << "nothing of it goes";
}

TEST_F(DraftStoreTest, ADamagedFileGoesWhenItIsTooOld) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("drafts"));
    folder.write(nameOf(2), "{");
    folder.write("drafts/readme.txt", "mine");
    clock.set(QDateTime(QDate(2100, 1, 1), QTime(0, 0), Qt::UTC));
    DraftStore store;
    store.read();
    EXPECT_EQ(files(), QStringList{"readme.txt"});
}

TEST_F(DraftStoreTest, WhatAPowerCutLeftHalfWrittenGoes) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("drafts"));
    folder.write(nameOf(1) + ".x1Y2z3", "{\"version\"");
    folder.write(nameOf(1) + ".backup1", "mine");
    DraftStore store;
    store.read();
    EXPECT_EQ(files(), QStringList{draft(1).id + ".json.backup1"});
}

TEST_F(DraftStoreTest, LinksAreNotFollowed) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("drafts"));
    folder.write("elsewhere.json", draftFile(draft(1)));
    ASSERT_TRUE(QFile::link(folder.path("elsewhere.json"), folder.path(nameOf(1))));
    DraftStore store;
    store.read();
    EXPECT_TRUE(store.drafts().empty());
    EXPECT_EQ(folder.read("elsewhere.json"), draftFile(draft(1)));
}

TEST_F(DraftStoreTest, AFolderThatIsALinkIsRefused) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("elsewhere"));
    folder.write("elsewhere/" + draft(1).id + ".json", draftFile(draft(1)));
    ASSERT_TRUE(QFile::link(folder.path("elsewhere"), folder.path("drafts")));
    DraftStore store;
    store.read();
    EXPECT_TRUE(store.drafts().empty());
    store.put(draft(2));
    store.flush();
    QCoreApplication::processEvents();
    EXPECT_TRUE(expectReport("DraftStore:write").description.endsWith("is a link"));
    EXPECT_EQ(QDir(folder.path("elsewhere")).entryList(QDir::Files).size(), 1);
}

TEST_F(DraftStoreTest, AFolderThatCantBeWrittenIsToldOnceAndTheTextStaysInMemory) {
    folder.write("drafts", "a file in its place");
    DraftStore store;
    for (int number = 1; number <= 3; ++number) {
        store.put(draft(number));
        store.flush();
        QCoreApplication::processEvents();
    }
    expectReport("DraftStore:write");
    EXPECT_TRUE(reporter->calls.empty());
    EXPECT_EQ(texts(store), (QStringList{"text 3", "text 2", "text 1"}));

    ASSERT_TRUE(QFile::remove(folder.path("drafts")));
    store.put(draft(4));
    store.flush();
    EXPECT_EQ(files().size(), 1);
}

TEST_F(DraftStoreTest, OnAFullDiskTheOldDraftStaysWhole) {
    DraftStore store;
    store.put(draft(1));
    store.flush();
    const QByteArray before = folder.read(nameOf(1));
    {
        const support::FullDisk full;
        Draft longer = draft(1);
        longer.fields.front().typed = QString(9000, QChar('x'));
        store.put(longer);
        store.put(draft(2));
        store.flush();
    }
    QCoreApplication::processEvents();
    expectReport("DraftStore:write");
    EXPECT_EQ(folder.read(nameOf(1)), before);
    EXPECT_EQ(files().size(), 1) << "neither a new empty file nor half a one";
}

}  // namespace
