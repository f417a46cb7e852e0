// From values and pictures of a report to those of a spreadsheet.
#include "platform/report/CellValue.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr double firstSerial = 61;  // 1 March 1900

QString quoted(const QString& literal) {
    if (literal.isEmpty())
        return {};
    return '"'_L1 + QString(literal).remove('"'_L1) + '"'_L1;
}

}  // namespace

std::optional<double> cellNumber(const QVariant& value) {
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::Double: {
        const double number = value.toDouble();
        return std::isfinite(number) ? std::optional(number) : std::nullopt;
    }
    case QMetaType::QDateTime: {
        const double days = toSerial(value.toDateTime());
        return days >= firstSerial ? std::optional(days) : std::nullopt;
    }
    default:
        break;
    }
    if (value.userType() == qMetaTypeId<Currency>())
        return value.value<Currency>().toDouble();
    return std::nullopt;
}

QString cellText(QString text) {
    const auto changes = [](QChar c) { return c == '\r'_L1 || c == '\n'_L1 || c == '\t'_L1; };
    if (std::none_of(text.cbegin(), text.cend(), changes))
        return text;
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace('\r'_L1, '\n'_L1);
    while (text.endsWith('\n'_L1))
        text.chop(1);
    return text.replace('\t'_L1, u"   "_s);
}

QString numberFormatOf(const QString& picture) {
    const QString first = picture.section(';'_L1, 0, 0);
    qsizetype start = 0, end = first.size();
    const auto isPlace = [&](qsizetype i) { return first[i] == '#'_L1 || first[i] == '0'_L1; };
    while (start < end && !isPlace(start))
        ++start;
    if (start == end) {  // a date: letters stand, marks between them are literal
        QString format;
        for (const QChar character : first)
            format += character.isLetter() ? QString(character) : '\\'_L1 + QString(character);
        return format;
    }
    while (end > start && !isPlace(end - 1))
        --end;
    return quoted(first.left(start)) + first.mid(start, end - start) + quoted(first.mid(end));
}

}  // namespace platform
