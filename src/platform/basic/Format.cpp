// Number, date and text pictures.
#include "platform/basic/Format.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Decimal.h"
#include "platform/basic/NumberPicture.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// A picture taken apart.
struct Sections {
    QString picture;
    NumberPicture positive{QString()};
    std::optional<NumberPicture> negative;  ///< nothing: the positive one with a sign
};

/// The last one is kept: lists show column after column by the same.
const Sections& sectionsOf(const QString& picture) {
    thread_local Sections last;
    if (last.picture != picture) {
        const QStringList sections = picture.split(u';');
        const QString second = sections.value(1);
        last = {picture, NumberPicture(sections.at(0)),
                second.isEmpty() ? std::nullopt : std::optional<NumberPicture>(second)};
    }
    return last;
}

template <class Number>
QString formatNumber(const Number& value, bool isNegative, const QString& picture) {
    const Sections& sections = sectionsOf(picture);
    const NumberPicture& positive = sections.positive;
    const NumberPicture& chosen = isNegative && sections.negative ? *sections.negative : positive;
    if (!chosen.hasPlaces())
        return chosen.prefix();
    const QString text = chosen.magnitude(value);
    return isNegative && !sections.negative && !positive.roundsToZero(value) ? u'-' + text : text;
}

}  // namespace

QString textInFront(const QString& picture) { return sectionsOf(picture).positive.prefix(); }

QString format(double value, const QString& picture) {
    const Decimal decimal = Decimal::fromDouble(value);
    return formatNumber(decimal, decimal.negative, picture);
}

QString format(Currency value, const QString& picture) {
    return formatNumber(value, value < Currency(), picture);
}

QString format(const QString& text, const QString& picture) {
    const QByteArray marks = trimmed(text).toUtf8();
    if (marks.isEmpty() || Decimal::numberLength(marks) != marks.size())
        return text;
    return format(toDouble(text), picture);
}

QString format(const QVariant& value, const QString& picture) {
    if (!value.isValid())
        return picture.split(u';').value(2);
    if (value.metaType() == QMetaType::fromType<Currency>())
        return format(value.value<Currency>(), picture);
    if (value.typeId() == QMetaType::QString)
        return format(value.toString(), picture);
    return format(toDouble(value), picture);
}

QString formatDate(const QDateTime& date, const QString& picture) {
    if (!date.isValid())
        throw RuntimeError(error::typeMismatch, u"Type mismatch"_s);
    QString text;
    for (qsizetype at = 0; at < picture.size();) {
        const QChar mark = picture.at(at);
        qsizetype end = at + 1;
        while (end < picture.size() && picture.at(end) == mark)
            ++end;
        const auto width = end - at;
        if (mark == u'M')
            text += QString::number(date.date().month()).rightJustified(width, u'0');
        else if (mark == u'D')
            text += QString::number(date.date().day()).rightJustified(width, u'0');
        else if (mark == u'Y')
            text += QString::number(date.date().year()).rightJustified(4, u'0').right(width);
        else
            text += picture.mid(at, width);
        at = end;
    }
    return text;
}

QString formatPlaces(const QString& text, const QString& picture) {
    QString result = picture;
    qsizetype left = text.size();
    for (qsizetype at = picture.size() - 1; at >= 0; --at) {
        if (picture.at(at) == u'@')
            result[at] = left > 0 ? text.at(--left) : QChar(u' ');
    }
    return text.left(left) + result;
}

QString formatCurrency(Currency value) {
    const QLocale locale = systemLocale();
    // The locale doesn't tell its number of decimals; the text of nothing does.
    const int zeros = static_cast<int>(locale.toCurrencyString(0.0).count(locale.zeroDigit()));
    return formatCurrency(value, std::max(zeros - 1, 0));
}

QString formatCurrency(Currency value, int decimals) {
    Decimal decimal = *Decimal::fromText(value.toText().toLatin1());
    decimal.round(decimals, Decimal::Tie::away);
    return systemLocale().toCurrencyString(toDouble(QString::fromLatin1(decimal.fixed(decimals))), QString(),
                                           decimals);
}

}  // namespace platform
