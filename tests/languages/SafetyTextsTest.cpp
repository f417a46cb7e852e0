// The texts on which a batch or a hand depends stay as they are: each change of one is meant, and says why.
#include "Golden.h"
#include "LanguageFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

const char* const keys[] = {
    "GR",
    "GMS",
    "MCG",
    "MGS",
    "IU",
    "EACH",
    "QS",
    "Active",
    "Put aside",
    "Put aside the mix of %1, lot %2? It will not be offered for the log again.",
    "Log Formula",
    "Not in the log yet",
    "%1: ended without results",
    "%1: its results are fetched when mixer %2 answers",
    "Stop here is not the emergency stop of the mixer.",
    "The emergency stop is pressed. Release it and press Start.",
    "The emergency stop is still pressed. Release it and press OK.",
    "The emergency stop was pressed and the mix has ended without results. Release it, press OK, and decide what "
    "becomes of the jar.",
    "The lid is open. Close it and press Start.",
    "The lid is open. Close it and press Resume.",
    "The lid was opened. Close it and press Resume, or press Stop.",
    "The motor was overloaded and the mix has ended without results. Take the jar out, look for lumps, and press OK.",
    "The mixer lost its power or restarted, and the mix has ended without results. Press OK, and decide what becomes "
    "of the jar.",
    "The mixer is gone in the midst of the mix. Look after it: it may go on mixing by itself. When it answers again, "
    "its results are fetched.",
    "The mixer has stored another programme than it was sent. Press Load again.",
    "The results could not be written to the journal: %1 Log the mix now.",
    "This can be read in two ways. Leave out the thousands mark and use \"%1\" for decimals.",
    "Worksheet Warning",
};

QString safetyTexts() {
    std::vector<QMap<QString, QString>> files;
    for (int language = 0; language < count; ++language)
        files.push_back(delivered(language));
    QString text;
    for (const char* key : keys) {
        text += u"%1\n"_s.arg(QLatin1String(key));
        for (int language = 0; language < count; ++language) {
            QString shown = files[static_cast<std::size_t>(language)].value(QLatin1String(key));
            EXPECT_FALSE(shown.isEmpty()) << names[language] << ": " << key;
            text += u"  %1: %2\n"_s.arg(QLatin1String(names[language]), shown.replace('\n'_L1, " / "_L1));
        }
    }
    return text;
}

TEST(SafetyTexts, AreThoseThatWereAgreed) { support::expectGolden(u"languages/safety.txt"_s, safetyTexts()); }

TEST(SafetyTexts, EachChangeSaysWhy) {
    QFile file(u"%1/tests/golden/languages/safety_changes.txt"_s.arg(QLatin1String(SORVANTO_SOURCE_DIR)));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n'_L1, Qt::SkipEmptyParts);
    const QByteArray hash = QCryptographicHash::hash(safetyTexts().toUtf8(), QCryptographicHash::Sha256);
    const QString mark = QString::fromLatin1(hash.toHex().first(12));
    EXPECT_TRUE(lines.last().startsWith(mark + ' '_L1) && lines.last().split(' '_L1).size() > 4)
        << "the last line of safety_changes.txt has to be: " << qPrintable(mark) << " and the reason";
}

}  // namespace
}  // namespace languages
