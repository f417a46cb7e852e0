// The typed text is cut at its marks; then the groups decide whether it reads in exactly one way.
#include "platform/widgets/NumberInput.h"

#include "platform/basic/Decimal.h"

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = TypedNumber::Kind;

bool isGroupingBlank(QChar c) {
    return c == u' ' || c == QChar(0x00A0) || c == QChar(0x202F) || c == QChar(0x2009);
}

bool isApostrophe(QChar c) { return c == u'\'' || c == QChar(0x2019); }

/// One mark for the many ways to type it: any grouping blank, any apostrophe.
QChar plainMark(QChar c) { return isGroupingBlank(c) ? QChar(u' ') : isApostrophe(c) ? QChar(u'\'') : c; }

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

bool allDigits(const QString& text) { return std::all_of(text.cbegin(), text.cend(), isDigit); }

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

TypedNumber number(const QString& whole, const QString& fraction, QChar group, bool hasFraction) {
    const QStringList groups = whole.split(whole.contains(u' ') ? QChar(u' ') : group);
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

/// "1,250" is a thousand to one reader and a bit over one to the other.
TypedNumber readBothWays(const QString& whole, const QString& fraction) {
    QString decimal = (whole.isEmpty() ? u"0"_s : whole) + u'.' + fraction;
    while (decimal.endsWith(u'0'))
        decimal.chop(1);
    if (decimal.endsWith(u'.'))
        decimal.chop(1);
    TypedNumber result{Kind::Ambiguous, {}, 0};
    if (groupsKind({whole, fraction}) == Kind::Number)
        result.readings << whole + fraction;
    result.readings << decimal;
    return result;
}

/// Point or comma where it is not the system's decimal mark and the only one of the text.
TypedNumber atForeignMark(const QString& text, QChar mark, QChar group) {
    const QString whole = text.section(mark, 0, 0), fraction = text.section(mark, 1);
    const QString digits = QString(whole).remove(u' ');
    if (fraction.size() == 3 && allDigits(digits + fraction))
        return readBothWays(digits, fraction);
    if (mark == u'.')
        return number(whole, fraction, u' ', true);
    return number(text, {}, group, false);  // "1,2" may become thousands yet
}

TypedNumber unsignedNumber(const QString& text, QChar decimal, QChar group) {
    const QStringList atDecimal = text.split(decimal);
    if (atDecimal.size() > 2)
        return {Kind::NotANumber, {}, 0};
    if (atDecimal.size() == 2)
        return number(atDecimal[0], atDecimal[1], group, true);
    if (text.count(u'.') + text.count(u',') == 1)
        return atForeignMark(text, text.contains(u'.') ? u'.' : u',', group);
    return number(text, {}, group, false);
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
    TypedNumber result = unsignedNumber(text, decimal.isEmpty() ? QChar(u'.') : decimal.front(),
                                        group.isEmpty() ? QChar(u' ') : plainMark(group.front()));
    const bool mixed = result.kind == Kind::NotANumber && text.contains(u'.') && text.contains(u',');
    if (mixed &&
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return isDigit(c) || c == u'.' || c == u','; }))
        result.kind = Kind::Ambiguous;
    if (negative && result.kind == Kind::Number)
        result.number.prepend(u'-');
    if (negative)
        for (QString& reading : result.readings)
            reading.prepend(u'-');
    return result;
}

bool differByTens(const QString& one, const QString& other) {
    const auto first = Decimal::fromText(one.toLatin1()), second = Decimal::fromText(other.toLatin1());
    if (!first || !second || first->isZero() || first->negative != second->negative)
        return false;
    const int tens = std::abs(first->point - second->point);
    return first->digits == second->digits && tens >= 1 && tens <= 3;
}

}  // namespace platform
