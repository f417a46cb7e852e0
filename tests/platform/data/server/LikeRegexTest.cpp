// The expression takes for equal what the file's comparison does, on whatever pattern and text.
#include "platform/data/postgres/LikeRegex.h"

#include "TestServer.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/LikePattern.h"
#include "platform/data/StatementWriter.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace platform::postgres {
namespace {

/// Of what patterns and texts are put together: letters of several scripts, what folds in an odd way, and the signs of
/// patterns and of expressions.
QString randomText(QRandomGenerator& random, const QStringList& pieces) {
    QString text;
    for (quint32 left = random.bounded(7u); left > 0; --left)
        text += pieces.at(random.bounded(int(pieces.size())));
    return text;
}

const QStringList& letters() {
    static const QStringList all =
        u"a A b Z z k \u212A s \u017F é É ê Ê þ Þ ß ẞ σ ς Σ я Я ǅ ǆ İ ı i I Ω \u2126 µ μ 0 9 . * + ? ( ) "
        "{ } | ^ $ \\ - ! ] \n \U00010400 \U00010428 ' _ % \u4E2D"_s.split(u' ');
    return all;
}

const QStringList& signs() {
    static const QStringList all =
        letters() +
        u"% % _ [ ] [a-z] [!a-z] [A-É] [z-a] [!z-a] [!] [] [-] [a-] [\\d] [^a] [ς-ω] [k]"_s.split(u' ');
    return all;
}

struct Case {
    QString text, pattern;
};

bool likeOfFile(const Case& one) {
    const QByteArray pattern = one.pattern.toUtf8(), text = one.text.toUtf8();
    const LikePattern like({pattern.constData(), std::size_t(pattern.size())});
    return like.matches({text.constData(), std::size_t(text.size())});
}

bool isPattern(const QString& text) {
    const QByteArray pattern = text.toUtf8();
    return LikePattern({pattern.constData(), std::size_t(pattern.size())}).isValid();
}

void expectSame(const std::vector<Case>& cases) {
    QStringList questions;
    for (const Case& one : cases)
        questions << u"(%1::text ~ %2)"_s.arg(quotedText(one.text), quotedText(likeRegex(one.pattern)));
    const support::Rows answers =
        support::runOnWholeServer(u"SELECT unnest(ARRAY["_s + questions.join(u',') + u"])"_s);
    ASSERT_EQ(answers.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(answers[i].first() == "t"_L1, likeOfFile(cases[i]))
            << cases[i].text.toStdString() << " Like " << cases[i].pattern.toStdString();
}

TEST(LikeRegex, EachPartTakesTheLettersThatAFileTakes) {
    for (const QString& sign : signs()) {
        if (!isPattern(sign)) {
            EXPECT_THROW(likeRegex(sign), RuntimeError) << sign.toStdString();
            continue;
        }
        std::vector<Case> cases{{QString(), sign}};
        for (const QString& letter : letters())
            cases.push_back({letter, sign});
        expectSame(cases);
    }
}

TEST(LikeRegex, TakesForEqualWhatAFileDoes) {
    QRandomGenerator random(20261122);
    for (int round = 0; round < 40; ++round) {
        std::vector<Case> cases;
        while (cases.size() < 100) {
            const Case one{randomText(random, letters()), randomText(random, signs())};
            if (isPattern(one.pattern))
                cases.push_back(one);
            else
                EXPECT_THROW(likeRegex(one.pattern), RuntimeError) << one.pattern.toStdString();
        }
        expectSame(cases);
    }
}

}  // namespace
}  // namespace platform::postgres
