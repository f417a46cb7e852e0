#include "prices/PriceAmount.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Decimal;

// Longest first: none is taken for the beginning of another.
const QStringList currencies{u"SFr."_s, u"руб."_s, u"USD"_s, u"EUR"_s, u"CHF"_s, u"GBP"_s, u"BRL"_s,
                             u"RUB"_s,  u"CAD"_s,  u"AUD"_s, u"US$"_s, u"Fr."_s, u"руб"_s, u"R$"_s,
                             u"Fr"_s,   u"р."_s,   u"$"_s,   u"€"_s,   u"£"_s,   u"₽"_s};

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

bool isDigits(QStringView text) { return std::all_of(text.begin(), text.end(), isDigit); }

bool isGroupMark(QChar c, QChar otherMark) {
    return c == otherMark || c.isSpace() || c == u'\'' || c == u'\u2019';
}

/// The digits of a whole number that may be parted into groups of three; nothing for anything else.
std::optional<QString> ungrouped(QStringView whole, QChar otherMark) {
    if (isDigits(whole))
        return whole.toString();
    const auto mark =
        std::find_if(whole.begin(), whole.end(), [&](QChar c) { return isGroupMark(c, otherMark); });
    if (mark == whole.end())
        return std::nullopt;
    const QList<QStringView> groups = whole.split(*mark);
    const QStringView first = groups.front();
    if (first.isEmpty() || first.size() > 3 || first.startsWith(u'0') || !isDigits(first))
        return std::nullopt;
    QString digits = first.toString();
    for (const QStringView group : groups.sliced(1)) {
        if (group.size() != 3 || !isDigits(group))
            return std::nullopt;
        digits += group;
    }
    return digits;
}

QString numberText(const PriceCell& cell, bool isPack) {
    if (cell.number)
        return {};
    return isPack ? packText(cell.text).value_or(PackText{}).number : priceText(cell.text);
}

}  // namespace

std::optional<PackText> packText(const QString& text) {
    const QString whole = text.trimmed();
    const auto start =
        std::find_if(whole.begin(), whole.end(), [](QChar c) { return c.isLetter() || c == u'%'; });
    const auto unitAt = std::distance(whole.begin(), start);
    const PackText pack{whole.left(unitAt).trimmed(), whole.mid(unitAt)};
    const auto inNumber = [](QChar c) { return isDigit(c) || isGroupMark(c, u'.') || c == u','; };
    const auto inUnit = [](QChar c) { return c.isLetter() || c == u'.'; };
    const bool isNumber =
        pack.number.isEmpty() ||
        (isDigit(pack.number.front()) && std::all_of(pack.number.begin(), pack.number.end(), inNumber));
    const bool isUnit = pack.unit == "%"_L1 || std::all_of(pack.unit.begin(), pack.unit.end(), inUnit);
    return isNumber && isUnit ? std::optional(pack) : std::nullopt;
}

QString priceText(const QString& text) {
    QString number = text.trimmed();
    if (number.isEmpty() || (isDigit(number.front()) && isDigit(number.back())))
        return number;
    for (const QString& currency : currencies) {
        if (number.startsWith(currency, Qt::CaseInsensitive))
            return number.mid(currency.size()).trimmed();
        if (number.endsWith(currency, Qt::CaseInsensitive))
            return number.chopped(currency.size()).trimmed();
    }
    return number;
}

std::optional<Decimal> amountIn(const QString& plain) { return Decimal::fromText(plain.toLatin1()); }

std::optional<Decimal> amountIn(const QString& text, DecimalMark mark) {
    const bool negative = text.startsWith(u'-') || text.startsWith(u'\u2212');
    const QStringView number = QStringView(text).mid(negative ? 1 : 0);
    const QChar decimal = mark == DecimalMark::point ? u'.' : u',',
                other = mark == DecimalMark::point ? u',' : u'.';
    const qsizetype end = number.indexOf(decimal);
    const QStringView fraction = end < 0 ? QStringView() : number.mid(end + 1);
    const auto whole = ungrouped(end < 0 ? number : number.left(end), other);
    if (!whole || !isDigits(fraction) || (whole->isEmpty() && fraction.isEmpty()))
        return std::nullopt;
    return amountIn((negative ? u"-0"_s : u"0"_s) + *whole + u'.' + fraction.toString() + u'0');
}

MarkFinding detectedMark(const PriceTable& table, int firstRow, int column, bool isPack) {
    QString points, commas, doubtful;  // the first number that reads this way alone
    const auto note = [](QString& example, const QString& number) {
        if (example.isEmpty())
            example = number;
    };
    for (auto row = static_cast<std::size_t>(firstRow); row < table.rows.size(); ++row) {
        if (static_cast<std::size_t>(column) >= table.rows[row].size())
            continue;
        const QString number = numberText(table.rows[row][static_cast<std::size_t>(column)], isPack);
        if (!number.contains(u'.') && !number.contains(u','))
            continue;  // reads the same in both
        const auto byPoint = amountIn(number, DecimalMark::point),
                   byComma = amountIn(number, DecimalMark::comma);
        if (byPoint && !byComma)
            note(points, number);
        else if (byComma && !byPoint)
            note(commas, number);
        else if (byPoint)
            note(doubtful, number);
    }
    if (!points.isEmpty() && !commas.isEmpty())
        return {std::nullopt, points + u" / "_s + commas};
    if (!commas.isEmpty())
        return {DecimalMark::comma, commas};
    if (!points.isEmpty())
        return {DecimalMark::point, points};
    return doubtful.isEmpty() ? MarkFinding{DecimalMark::point, {}} : MarkFinding{std::nullopt, doubtful};
}

}  // namespace sorvanto
