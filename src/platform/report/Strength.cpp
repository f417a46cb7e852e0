// Strengths by a pattern: number, perhaps a blank, unit, perhaps "/" and a second amount.
#include "platform/report/Strength.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

const QRegularExpression& strengthPattern() {
    static const QRegularExpression pattern(
        u"(?<![\\w.,])\\d[\\d.,]*\\s?(?:%|‰|(?:mcg|µg|μg|ug|mg|gm|g|kg|ml|l|iu|ui|ie|units?|mmol|meq|mol|"
        u"мкг|мг|г|мл|ме|ед)(?!\\w))(?:\\s?/\\s?[\\d.,]*\\s?\\w+)*"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return pattern;
}

}  // namespace

TextSpan strengthOf(const QString& name) {
    TextSpan span;
    auto matches = strengthPattern().globalMatch(name);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (span.isEmpty())
            span.start = match.capturedStart();
        span.end = match.capturedEnd();
    }
    return span;
}

qsizetype safeEnd(const QString& text, qsizetype most) {
    if (most <= 0 || most >= text.size())
        return most;
    // A word with a digit in it, or a strength of several words.
    qsizetype start = most;
    while (start > 0 && !text[start - 1].isSpace())
        --start;
    qsizetype end = most;
    while (end < text.size() && !text[end].isSpace())
        ++end;
    const QStringView word = QStringView(text).mid(start, end - start);
    const bool counts = end > most && start < most &&
                        std::any_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
    qsizetype safe = counts ? start : most;
    constexpr qsizetype longestUnit = 64;
    auto matches = strengthPattern().globalMatch(text.left(most + longestUnit));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart() < safe && safe < match.capturedEnd())
            safe = match.capturedStart();
    }
    return safe;
}

}  // namespace platform
