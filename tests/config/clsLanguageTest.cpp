// The translation store: files and names, lookups, growth, and files that are broken or can't be written.
#include "config/clsLanguage.h"

#include "platform/basic/Plurals.h"
#include "support/Hindrances.h"
#include "support/TestProgram.h"

using sorvanto::clsLanguage;

namespace {

class clsLanguageTest : public support::TestProgram {
protected:
    QString translate(const QString& text) {
        QString copy = text;
        QString result = "untouched";
        store.translate(copy, result);
        return result;
    }
    void use(const QByteArray& entries) {
        folder.write("GermanTranslation.xml",
                     "<Translations Language=\"German\">" + entries + "</Translations>");
        store.setLanguage(2);
    }
    QByteArray file() const { return folder.read("GermanTranslation.xml"); }

    clsLanguage store;
};

TEST_F(clsLanguageTest, EachNumberHasItsFile) {
    const std::pair<int, const char*> table[] = {
        {0, "English"}, {1, "Spanish"}, {2, "German"}, {3, "French"}, {4, "Russian"}, {5, "Portuguese"},
        {6, "Italian"}, {7, "Swiss"},   {8, ""},       {-1, ""},      {32767, ""}};
    for (const auto& [number, name] : table) {
        const QString fileName = QString(name) + "Translation.xml";
        QFile::remove(folder.path(fileName));
        clsLanguage language;
        language.setLanguage(static_cast<std::int16_t>(number));
        EXPECT_EQ(language.translationPath(), folder.path(fileName));
        EXPECT_EQ(folder.read(fileName), "<Translations Language=\"" + QByteArray(name) + "\"/>") << number;
    }
}

TEST_F(clsLanguageTest, EachLanguageCountsInItsWay) {
    const QString forms = "%1 one | %1 few | %1 many";
    const struct {
        std::int16_t language;
        const char *none, *one, *three, *five;
    } table[] = {{0, "0 few", "1 one", "3 few", "5 few"},   {1, "0 few", "1 one", "3 few", "5 few"},
                 {2, "0 few", "1 one", "3 few", "5 few"},   {3, "0 one", "1 one", "3 few", "5 few"},
                 {4, "0 many", "1 one", "3 few", "5 many"}, {5, "0 few", "1 one", "3 few", "5 few"},
                 {6, "0 few", "1 one", "3 few", "5 few"},   {7, "0 one", "1 one", "3 few", "5 few"}};
    for (const auto& row : table) {
        store.setLanguage(row.language);
        EXPECT_EQ(platform::counted(forms, 0), row.none) << row.language;
        EXPECT_EQ(platform::counted(forms, 1), row.one) << row.language;
        EXPECT_EQ(platform::counted(forms, 3), row.three) << row.language;
        EXPECT_EQ(platform::counted(forms, 5), row.five) << row.language;
    }
    platform::setPluralRule(platform::PluralRule::One);
}

TEST_F(clsLanguageTest, ANewTextIsAddedAndSavedAtOnce) {
    use("");
    EXPECT_EQ(translate("Formula Name"), "Formula Name");
    EXPECT_EQ(file(), "<Translations Language=\"German\"><Translate English=\"Formula Name\" "
                      "Translated=\"Formula Name\"/></Translations>");
    translate("Lot");
    EXPECT_TRUE(file().endsWith("<Translate English=\"Lot\" Translated=\"Lot\"/></Translations>"));
}

TEST_F(clsLanguageTest, AKnownTextIsTranslatedAndNothingIsWritten) {
    use("<Translate English=\"Lot\" Translated=\"Charge\"/>");
    const QByteArray before = file();
    EXPECT_EQ(translate("Lot"), "Charge");
    EXPECT_EQ(file(), before);
}

TEST_F(clsLanguageTest, WhatIsKnownIsToldAndNothingIsAdded) {
    use("<Translate English=\"Lot\" Translated=\"Charge\"/><Translate English=\"Log\"/>");
    const QByteArray before = file();
    EXPECT_EQ(store.known("Lot"), "Charge");
    for (const char* text : {"Log", "lot", "Lots", "", "Don't"})
        EXPECT_EQ(store.known(text), "") << text;
    EXPECT_EQ(file(), before);
    EXPECT_EQ(translate("Lots"), "Lots");
    EXPECT_EQ(store.known("Lots"), "Lots");
}

TEST_F(clsLanguageTest, AnEmptyTranslationShowsTheEnglishText) {
    use("<Translate English=\"Lot\" Translated=\"\"/>");
    const QByteArray before = file();
    EXPECT_EQ(translate(" Lot "), "Lot");
    EXPECT_EQ(file(), before);
}

TEST_F(clsLanguageTest, AMissingTranslationShowsTheEnglishTextSilently) {
    use("<Translate English=\"Lot\"/>");
    EXPECT_EQ(translate("Lot"), "Lot");
}

TEST_F(clsLanguageTest, TheCallersTextComesBackTrimmedOfBlanksAlone) {
    use("");
    QString text = "  Version:  ";
    QString result;
    store.translate(text, result);
    EXPECT_EQ(text, "Version:");
    EXPECT_EQ(result, "Version:");
    EXPECT_EQ(translate("About "), "About");
    EXPECT_EQ(translate("a  b"), "a  b");
    EXPECT_EQ(translate(" \ta\r "), "\ta\r");
    EXPECT_TRUE(file().contains("English=\"About\""));
}

TEST_F(clsLanguageTest, TheComparisonIsExact) {
    use("<Translate English=\"Logs\" Translated=\"Protokolle\"/>");
    EXPECT_EQ(translate("logs"), "logs");
    EXPECT_EQ(translate("Logs"), "Protokolle");
    EXPECT_TRUE(file().contains("English=\"logs\""));
    EXPECT_EQ(file().count("<Translate "), 2);
}

TEST_F(clsLanguageTest, TheFirstOfTwoEqualKeysWins) {
    use("<Translate English=\"Lot\" Translated=\"eins\"/><Translate English=\"Lot\" Translated=\"zwei\"/>");
    EXPECT_EQ(translate("Lot"), "eins");
}

TEST_F(clsLanguageTest, AnEntryAnywhereInTheDocumentIsFound) {
    use("<Group><Translate English=\"Lot\" Translated=\"tief\"/></Group>");
    EXPECT_EQ(translate("Lot"), "tief");
}

TEST_F(clsLanguageTest, NewEntriesGoUnderTheFirstTranslationsWhereverItIs) {
    folder.write("GermanTranslation.xml", "<Root><Translations/><Translations/></Root>");
    store.setLanguage(2);
    translate("Lot");
    EXPECT_EQ(file(), "<Root><Translations><Translate English=\"Lot\" Translated=\"Lot\"/></Translations>"
                      "<Translations/></Root>");
}

TEST_F(clsLanguageTest, ATextWithAnApostropheIsNeverTranslatedNorAdded) {
    use("<Translate English=\"Don't\" Translated=\"Nicht\"/>");
    const QByteArray before = file();
    EXPECT_EQ(translate("Don't"), "Don't");
    EXPECT_EQ(translate("the patient's "), "the patient's");
    EXPECT_EQ(file(), before);
}

TEST_F(clsLanguageTest, AnEmptyTextMakesOneEmptyEntry) {
    use("");
    EXPECT_EQ(translate(""), "");
    EXPECT_EQ(translate("   "), "");
    EXPECT_EQ(file(),
              "<Translations Language=\"German\"><Translate English=\"\" Translated=\"\"/></Translations>");
}

TEST_F(clsLanguageTest, KeysWithMarksAndLineEndsSurviveAStart) {
    const QStringList keys{"a & b",
                           "a < b > c",
                           "say \"x\"",
                           "first\rsecond",
                           "first\r\nsecond",
                           "tab\tbed",
                           QString::fromUtf8("Größe €")};
    use("");
    for (const QString& key : keys)
        EXPECT_EQ(translate(key), key);
    const QByteArray grown = file();
    store.setLanguage(2);
    for (const QString& key : keys)
        EXPECT_EQ(translate(key), key);
    EXPECT_EQ(file(), grown);
}

TEST_F(clsLanguageTest, AnEntryWithoutItsKeyIsPassedOverAndTheOnesBehindItAreFound) {
    use("<Translate Translated=\"verwaist\"/><Translate/><Translate English=\"Lot\" Translated=\"Charge\"/>");
    const QByteArray before = file();
    EXPECT_EQ(translate("Lot"), "Charge");
    EXPECT_EQ(file(), before) << "nothing is added a second time";
}

TEST_F(clsLanguageTest, ADeletedFileComesBackWithTheNextNewText) {
    use("<Translate English=\"Lot\" Translated=\"Charge\"/>");
    QFile::remove(folder.path("GermanTranslation.xml"));
    EXPECT_EQ(translate("Lot"), "Charge");
    EXPECT_FALSE(folder.has("GermanTranslation.xml"));
    translate("New");
    EXPECT_EQ(file().count("<Translate "), 2);
    QFile::remove(folder.path("GermanTranslation.xml"));
    store.setLanguage(2);
    EXPECT_EQ(file(), "<Translations Language=\"German\"/>");
}

TEST_F(clsLanguageTest, ABrokenFileShowsEnglishAndStaysAsItIs) {
    for (const QByteArray broken : {"garbage", "", "<Translations>", "<Other/>", "<a/><b/>"}) {
        folder.write("GermanTranslation.xml", broken);
        store.setLanguage(2);
        if (broken != "<Other/>") {
            const QString told = expectReport("clsLanguage:setLanguage").description;
            EXPECT_TRUE(told.contains("GermanTranslation.xml can't be read: ")) << told.toStdString();
        }
        EXPECT_EQ(translate("Lot"), "Lot");
        EXPECT_EQ(translate("Lot"), "Lot");
        EXPECT_EQ(file(), broken);
    }
}

TEST_F(clsLanguageTest, AFileThatCannotBeWrittenKeepsTheEntryInMemory) {
    use("");
    const QByteArray before = file();
    {
        const support::FullDisk full;
        EXPECT_EQ(translate("One"), "One");
        EXPECT_EQ(translate("Two"), "Two");
    }
    EXPECT_EQ(file(), before);
    translate("Three");
    EXPECT_EQ(file().count("<Translate "), 3);
}

TEST_F(clsLanguageTest, AFileWithoutTheRightToWriteIsSilentToo) {
    use("");
    QFile::setPermissions(folder.path("GermanTranslation.xml"), QFile::Permissions(0x4444));
    QFile::setPermissions(folder.path(), QFile::Permissions(0x5555));
    {
        const support::OrdinaryUser user;
        EXPECT_EQ(translate("One"), "One");
    }
    EXPECT_EQ(file().count("<Translate "), 0);
    QFile::setPermissions(folder.path(), QFile::Permissions(0x7700));
    QFile::setPermissions(folder.path("GermanTranslation.xml"), QFile::Permissions(0x6600));
}

TEST_F(clsLanguageTest, AFirstFileThatCannotBeWrittenIsReported) {
    {
        const support::FullDisk full;
        store.setLanguage(2);
    }
    expectReport("clsLanguage:CreateLanguages");
    EXPECT_EQ(translate("Lot"), "Lot");
    EXPECT_EQ(file().count("<Translate "), 1);
}

TEST_F(clsLanguageTest, BeforeTheLanguageIsSetATextStaysAsItIs) {
    clsLanguage fresh;
    QString text = "Lot";
    QString result;
    fresh.translate(text, result);
    EXPECT_EQ(result, "Lot");
    EXPECT_EQ(fresh.translationPath(), "");
}

TEST_F(clsLanguageTest, EnglishHasAFileLikeTheOthers) {
    store.setLanguage(0);
    translate("Lot");
    EXPECT_TRUE(folder.read("EnglishTranslation.xml").contains("English=\"Lot\""));
}

}  // namespace
