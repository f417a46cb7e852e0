// What a report means to the pharmacist: every tag has a sentence, and known failures have their own.
#include "core/ProblemTexts.h"
#include "core/ProblemTable.h"
#include "platform/basic/RuntimeError.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
namespace error = platform::error;

QString textOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

/// The program's sources but for the failure path itself, comments left out.
QStringList sources() {
    QStringList all;
    for (const char* folder : {"/src", "/app"}) {
        QDirIterator files(QLatin1String(SORVANTO_SOURCE_DIR) + QLatin1String(folder), {"*.cpp", "*.h"},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            if (!path.endsWith("shared/Guard.h") && !path.endsWith("shared/Guard.cpp"))
                all << textOf(path).remove(QRegularExpression(u"//[^\n\"]*\n"_s));
        }
    }
    return all;
}

QStringList matches(const QString& text, const QString& pattern) {
    QStringList found;
    auto all = QRegularExpression(pattern).globalMatch(text);
    while (all.hasNext())
        found << all.next().captured(1);
    return found;
}

/// Classes that derive from the base, directly or not.
QStringList derived(const QStringList& sources, const QString& base) {
    QStringList found;
    for (const QString& source : sources) {
        if (source.contains("public " + base))
            found << matches(source, u"class (\\w+)[^;{()]*:[^;{()]*\\bpublic %1\\b"_s.arg(base));
    }
    for (const QString& direct : QStringList(found))
        found << derived(sources, direct);
    return found;
}

/// The tags of one call: its own, or those of all screens that share the procedure. None when not understood.
QStringList tagsOf(const QString& argument, const QStringList& sources) {
    if (const QStringList literal = matches(argument, u"^u?\"(\\w+:\\w+)\"(?:_s)?$"_s); !literal.isEmpty())
        return literal;
    QString base = u"BrowsingScreen"_s;
    QStringList procedure = matches(argument, u"^tag\\(u?\"(\\w+)\"(?:_s)?\\)$"_s);
    if (procedure.isEmpty()) {
        base = u"RecordScreen"_s;
        procedure = matches(argument, u"^plainClassName\\(\\*this\\) \\+ u\":(\\w+)\"_s$"_s);
    }
    QStringList tags;
    if (!procedure.isEmpty()) {
        for (const QString& screen : derived(sources, base))
            tags << screen + ':'_L1 + procedure.front();
    }
    return tags;
}

/// All tags that a report can carry, as the sources have them.
const QSet<QString>& reportTags() {
    static QSet<QString> tags;
    if (!tags.isEmpty())
        return tags;
    static const QString call =
        u"(?:\\bguarded\\(|\\breportCurrentError\\(|\\bResumeNext \\w+\\()\\s*([^,;{]+?)\\s*(?:,|\\)\\s*;)"_s;
    const QStringList all = sources();
    for (const QString& source : all) {
        for (const QString& argument : matches(source, call)) {
            const QStringList found = tagsOf(argument, all);
            EXPECT_FALSE(found.isEmpty()) << "no tag is seen in: " << qPrintable(argument);
            for (const QString& tag : found)
                tags << tag;
        }
    }
    return tags;
}

bool fits(const QString& tag, const QString& shape) {
    return QRegularExpression(QRegularExpression::wildcardToRegularExpression(shape)).match(tag).hasMatch();
}

QString said(const QString& tag, std::int32_t number, const QString& description = {},
             const QString& statement = {}) {
    return problemText({{}, description, QString::number(number), {}, tag, statement});
}

TEST(ProblemTextsTest, EveryTagHasItsSentence) {
    const QSet<QString>& tags = reportTags();
    EXPECT_GT(tags.size(), 180);
    EXPECT_TRUE(tags.contains("frmPatient:moveNext") && tags.contains("frmSorvanto:setListener") &&
                tags.contains("main:enterFolder") && tags.contains("frmMain:Form_Load"));
    for (const QString& tag : tags)
        EXPECT_TRUE(hasProblemText(tag)) << qPrintable(tag) << " has no sentence";
}

TEST(ProblemTextsTest, EveryTagOfTheTableIsCarriedByAReport) {
    const QSet<QString>& tags = reportTags();
    for (const QString& shape : problemTags())
        EXPECT_TRUE(std::any_of(tags.begin(), tags.end(), [&](const QString& tag) {
            return fits(tag, shape);
        })) << qPrintable(shape);
}

TEST(ProblemTextsTest, ASentenceIsWhole) {
    for (const QString& sentence : problemSentences()) {
        EXPECT_FALSE(sentence.contains('\'')) << "never translated: " << qPrintable(sentence);
        EXPECT_TRUE(sentence.endsWith('.') && sentence.front().isUpper()) << qPrintable(sentence);
        EXPECT_FALSE(sentence.contains("  ")) << qPrintable(sentence);
        EXPECT_LE(sentence.size(), 170) << qPrintable(sentence);
    }
}

TEST(ProblemTextsTest, TheManualHasEachKnownProblemAndCause) {
    const QString page = textOf(QLatin1String(SORVANTO_SOURCE_DIR) + u"/docs/manual/went-wrong.md"_s);
    for (const KnownProblem& known : knownProblems())
        EXPECT_TRUE(page.contains(u"| %1 |"_s.arg(QString::fromUtf8(known.sentence)))) << known.sentence;
    for (const ProblemCause& cause : problemCauses())
        EXPECT_TRUE(page.contains(u"| %1 |"_s.arg(QString::fromUtf8(cause.sentence)))) << cause.sentence;
}

TEST(ProblemTextsTest, WhatIsNotKnownIsNeverToldAsNotSaved) {
    const QString lost = u"The server can't be reached; it is not known whether the change was saved"_s;
    EXPECT_TRUE(
        said("frmFormula:saveForm", error::deviceIo, lost)
            .startsWith("The line to the server broke, and it is not known whether the change was saved."));
    EXPECT_TRUE(said("clsLog:addLog", error::deviceIo, lost)
                    .endsWith("It is kept: the panel offers it again, and looks in the log first."));
    const QString taken = u"The server can't be reached; the change was not saved"_s;
    EXPECT_EQ(
        said("frmFormula:saveForm", error::deviceIo, taken),
        "The record was not saved. What you typed is kept. The server can not be reached: look after it and the "
        "network, and try again.");
    EXPECT_TRUE(
        said("frmLog:moveNext", error::permissionDenied, "The wait for the server was ended (canceled)")
            .endsWith("You ended the wait for the server: try again when it answers."));
}

TEST(ProblemTextsTest, AFailureThatIsKnownHasASentenceOfItsOwn) {
    EXPECT_EQ(said("clsFormula:openFormula", error::statement, "No end of the text",
                   "SELECT x FROM [Formula] WHERE [frm_Name] Like 'O'Brien%'"),
              "A search text can’t hold an apostrophe: use the list’s filter, or the text before it.");
    EXPECT_TRUE(said("clsLog:addLog", error::statement, {}, "INSERT INTO  Log ( VALUES ('O'N'")
                    .startsWith("Initials can’t hold an apostrophe; the batch is kept, sign again."));
    EXPECT_TRUE(said("clsFormula:copyFormula", error::itemNotFound)
                    .startsWith("Page away and back before copying: lines were added."));
    EXPECT_TRUE(
        said("frmLog:saveForm", error::objectNotSet).startsWith("Nothing was found, so nothing was saved."));
}

TEST(ProblemTextsTest, OtherwiseItSaysWhatIsKeptThenTheCause) {
    EXPECT_EQ(
        said("frmLog:saveForm", error::diskFull, "The disk is full (database or disk is full)"),
        "The record was not saved. What you typed is kept. The disk is full: make room, and try again.");
    EXPECT_EQ(
        said("clsLog:addLog", error::permissionDenied,
             "The database file is locked by another program (database is locked)", "INSERT INTO Log"),
        "The batch is not in the log yet, or not whole. It is kept: the panel offers it again, or the next start "
        "completes it. Another program holds the database: close it there, and try again.");
    EXPECT_EQ(
        said("frmLog:printLog", error::deviceIo, "Printer HP can't be used"),
        "Nothing was printed or exported, or not all of it. The records are unchanged. The printer does not take "
        "the job: look after it, or choose another one.");
}

TEST(ProblemTextsTest, WhatNobodyForesawIsSaidAsWell) {
    EXPECT_EQ(said("frmNew:unheardOf", 77),
              "Something unforeseen happened, and the program went on. What was saved before is kept. "
              "Try again; if it comes back, start the program again. Details tell more.");
}

}  // namespace
