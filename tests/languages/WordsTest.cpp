// What a pharmacist reads: units that can't be taken for one another, one word for one meaning, marks as the
// language sets them, buttons called by their captions.
#include "LanguageFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

/// Rows of a table in data/, each by the heads of its columns.
std::vector<QMap<QString, QString>> table(const char* name) {
    QFile file(u"%1/tests/languages/data/%2"_s.arg(QLatin1String(SORVANTO_SOURCE_DIR), QLatin1String(name)));
    std::vector<QMap<QString, QString>> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    QStringList heads;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n'_L1, Qt::SkipEmptyParts)) {
        if (line.startsWith('#'_L1))
            continue;
        const QStringList cells = line.split('\t'_L1);
        if (heads.isEmpty()) {
            heads = cells;
            continue;
        }
        EXPECT_EQ(cells.size(), heads.size()) << qPrintable(line);
        QMap<QString, QString> row;
        for (qsizetype i = 0; i < std::min(cells.size(), heads.size()); ++i)
            row.insert(heads.at(i), cells.at(i));
        rows.push_back(row);
    }
    return rows;
}

QRegularExpression pattern(const QString& text) {
    QRegularExpression made(text, QRegularExpression::CaseInsensitiveOption |
                                      QRegularExpression::UseUnicodePropertiesOption);
    EXPECT_TRUE(made.isValid()) << qPrintable(text);
    return made;
}

/// Every language but English, whose texts are the keys.
class WordsTest : public ::testing::TestWithParam<int> {
protected:
    QMap<QString, QString> file = delivered(GetParam());
    QString language = QLatin1String(names[GetParam()]);

    void expectApart(const QStringList& keys, const std::vector<QStringList>& same) const {
        constexpr int enough = 3;  // a shorter beginning says nothing
        for (const QString& a : keys) {
            for (const QString& b : keys) {
                const bool oneMeaning = std::any_of(same.begin(), same.end(), [&](const QStringList& set) {
                    return set.contains(a) && set.contains(b);
                });
                if (a == b || oneMeaning)
                    continue;
                const QString shorter = file.value(a), longer = file.value(b);
                EXPECT_FALSE(shorter == longer || (shorter.size() >= enough && longer.startsWith(shorter)))
                    << qPrintable(a + ": " + shorter + ", " + b + ": " + longer);
            }
        }
    }
};

TEST_P(WordsTest, UnitsAndFormsAreApartFromTheirNeighbours) {
    expectApart({"AMP", "CAPS", "CC", "DROP", "EACH", "GMS", "GR", "GTTS", "IU", "LIT", "LITR", "MCG", "MEQ",
                 "MGS", "MLS", "TABS", "VIAL"},
                {{"DROP", "GTTS"}, {"LIT", "LITR"}});
    expectApart({"BOTTLE", "CAP", "CRM", "CRYS", "CUBE", "FLAKE", "GEL", "GRAM", "INJ", "LIQU", "PWD",
                 "SOLID", "SOLN", "SUSP", "TAB", "UNG"},
                {});
}

TEST_P(WordsTest, NoTextReadsAsSomethingElse) {
    const auto rows = table("readings.tsv");
    EXPECT_GT(rows.size(), 15U);
    for (const auto& row : rows) {
        const QString text = file.value(row["key"]);
        EXPECT_FALSE(text.isEmpty()) << qPrintable(row["key"]);
        EXPECT_FALSE(pattern(row["avoid"]).match(text).hasMatch())
            << qPrintable(row["key"] + ": " + text + ", " + row["why"]);
    }
}

TEST_P(WordsTest, OneMeaningHasOneWord) {
    const auto rows = table("terms.tsv");
    EXPECT_GE(rows.size(), 20U);
    for (const auto& row : rows) {
        const QRegularExpression keys = pattern(row["keys"]), word = pattern(row[language]);
        int count = 0;
        for (auto entry = file.begin(); entry != file.end(); ++entry) {
            if (!keys.match(withoutKey(entry.key())).hasMatch())
                continue;
            ++count;
            EXPECT_TRUE(word.match(withoutKey(entry.value())).hasMatch())
                << qPrintable(row["term"] + ", " + entry.key() + ": " + entry.value());
        }
        EXPECT_GT(count, 0) << qPrintable(row["term"]) << " has no text";
    }
}

TEST_P(WordsTest, MarksAreThoseOfTheLanguage) {
    const bool french = language == "French"_L1 || language == "Swiss"_L1;
    const QRegularExpression blankBeforeMark(u" [:;?!»]|« "_s), noBlank(u"[^\\s\u00a0][;?!»]|«[^\u00a0]"_s);
    for (auto entry = file.begin(); entry != file.end(); ++entry) {
        const QString& text = entry.value();
        EXPECT_FALSE(text.contains('"'_L1)) << qPrintable(text);
        EXPECT_FALSE(text.contains('\''_L1)) << qPrintable(text);
        EXPECT_FALSE(text.contains("..."_L1)) << qPrintable(text);
        EXPECT_FALSE(text.contains(" - "_L1) || text.contains(" -- "_L1)) << qPrintable(text);
        EXPECT_EQ(text.contains(u'„'), text.contains(u'“')) << qPrintable(text);
        EXPECT_EQ(text.contains(u'«'), text.contains(u'»')) << qPrintable(text);
        EXPECT_FALSE(text.contains(language == "German"_L1 ? u'«' : u'„')) << qPrintable(text);
        EXPECT_FALSE(blankBeforeMark.match(text).hasMatch()) << qPrintable(text);
        if (french) {
            EXPECT_FALSE(noBlank.match(text).hasMatch()) << qPrintable(text);
        }
    }
}

TEST_P(WordsTest, MessagesCallButtonsByTheirCaptions) {
    const std::pair<const char*, const char*> buttons[] = {
        {"press Start", "Start"},        {"press Resume", "Resume"},
        {"press Stop", "Stop"},          {"press OK", "OK"},
        {"clicking OK", "OK"},           {"Press Load again", "Load again"},
        {"press Make", "&Make Formula"}, {"Stop here", "Stop"}};
    for (const auto& [words, button] : buttons) {
        int count = 0;
        for (auto entry = file.begin(); entry != file.end(); ++entry) {
            if (!entry.key().contains(QLatin1String(words)))
                continue;
            ++count;
            const QString caption = QRegularExpression::escape(withoutKey(file.value(QLatin1String(button))));
            EXPECT_TRUE(pattern(u"[„«]\u00a0?%1\u00a0?[“»]"_s.arg(caption)).match(entry.value()).hasMatch())
                << qPrintable(entry.value());
        }
        EXPECT_GT(count, 0) << words;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, WordsTest, ::testing::Range(1, count),
                         [](const auto& row) { return std::string(names[row.param]); });

}  // namespace
}  // namespace languages
