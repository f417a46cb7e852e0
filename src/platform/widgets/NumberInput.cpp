// The typed text is cut at its marks; then the groups decide whether it reads in exactly one way.
#include "platform/widgets/NumberInput.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = TypedNumber::Kind;

bool isBlank(QChar c) { return c.isSpace(); }

bool isApostrophe(QChar c) { return c == u'\'' || c == QChar(0x2019); }

/// One mark for the many ways to type it: any blank, any apostrophe.
QChar plainMark(QChar c) { return isBlank(c) ? QChar(u' ') : isApostrophe(c) ? QChar(u'\'') : c; }

bool allDigits(const QString& text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Whether the pieces between group marks are thousands: 1 to 3 digits without a leading zero, then threes.
Kind groupsKind(const QStringList& groups) {
    if (groups.size() == 1)
        return Kind::Number;
    const QString& first = groups.first();
    if (first.isEmpty() || first.size() > 3 || first.startsWith(u'0'))
        return Kind::NotANumber;
    for (int i = 1; i + 1 < groups.size(); ++i)
        if (groups[i].size() != 3)
            return Kind::NotANumber;
    const auto last = groups.last().size();
    return last == 3 ? Kind::Number : last < 3 ? Kind::Incomplete : Kind::NotANumber;
}

struct Marks {
    QChar decimal, group;
};

TypedNumber number(const QString& whole, const QString& fraction, QChar group, bool hasFraction) {
    const QStringList groups = whole.split(group);
    const QString digits = groups.join(QString());
    if (!allDigits(digits) || !allDigits(fraction))
        return {Kind::NotANumber, {}, 0};
    if (digits.isEmpty() && fraction.isEmpty())
        return {Kind::Incomplete, {}, 0};
    Kind kind = groupsKind(groups);
    if (kind == Kind::Incomplete && hasFraction)
        kind = Kind::NotANumber;
    if (kind != Kind::Number)
        return {kind, {}, 0};
    const QString text =
        (digits.isEmpty() ? u"0"_s : digits) + (fraction.isEmpty() ? QString() : u'.' + fraction);
    return {Kind::Number, text, static_cast<int>(fraction.size())};
}

/// "1.234" is a thousand to one reader and a bit over one to the other.
bool readsBothWays(const QString& whole, const QString& fraction) {
    return fraction.size() == 3 && !whole.isEmpty() && whole.size() <= 3 && !whole.startsWith(u'0');
}

TypedNumber unsignedNumber(const QString& text, Marks marks) {
    const QStringList atDecimal = text.split(marks.decimal);
    if (atDecimal.size() > 2)
        return {Kind::NotANumber, {}, 0};
    if (atDecimal.size() == 2)
        return number(atDecimal[0], atDecimal[1], marks.group, true);
    const QStringList atPoint = text.split(u'.');
    if (atPoint.size() == 1 || (atPoint.size() > 2 && marks.group == u'.'))
        return number(text, {}, marks.group, false);
    if (atPoint.size() > 2)
        return {Kind::NotANumber, {}, 0};
    if (marks.group == u'.' && readsBothWays(atPoint[0], atPoint[1]))
        return {Kind::Ambiguous, {}, 0};
    return number(atPoint[0], atPoint[1], marks.group == u'.' ? QChar(u',') : marks.group, true);
}

}  // namespace

TypedNumber readTypedNumber(const QString& typed, const QLocale& locale) {
    QString text = typed.trimmed();
    if (text.isEmpty())
        return {};
    std::transform(text.cbegin(), text.cend(), text.begin(), plainMark);
    const bool negative = text.startsWith(u'-') || text.startsWith(QChar(0x2212));
    if (negative || text.startsWith(u'+'))
        text.remove(0, 1);
    const QString decimal = locale.decimalPoint(), group = locale.groupSeparator();
    TypedNumber result = unsignedNumber(text, {decimal.isEmpty() ? QChar(u'.') : decimal.front(),
                                               group.isEmpty() ? QChar(u',') : plainMark(group.front())});
    const bool mixed = result.kind == Kind::NotANumber && text.contains(u'.') && text.contains(u',');
    if (mixed && std::all_of(text.cbegin(), text.cend(),
                             [](QChar c) { return c.isDigit() || c == u'.' || c == u','; }))
        result.kind = Kind::Ambiguous;
    if (negative && result.kind == Kind::Number)
        result.number.prepend(u'-');
    return result;
}

}  // namespace platform
