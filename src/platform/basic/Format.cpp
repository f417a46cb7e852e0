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

using namespace Qt::StringLiterals;

namespace platform {
namespace {

QString formatDecimal(const Decimal& value, const QString& picture) {
    const QStringList sections = picture.split(u';');
    const NumberPicture positive(sections.at(0));
    if (!value.negative)
        return positive.hasPlaces() ? positive.magnitude(value) : positive.prefix();
    const QString& second = sections.value(1);
    if (second.isEmpty()) {
        if (!positive.hasPlaces())
            return positive.prefix();
        const QString text = positive.magnitude(value);
        return positive.roundsToZero(value) ? text : u'-' + text;
    }
    const NumberPicture negative(second);
    return negative.hasPlaces() ? negative.magnitude(value) : negative.prefix();
}

}  // namespace

QString format(double value, const QString& picture) {
    return formatDecimal(Decimal::fromDouble(value), picture);
}

QString format(Currency value, const QString& picture) {
    return formatDecimal(*Decimal::fromText(value.toText().toLatin1()), picture);
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
