// Every text that the program asks for while all of it is on show stands in every delivered file. The store
// itself is the recorder: it begins without a file and writes down whatever it is asked for.
#include "LanguageTour.h"

#include "mixer/PanelTexts.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <iostream>

namespace languages {
namespace {

class CompleteTest : public LanguageTour {
protected:
    int language() const override { return 0; }
    bool hasFile() const override { return false; }
    void look(QWidget&, const QString&) override {}

    /// The program beside another one of it.
    void startTwice() {
        sorvanto::Parts parts = sorvanto::realParts(context);
        parts.seekPreviousInstance = nullptr;
        parts.previousInstance = [] { return true; };
        window.reset();
        load(std::move(parts));
    }
    QSet<QString> asked() const {
        QSet<QString> keys;
        for (const Entry& entry : entries(folder.path("EnglishTranslation.xml")))
            keys << entry.english;
        for (const QString& key : sorvanto::PanelTexts::keys())
            keys << key;
        return keys;
    }
};

/// Texts that are the same in both languages; not a fault, but worth a translator's look.
QStringList same(const QMap<QString, QString>& file) {
    QStringList keys;
    for (auto entry = file.begin(); entry != file.end(); ++entry) {
        if (entry.key() == entry.value())
            keys << entry.key();
    }
    return keys;
}

void tell(const char* what, const QStringList& keys) {
    if (!keys.isEmpty())
        std::cout << "  " << what << ", " << keys.size() << ": " << str(keys.join(" | ").simplified())
                  << "\n";
}

TEST_F(CompleteTest, EveryTextAskedForStandsInEveryFile) {
    ASSERT_NO_FATAL_FAILURE(tour());
    ASSERT_NO_FATAL_FAILURE(startTwice());
    const QSet<QString> keys = asked();
    EXPECT_GT(keys.size(), 330) << "the tour has left out windows";
    for (int number = 0; number < count; ++number) {
        const QMap<QString, QString> file = delivered(number);
        ASSERT_FALSE(file.isEmpty()) << names[number];
        QStringList missing, unused, blank;
        for (const QString& key : keys) {
            if (!key.isEmpty() && !file.contains(key))
                missing << key;
        }
        for (auto entry = file.begin(); entry != file.end(); ++entry) {
            if (!keys.contains(entry.key()))
                unused << entry.key();
            if (entry.value().trimmed().isEmpty())
                blank << entry.key();
        }
        EXPECT_TRUE(missing.isEmpty()) << names[number] << " lacks: " << str(missing.join(" | "));
        EXPECT_TRUE(blank.isEmpty()) << names[number] << " has no word for: " << str(blank.join(" | "));
        std::cout << names[number] << ": " << file.size() << " texts\n";
        tell("not asked for on the tour", unused);
        if (number != 0)
            tell("as in English", same(file));
    }
}

class DeliveredFileTest : public ::testing::TestWithParam<int> {};

TEST_P(DeliveredFileTest, HasTheFormOfTheStoreAndEachKeyOnce) {
    const QByteArray content = deliveredFile(GetParam());
    EXPECT_TRUE(content.startsWith(QByteArray("<Translations Language=\"") + names[GetParam()] + "\">"));
    EXPECT_FALSE(content.contains("<?xml"));
    QSet<QString> keys;
    for (const Entry& entry : entries(deliveredPath(GetParam()))) {
        EXPECT_FALSE(keys.contains(entry.english)) << "twice: " << str(entry.english);
        keys << entry.english;
    }
    EXPECT_EQ(keys, [] {
        const auto all = delivered(0).keys();
        return QSet<QString>(all.begin(), all.end());
    }());
}

// An apostrophe in a key shuts it out of the store; a bracket ends a column's name in a statement.
TEST_P(DeliveredFileTest, KeepsWhatTheProgramRestsOn) {
    static const QRegularExpression part("%\\d");
    const auto parts = [](const QString& text) {
        QStringList found;
        for (auto matches = part.globalMatch(text); matches.hasNext();)
            found << matches.next().captured();
        found.removeDuplicates();
        found.sort();
        return found;
    };
    for (const Entry& entry : entries(deliveredPath(GetParam()))) {
        EXPECT_FALSE(entry.english.contains('\'')) << str(entry.english);
        EXPECT_EQ(entry.english, entry.english.trimmed());
        EXPECT_FALSE(entry.translated.contains(']')) << str(entry.translated);
        EXPECT_EQ(parts(entry.english), parts(entry.translated)) << str(entry.translated);
        EXPECT_EQ(entry.english.count('&'), entry.translated.count('&')) << str(entry.translated);
        EXPECT_EQ(entry.english.count('\r'), entry.translated.count('\r')) << str(entry.translated);
    }
}

// They stand in one statement; two of one name, or a full stop in one, would make columns of it that can't be
// told apart.
TEST_P(DeliveredFileTest, NamesEachColumnOfAListDifferently) {
    const QStringList lists[] = {
        {"Name", "Description", "Strength", "Units", "Instructions", "Quantity", "Jar", "Form", "NDC", "AWP",
         "UniqueID", "Mix"},
        {"Name", "Units", "Lot", "NDC", "Cost", "AWP", "Notes", "Form", "UniqueID", "Supplier"},
        {"LastName", "FirstName", "Address", "Address2", "City", "State", "Zip", "Country", "BirthDate",
         "Phone", "Fax", "Notes"},
        {"Lot", "DateLogged", "FormulaName", "Quantity", "JarSize", "Cost", "AWP", "NDC", "Initials",
         "Verified", "Results", "Mix", "Version", "Notes", "Description", "Strength", "Units",
         "FormulaType"}};
    const QMap<QString, QString> file = delivered(GetParam());
    for (const QStringList& list : lists) {
        QStringList columns;
        for (const QString& key : list) {
            ASSERT_TRUE(file.contains(key)) << str(key);
            const QString column = file.value(key).toLower();
            EXPECT_FALSE(columns.contains(column)) << str(column);
            EXPECT_FALSE(column.contains('.')) << str(column);
            columns << column;
        }
    }
}

TEST_P(DeliveredFileTest, HasTheFiveLinesOfTheWorksheet) {
    const QString warning = delivered(GetParam()).value("Worksheet Warning");
    EXPECT_EQ(warning.count('\n'), 5);
    EXPECT_TRUE(warning.endsWith('\n'));
}

INSTANTIATE_TEST_SUITE_P(Languages, DeliveredFileTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

// Neither start nor tour has anything to add to a delivered file.
class SettledTest : public LanguageTour {
protected:
    int language() const override { return 2; }
    void look(QWidget&, const QString&) override {}
};

TEST_F(SettledTest, TheTourWritesNothingIntoADeliveredFile) {
    ASSERT_NO_FATAL_FAILURE(tour());
    QFile file(folder.path("GermanTranslation.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == deliveredFile(2)) << "the file was written";
}

}  // namespace
}  // namespace languages
