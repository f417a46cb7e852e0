// The file of a draft: what is written reads back, and what is no whole draft gives nothing.
#include "shared/Draft.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using sorvanto::Draft;
using sorvanto::draftFile;
using sorvanto::readDraftFile;

namespace {

Draft whole() {
    Draft draft{sorvanto::newDraftId(),
                u"/data/sorvanto.mdb"_s,
                u"ab12"_s,
                {u"Formula"_s, 32767, u"F1"_s, u"Magic \"Mouthwash\" ½ ☕"_s},
                QDateTime(QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC),
                {{u"txtfrm_Name"_s, u"Formula Name"_s, u"Magic\tMouthwash\n\"2\""_s, QString()},
                 {u"grdIngredients"_s, u"Camphor: Qty"_s, u"1,"_s, u"0.5"_s, true}}};
    return draft;
}

TEST(Draft, ReadsBackWhatWasWritten) {
    const Draft written = whole();
    const auto read = readDraftFile(draftFile(written));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->database, written.database);
    EXPECT_EQ(read->identity, written.identity);
    EXPECT_EQ(read->record, written.record);
    EXPECT_EQ(read->time, written.time);
    EXPECT_EQ(read->fields, written.fields);
    EXPECT_FALSE(read->offered);
}

TEST(Draft, AFileCutOffAnywhereIsNone) {
    const QByteArray file = draftFile(whole()).trimmed();
    for (qsizetype length = 0; length < file.size(); ++length)
        ASSERT_FALSE(readDraftFile(file.left(length))) << length;
}

TEST(Draft, APartThatIsMissingOrOfAnotherKindIsNone) {
    const QByteArray file = draftFile(whole());
    const std::pair<const char*, const char*> damages[] = {
        {"\"version\": 1", "\"version\": 2"},
        {"\"key\": 32767", "\"key\": 32768"},
        {"\"key\": 32767", "\"key\": -1"},
        {"\"key\": 32767", "\"key\": \"1\""},
        {"\"table\": \"Formula\"", "\"t\": 1"},
        {"2026-03-07 14:05:09", "yesterday"},
        {"\"fields\": [", "\"other\": ["},
        {"\"typed\": \"1,\"", "\"typed\": 1"},
        {"\"control\": \"grdIngredients\"", "\"c\": 1"},
    };
    for (const auto& [part, damage] : damages) {
        ASSERT_TRUE(file.contains(part)) << part;
        EXPECT_FALSE(readDraftFile(QByteArray(file).replace(part, damage))) << damage;
    }
    EXPECT_FALSE(readDraftFile("[]"));
    EXPECT_FALSE(readDraftFile("<Draft/>"));
    EXPECT_FALSE(readDraftFile(QByteArray(1000, '[')));
}

TEST(Draft, WithoutFieldsIsNone) {
    Draft empty = whole();
    empty.fields.clear();
    EXPECT_FALSE(readDraftFile(draftFile(empty)));
}

TEST(Draft, BearsTheRecordsNameOrTheFirstTextTyped) {
    Draft draft = whole();
    EXPECT_EQ(draft.title(), draft.record.name);
    for (const char* nameless : {"", "  ", ", "}) {
        draft.record.name = QString::fromLatin1(nameless);
        EXPECT_EQ(draft.title(), "Magic Mouthwash \"2\"");
    }
}

TEST(Draft, IdsAreThirtyTwoDigitsAndNothingElse) {
    EXPECT_TRUE(sorvanto::isDraftId(sorvanto::newDraftId()));
    EXPECT_NE(sorvanto::newDraftId(), sorvanto::newDraftId());
    for (const char* other : {"", "..", "../0123456789abcdef0123456789abcd",
                              "0123456789abcdef0123456789abcdeF", "0123456789abcdef0123456789abcdef\n"})
        EXPECT_FALSE(sorvanto::isDraftId(QString::fromLatin1(other))) << other;
}

}  // namespace
