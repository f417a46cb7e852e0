#include "trace/LotLikeness.h"

#include "platform/basic/Folding.h"

#include <algorithm>

namespace sorvanto {
namespace {

constexpr qsizetype leastLetters = 4;  // in shorter lots one letter is too much of the whole

/// Folding takes its time, and nearly every lot is written without any letter that needs it.
bool isPlain(const QString& lot) {
    return std::all_of(lot.begin(), lot.end(), [](QChar sign) { return sign < QChar(0x80); });
}

/// Letters and digits alone, those that look alike made one.
QString written(const QString& lot) {
    QString letters;
    letters.reserve(lot.size());
    for (QChar sign : isPlain(lot) ? lot : platform::folded(lot)) {
        if (!sign.isLetterOrNumber())
            continue;
        sign = sign.toLower();
        if (sign == u'o')
            letters += u'0';
        else if (sign == u'i' || sign == u'l')
            letters += u'1';
        else
            letters += sign;
    }
    return letters;
}

/// Whether one letter put wrong, left out, put in, or two neighbours exchanged make one text the other.
bool differByOne(QStringView one, QStringView other) {
    if (one.size() > other.size())
        std::swap(one, other);
    if (other.size() - one.size() > 1)
        return false;
    const auto [left, right] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    const QStringView rest = one.sliced(left - one.begin());
    const QStringView otherRest = other.sliced(right - other.begin());
    if (rest.size() < otherRest.size())
        return rest == otherRest.sliced(1);
    if (rest.isEmpty() || rest.sliced(1) == otherRest.sliced(1))
        return true;
    return rest.size() > 1 && rest[0] == otherRest[1] && rest[1] == otherRest[0] &&
           rest.sliced(2) == otherRest.sliced(2);
}

}  // namespace

QStringList similarLots(const QString& text, const QStringList& lots) {
    const QString meant = written(text);
    QStringList similar;
    for (const QString& lot : lots) {
        if (lot.compare(text, Qt::CaseInsensitive) == 0)
            continue;
        const QString there = written(lot);
        const bool enough = std::min(meant.size(), there.size()) >= leastLetters;
        if (!meant.isEmpty() && (there == meant || (enough && differByOne(meant, there))))
            similar << lot;
    }
    return similar;
}

}  // namespace sorvanto
