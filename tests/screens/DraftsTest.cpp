#include "DraftsTest.h"
#include "support/Waiting.h"

#include "shared/databaseInUse.h"

#include <QApplication>
#include <QClipboard>

using namespace Qt::StringLiterals;

using namespace sorvanto;

QString DraftsTest::button(ScreenNumber number) {
    for (const ScreenRow& row : screenTable) {
        if (row.number == number)
            return QString::fromLatin1(row.button);
    }
    return {};
}

QString DraftsTest::notesBox(ScreenNumber number) {
    switch (number) {
    case formulas:
        return "txtfrm_Instructions";
    case chemicals:
        return "txtchm_Notes";
    case logs:
        return "txtlog_Notes";
    default:
        return "txtpat_Notes";
    }
}

void DraftsTest::type(ScreenNumber number, const QString& keys) const {
    notes(number).selectAll();
    QTest::keyClicks(&notes(number), keys);
}

void DraftsTest::keepNow(ScreenNumber number) const {
    browsing(number).keepTypedText();
    files(1);
}

QWidget* DraftsTest::reader() const {
    auto* found = window->findChild<QWidget*>("DraftReader");
    return found && found->isVisible() ? found : nullptr;
}

QString DraftsTest::readerText(const QString& name) const {
    if (name == "lblReason")
        return support::child<QLabel>(*reader(), name)->text();
    return support::child<QPlainTextEdit>(*reader(), name)->toPlainText();
}

std::vector<Draft> DraftsTest::files(int expected) const {
    const QDir drafts(folder.path("drafts"));
    const auto there = [&] { return drafts.entryList({"*.json"}, QDir::Files).size() == expected; };
    EXPECT_TRUE(QTest::qWaitFor(there, 10'000)) << str(drafts.entryList(QDir::Files).join(' '));
    std::vector<Draft> read;
    for (const QString& name : drafts.entryList({"*.json"}, QDir::Files)) {
        const auto draft = readDraftFile(folder.read("drafts/" + name));
        EXPECT_TRUE(draft) << str(name);
        if (draft)
            read.push_back(*draft);
    }
    return read;
}

void DraftsTest::writeDraft(const Draft& draft) const {
    QDir(folder.path()).mkdir("drafts");
    folder.write("drafts/" + newDraftId() + ".json", draftFile(draft));
}

namespace {

struct Record {
    ScreenNumber number;
    const char* table;
    const char* key;
    const char* notes;  ///< column
    const char* guid;
    const char* name;
    const char* saveQuestion;
};
/// The first record that each screen shows.
const Record records[] = {
    {formulas, "Formula", "3", "frm_Instructions", "F3", "Arnica Salve",
     "Formula data not saved! Save Changes?"},
    {chemicals, "Chemical", "1", "chm_Notes", "G1", "Aspirin", "Chemical data not saved! Save Changes?"},
    {logs, "Log", "1", "log_Notes", "AB0010 2026-01-05 09:30:00", "Cooling Gel",
     "Log data not saved! Save Changes?"},
    {patients, "Patient", "1", "pat_Notes", "", "Doe, Jane", "Patient data not saved! Save Changes?"},
};

class EachScreen : public DraftsTest, public testing::WithParamInterface<Record> {
protected:
    ScreenNumber number() const { return GetParam().number; }
    QString stored() const {
        return sqlText(
            u"SELECT %1 FROM %2 WHERE %2ID = %3"_s.arg(GetParam().notes, GetParam().table, GetParam().key));
    }
    QString offerOf(const QString& text) const { return text.arg(GetParam().name); }
    /// A search that finds nothing fills the boxes with another record, or with none.
    void loseText() {
        asker.alwaysAnswer("No Records");
        search("nothing of that name");
    }
    void answerTheClosing(const QString& first, platform::Answer answer) {
        asker.alwaysAnswer(first, answer);
        if (number() != chemicals)
            asker.alwaysAnswer("Chemical data not saved! Save Changes?", platform::Answer::No);
    }
};
INSTANTIATE_TEST_SUITE_P(Drafts, EachScreen, testing::ValuesIn(records),
                         [](const auto& each) { return std::string(each.param.table); });

TEST_P(EachScreen, TypedTextIsKeptWhileItStandsInItsBoxAndGoesWhenItIsSaved) {
    editAt(number());
    const QString before = notes(number()).text();
    type(number(), "stir well");
    const auto kept = files(1);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].database, databaseInUse(context));
    const DraftRecord record{GetParam().table, static_cast<std::int16_t>(atoi(GetParam().key)),
                             GetParam().guid, GetParam().name};
    EXPECT_EQ(kept[0].record, record);
    EXPECT_EQ(kept[0].time, clock.now());
    ASSERT_EQ(kept[0].fields.size(), 1U);
    EXPECT_EQ(kept[0].fields[0].control, notesBox(number()));
    EXPECT_FALSE(kept[0].fields[0].label.isEmpty());
    EXPECT_EQ(kept[0].fields[0].typed, "stir well");
    EXPECT_EQ(kept[0].fields[0].replaced, before);
    EXPECT_EQ(str(offer()), "") << "it is not lost yet";
    click("cmdSave");
    files(0);
    EXPECT_EQ(stored(), "stir well");
    EXPECT_EQ(str(offer()), "");
}

TEST_P(EachScreen, TextThatIsReplacedIsOfferedComesBackUnsavedAndCanBeSaved) {
    editAt(number());
    const QString before = stored();
    type(number(), "stir well");
    loseText();
    EXPECT_NE(notes(number()).text(), "stir well");
    EXPECT_EQ(str(offer()), str(offerOf("Unsaved text of \"%1\" was replaced.")));
    EXPECT_EQ(offerButton(), "Bring back");
    files(1);
    click("cmdCancel");
    click("cmdLast");
    bringBack();
    EXPECT_EQ(window->current(), number());
    EXPECT_EQ(browsing(number()).draftTable(), GetParam().table);
    EXPECT_EQ(notes(number()).text(), "stir well");
    EXPECT_FALSE(browsing(number()).formLocked());
    EXPECT_TRUE(caption().contains(GetParam().name) && caption().endsWith("(Edit)")) << str(caption());
    EXPECT_TRUE(on("cmdSave"));
    EXPECT_EQ(str(offer()), "");
    EXPECT_EQ(stored(), before) << "nothing is saved by itself";
    files(1);
    click("cmdSave");
    EXPECT_EQ(stored(), "stir well");
    files(0);
}

TEST_P(EachScreen, CancelIsTheUsersWill) {
    editAt(number());
    type(number(), "stir well");
    keepNow(number());
    click("cmdCancel");
    files(0);
    EXPECT_EQ(str(offer()), "");
    EXPECT_FALSE(browsing(number()).hasTypedText());
}

TEST_P(EachScreen, BroughtBackAndCancelledItIsGone) {
    editAt(number());
    type(number(), "stir well");
    loseText();
    bringBack();
    click("cmdCancel");
    files(0);
    EXPECT_EQ(str(offer()), "");
}

TEST_P(EachScreen, NoAtTheClosingIsTheUsersWill) {
    editAt(number());
    type(number(), "stir well");
    keepNow(number());
    answerTheClosing(GetParam().saveQuestion, platform::Answer::No);
    window->close();
    EXPECT_EQ(programEnds, 1);
    files(0);
}

TEST_P(EachScreen, CancelAtTheClosingKeepsTheTextAndItsDraft) {
    editAt(number());
    type(number(), "stir well");
    answerTheClosing(GetParam().saveQuestion, platform::Answer::Cancel);
    window->close();
    EXPECT_EQ(programEnds, 0);
    EXPECT_EQ(notes(number()).text(), "stir well");
    EXPECT_TRUE(browsing(number()).hasTypedText());
    files(1);
}

TEST_P(EachScreen, TheNextStartOffersWhatWasLeft) {
    editAt(number());
    type(number(), "stir well");
    keepNow(number());
    startAgain();
    EXPECT_EQ(str(offer()), str(offerOf("Unsaved text of \"%1\" was kept.")));
    bringBack();
    EXPECT_EQ(window->current(), number());
    EXPECT_EQ(notes(number()).text(), "stir well");
    EXPECT_FALSE(browsing(number()).formLocked());
    click("cmdSave");
    EXPECT_EQ(stored(), "stir well");
    files(0);
}

TEST_P(EachScreen, TheTextOfADeletedRecordCanBeReadAndCopied) {
    editAt(number());
    const QString before = stored();
    type(number(), "stir well");
    keepNow(number());
    window.reset();
    sql("DELETE FROM RXs; DELETE FROM LogChem; DELETE FROM FormChem;");
    sql(u"DELETE FROM %1 WHERE %1ID = %2"_s.arg(GetParam().table, GetParam().key));
    load();
    EXPECT_EQ(str(offer()), str(offerOf("Unsaved text of \"%1\" was kept. The record has been deleted.")));
    EXPECT_EQ(offerButton(), "Read");
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_EQ(readerText("lblReason"), "The record has been deleted. The text can be read and copied.");
    EXPECT_TRUE(readerText("txtDraft").contains("stir well"));
    EXPECT_EQ(readerText("txtDraft").contains("Before: " + before), !before.isEmpty());
    support::child<QPushButton>(*reader(), "cmdCopyDraft")->click();
    EXPECT_TRUE(QApplication::clipboard()->text().contains("stir well"));
    EXPECT_NE(offer(), "") << "read is not discarded";
    discard();
    EXPECT_EQ(str(offer()), "");
    files(0);
}

TEST_P(EachScreen, WhereAReplacedValueDiffersItCanOnlyBeRead) {
    editAt(number());
    type(number(), "stir well");
    keepNow(number());
    window.reset();
    sql(u"UPDATE %1 SET %2 = 'shaken' WHERE %1ID = %3"_s.arg(GetParam().table, GetParam().notes,
                                                             GetParam().key));
    load();
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_EQ(readerText("lblReason"), "The record has changed since. The text can be read and copied.");
    EXPECT_EQ(notes(number()).text(), "shaken");
    EXPECT_TRUE(browsing(number()).formLocked());
    EXPECT_EQ(offerButton(), "Read");
    EXPECT_EQ(stored(), "shaken");
}

TEST_P(EachScreen, TextOfAnotherDatabaseCanOnlyBeRead) {
    editAt(number());
    type(number(), "stir well");
    keepNow(number());
    Draft foreign = files(1).at(0);
    window.reset();
    QDir(folder.path("drafts")).removeRecursively();
    foreign.database = "/elsewhere/other.mdb";
    foreign.identity.clear();  // so the place tells
    writeDraft(foreign);
    load();
    EXPECT_EQ(offerButton(), "Read");
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_EQ(readerText("lblReason"), "The text belongs to another database: /elsewhere/other.mdb");
    EXPECT_EQ(window->current(), formulas);
}

TEST_P(EachScreen, ADotMarksTheScreenWithTypedText) {
    editAt(number());
    EXPECT_EQ(mark(number()), "");
    type(number(), "stir well");
    EXPECT_TRUE(support::waitFor([&] { return mark(number()) == "Unsaved text"; }));
    EXPECT_TRUE(browsing(number()).hasTypedText());
    click("cmdCurrent");
    EXPECT_EQ(mark(number()), "Unsaved text") << "also while another screen is on show";
    if (number() == logs) {
        click("cmdLogs");
        click("cmdCancel");
    } else {
        click(button(number()));
    }
    EXPECT_EQ(mark(number()), "");
}

TEST_P(EachScreen, TypingItBackAsItWasLeavesNothing) {
    editAt(number());
    const QString before = notes(number()).text();
    type(number(), "x");
    keepNow(number());
    notes(number()).setText(before);
    files(0);
    EXPECT_FALSE(browsing(number()).hasTypedText());
}

TEST_P(EachScreen, KeptForTheMixerTheTextStaysInItsBox) {
    editAt(number());
    type(number(), "stir well");
    browsing(number()).keepTypedText();
    EXPECT_EQ(notes(number()).text(), "stir well");
    EXPECT_EQ(str(offer()), "");
    EXPECT_EQ(files(1).at(0).fields.at(0).typed, "stir well");
}

class RefreshedByItsTool : public EachScreen {};
INSTANTIATE_TEST_SUITE_P(Drafts, RefreshedByItsTool, testing::Values(records[0], records[1], records[3]),
                         [](const auto& each) { return std::string(each.param.table); });

TEST_P(RefreshedByItsTool, ALookAtAnotherScreenKeepsTheText) {
    editAt(number());
    const QString before = notes(number()).text();
    type(number(), "stir well");
    click("cmdCurrent");
    EXPECT_EQ(str(offer()), "") << "it still stands in its box";
    click(button(number()));
    EXPECT_EQ(notes(number()).text(), before) << "a screen shown again is refreshed";
    EXPECT_EQ(str(offer()), str(offerOf("Unsaved text of \"%1\" was replaced.")));
    bringBack();
    EXPECT_EQ(notes(number()).text(), "stir well");
}

class NamedRecords : public EachScreen {};
INSTANTIATE_TEST_SUITE_P(Drafts, NamedRecords, testing::Values(records[0], records[1], records[2]),
                         [](const auto& each) { return std::string(each.param.table); });

TEST_P(NamedRecords, UnderAnotherGuidOrLotItCanOnlyBeRead) {
    editAt(number());
    type(number(), "stir well");
    keepNow(number());
    window.reset();
    sql(u"UPDATE Formula SET frm_GUID = 'X'; UPDATE Chemical SET chm_GUID = 'X'; UPDATE Log SET log_Lot = 'X'"_s);
    load();
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_TRUE(browsing(number()).formLocked());
    EXPECT_NE(notes(number()).text(), "stir well");
}

class RefusedClosing : public EachScreen {};
INSTANTIATE_TEST_SUITE_P(Drafts, RefusedClosing, testing::Values(records[0], records[1], records[3]),
                         [](const auto& each) { return std::string(each.param.table); });

TEST_P(RefusedClosing, ASaveThatIsRefusedAtTheClosingKeepsTheText) {
    editAt(number());
    type(number(), "stir well");
    const bool isPatient = number() == patients;
    const char* name = number() == formulas ? "txtfrm_Name" : isPatient ? "txtpat_LName" : "txtchm_Name";
    control<platform::TextBox>(number(), name).clear();
    asker.alwaysAnswer(isPatient              ? "Last Name is required"
                       : number() == formulas ? "Formula Name is required"
                                              : "Chemical Name is required");
    answerTheClosing(GetParam().saveQuestion, platform::Answer::Yes);
    window->close();
    EXPECT_EQ(programEnds, 1);
    const auto kept = files(1);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].fields.size(), 2U);
}

}  // namespace
