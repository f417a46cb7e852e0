#include "platform/basic/Folding.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// What is typed one way and printed another.
char16_t plainMark(char16_t mark) {
    switch (mark) {
    case u'\u2018':
    case u'\u2019':
    case u'\u02BC':
        return u'\'';
    case u'\u00A0':
    case u'\u202F':
    case u'\u2009':
        return u' ';
    case u'\u2010':
    case u'\u2011':
    case u'\u2013':
        return u'-';
    default:
        return mark;
    }
}

bool isPlain(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

}  // namespace

QString folded(const QString& text) {
    if (isPlain(text))
        return text.toLower();
    QString result;
    result.reserve(text.size());
    for (const QChar c : text.toCaseFolded().normalized(QString::NormalizationForm_KD))
        if (c == u'ß')
            result += "ss"_L1;
        else if (c.category() != QChar::Mark_NonSpacing)
            result += QChar(plainMark(c.unicode()));
    return result;
}

QStringList foldedWords(const QString& text) { return folded(text).split(u' ', Qt::SkipEmptyParts); }

}  // namespace platform
