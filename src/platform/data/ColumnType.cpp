// Declared column types and the conversion of values to them.
#include "platform/data/ColumnType.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int longTextSize = 536870910;

struct NamedKind {
    const char* name;
    FieldKind kind;
    int size;
};

constexpr NamedKind kinds[] = {
    {"TEXT", FieldKind::Text, 255},    {"LONGTEXT", FieldKind::LongText, longTextSize},
    {"SMALLINT", FieldKind::Short, 2}, {"INTEGER", FieldKind::Long, 4},
    {"DOUBLE", FieldKind::Double, 8},  {"CURRENCY", FieldKind::Money, 8},
    {"DATETIME", FieldKind::Date, 8},  {"YESNO", FieldKind::Flag, 2},
};

QVariant toFlag(const QVariant& value) {
    if (value.userType() == QMetaType::Bool)
        return value;
    if (value.userType() == QMetaType::QString) {
        const QString text = trimmed(value.toString());
        if (text.compare("true"_L1, Qt::CaseInsensitive) == 0)
            return true;
        if (text.compare("false"_L1, Qt::CaseInsensitive) == 0)
            return false;
    }
    return toDouble(value) != 0.0;
}

QVariant toDateValue(const QVariant& value) {
    if (value.userType() == QMetaType::QDateTime)
        return value;
    if (value.userType() == QMetaType::QString)
        return toDate(value.toString());
    return fromSerial(toDouble(value));
}

template <class Convert>
QVariant inRange(Convert convert) {
    try {
        return QVariant::fromValue(convert());
    } catch (const RuntimeError& failure) {
        if (failure.number() != error::overflow)
            throw;
        throw RuntimeError(error::dataMismatch, u"The number is too large for the column"_s);
    }
}

}  // namespace

ColumnType ColumnType::fromDeclaration(const QString& declared) {
    const qsizetype bracket = declared.indexOf(u'(');
    const QString name = declared.left(bracket).trimmed();
    for (const NamedKind& known : kinds) {
        if (name.compare(QLatin1String(known.name), Qt::CaseInsensitive) != 0)
            continue;
        ColumnType type{known.kind, known.size};
        if (known.kind == FieldKind::Text && bracket >= 0)
            type.size = declared.mid(bracket + 1, declared.indexOf(u')') - bracket - 1).toInt();
        return type;
    }
    return {};
}

QVariant ColumnType::convert(const QVariant& value) const {
    if (!value.isValid())
        return {};
    switch (kind) {
    case FieldKind::Text:
    case FieldKind::LongText:
        return valueText(value);
    case FieldKind::Short:
        return inRange([&] { return qint64{toInt16(value)}; });
    case FieldKind::Long:
        return inRange([&] { return qint64{toInt32(value)}; });
    case FieldKind::Double:
        return toDouble(value);
    case FieldKind::Money:
        return inRange([&] { return toCurrency(value); });
    case FieldKind::Date:
        return toDateValue(value);
    case FieldKind::Flag:
        return toFlag(value);
    case FieldKind::Computed:
        break;
    }
    return value;
}

QString sqlLiteral(const QVariant& value) {
    if (!value.isValid())
        return u"NULL"_s;
    const int type = value.userType();
    if (type == qMetaTypeId<Currency>())
        return value.value<Currency>().toText();
    if (type == QMetaType::Bool)
        return value.toBool() ? u"1"_s : u"0"_s;
    if (type == QMetaType::LongLong)
        return QString::number(value.toLongLong());
    if (type == QMetaType::Double)
        return QString::number(value.toDouble(), 'g', 17);
    const QString text = type == QMetaType::QDateTime ? storedDate(value.toDateTime()) : value.toString();
    return u'\'' + doubledApostrophes(text) + u'\'';
}

}  // namespace platform
