// Several drafts on offer, drafts of copies and of other databases, and what becomes of an offer meanwhile.
#include "DraftsTest.h"
#include "Heard.h"

#include "platform/basic/Dates.h"
#include "shared/databaseInUse.h"

#include <QToolButton>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class DraftOffersTest : public DraftsTest {
protected:
    /// With the identity that an update gives a file.
    void seed() override {
        DraftsTest::seed();
        place().giveIdentity(databasePath());
    }
    /// On the first patient, one after the other; the last one is the newest.
    void loseTexts(const QStringList& texts) {
        editAt(patients);
        for (const QString& text : texts) {
            type(patients, text);
            click("cmdPatients");
            clock.advance(1);
        }
    }
    QString count() const {
        const auto* label = support::child<QLabel>(strip(), "lblDraftCount");
        return label->isVisible() ? label->text() : QString();
    }
    QToolButton& arrow(const char* name) const { return *support::child<QToolButton>(strip(), name); }
    QPushButton& discardAll() const { return *support::child<QPushButton>(strip(), "cmdDiscardAll"); }
    QString identity() const { return sqlText("SELECT fid_Identity FROM FileIdentity"); }
    void writeDraftOf(const QString& database, const QString& identityOfIt) {
        Draft draft{.id = {},
                    .database = database,
                    .identity = identityOfIt,
                    .record = {u"Patient"_s, 1, {}, u"Doe, Jane"_s},
                    .time = platform::now(),
                    .fields = {}};
        draft.fields.push_back({u"txtpat_City"_s, u"City"_s, u"Oslo"_s,
                                sqlText("SELECT pat_City FROM Patient WHERE PatientID = 1")});
        writeDraft(draft);
    }
};

TEST_F(DraftOffersTest, OneOfferSaysNothingOfOthers) {
    loseTexts({"first"});
    EXPECT_NE(str(offer()), "");
    EXPECT_EQ(str(count()), "");
    EXPECT_FALSE(discardAll().isVisible());
    EXPECT_FALSE(arrow("cmdOlderDraft").isVisible());
}

TEST_F(DraftOffersTest, ScreenReadersSayTheOffer) {
    const support::Heard heard;
    loseTexts({"first"});
    EXPECT_EQ(heard.all().filter(offer()).size(), 1) << str(heard.all().join('|'));
}

TEST_F(DraftOffersTest, SeveralAreCountedAndLedThrough) {
    loseTexts({"first", "second", "third"});
    EXPECT_EQ(str(count()), "1 of 3");
    EXPECT_FALSE(arrow("cmdNewerDraft").isEnabled());
    arrow("cmdOlderDraft").click();
    EXPECT_EQ(str(count()), "2 of 3");
    click("cmdPatients");
    EXPECT_EQ(str(count()), "2 of 3") << "a click changes nothing";
    arrow("cmdOlderDraft").click();
    EXPECT_EQ(str(count()), "3 of 3");
    EXPECT_FALSE(arrow("cmdOlderDraft").isEnabled());
    discard();
    EXPECT_EQ(str(count()), "2 of 2");
    arrow("cmdNewerDraft").click();
    arrow("cmdOlderDraft").click();
    bringBack();
    EXPECT_EQ(notes(patients).text(), "second");
    EXPECT_EQ(str(count()), "");
}

TEST_F(DraftOffersTest, ATextThatIsReplacedNowComesBeforeTheOneLookedAt) {
    loseTexts({"first", "second"});
    arrow("cmdOlderDraft").click();
    type(patients, "third");
    click("cmdPatients");
    EXPECT_EQ(str(count()), "1 of 3");
    bringBack();
    EXPECT_EQ(notes(patients).text(), "third");
}

TEST_F(DraftOffersTest, AllAreDiscardedAfterAQuestion) {
    loseTexts({"first", "second"});
    const platform::BoxStyle style{platform::Buttons::YesNo, platform::Icon::Exclamation, true, false};
    const QString question = "Discard all unsaved texts? They can not be brought back then.";
    asker.expectMsgBox(question, style, "Sorvanto Control Panel", platform::Answer::No);
    discardAll().click();
    EXPECT_EQ(str(count()), "1 of 2");
    asker.expectMsgBox(question, style, "Sorvanto Control Panel", platform::Answer::Yes);
    discardAll().click();
    EXPECT_EQ(str(offer()), "");
    files(0);
}

TEST_F(DraftOffersTest, ARecordDeletedMeanwhileIsSaidAtOnce) {
    loseTexts({"first"});
    EXPECT_EQ(str(offer()), "Unsaved text of \"Doe, Jane\" was replaced.");
    click("cmdCancel");
    sql("DELETE FROM RXs; DELETE FROM Patient WHERE PatientID = 1");
    click("cmdFormulas");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Doe, Jane\" was kept. The record has been deleted.");
    EXPECT_EQ(str(offerButton()), "Read");
}

TEST_F(DraftOffersTest, WhatHasNeitherNameNorTextGoesByItsScreen) {
    openAt(formulas);
    click("cmdNew");
    control<QLineEdit>(formulas, "txtfrm_Units").clear();
    click("cmdFormulas");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Formulas\" was replaced.");
}

TEST_F(DraftOffersTest, ADraftBearsTheIdentityOfItsDatabase) {
    editAt(patients);
    type(patients, "stir well");
    const auto kept = files(1);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].identity.size(), 32);
    EXPECT_EQ(str(kept[0].identity), str(identity()));
}

TEST_F(DraftOffersTest, ADatabaseThatWasMovedIsTheSame) {
    writeDraftOf("/elsewhere/pharmacy.mdb", identity());
    load();
    EXPECT_EQ(str(offerButton()), "Bring back");
    bringBack();
    EXPECT_EQ(str(text(patients, "txtpat_City")), "Oslo");
}

TEST_F(DraftOffersTest, AnotherDatabaseInTheSamePlaceIsAnother) {
    load();
    const QString path = databaseInUse(context);
    window.reset();
    writeDraftOf(path, u"0123456789abcdef"_s.repeated(2));
    load();
    EXPECT_EQ(str(offerButton()), "Read");
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_TRUE(readerText("lblReason").contains("belongs to another database"));
    EXPECT_NE(str(text(patients, "txtpat_City")), "Oslo");
}

TEST_F(DraftOffersTest, WithoutAnIdentityThePathTells) {
    load();
    const QString path = databaseInUse(context);
    window.reset();
    writeDraftOf(path, {});
    load();
    EXPECT_EQ(str(offerButton()), "Bring back");
    discard();
    window.reset();
    writeDraftOf("/elsewhere/pharmacy.mdb", {});
    load();
    EXPECT_EQ(str(offerButton()), "Read");
}

}  // namespace
