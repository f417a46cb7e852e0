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
    ColumnKind kind;
    int number;
    int size;
};

constexpr NamedKind kinds[] = {
    {"TEXT", ColumnKind::Text, 202, 255},  {"LONGTEXT", ColumnKind::LongText, 203, longTextSize},
    {"SMALLINT", ColumnKind::Short, 2, 2}, {"INTEGER", ColumnKind::Long, 3, 4},
    {"DOUBLE", ColumnKind::Double, 5, 8},  {"CURRENCY", ColumnKind::Money, 6, 8},
    {"DATETIME", ColumnKind::Date, 7, 8},  {"YESNO", ColumnKind::Flag, 11, 2},
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
        if (known.kind == ColumnKind::Text && bracket >= 0)
            type.size = declared.mid(bracket + 1, declared.indexOf(u')') - bracket - 1).toInt();
        return type;
    }
    return {};
}

int ColumnType::number() const {
    for (const NamedKind& known : kinds) {
        if (known.kind == kind)
            return known.number;
    }
    return 0;
}

QVariant ColumnType::convert(const QVariant& value) const {
    if (!value.isValid())
        return {};
    switch (kind) {
    case ColumnKind::Text:
    case ColumnKind::LongText:
        return valueText(value);
    case ColumnKind::Short:
        return inRange([&] { return qint64{toInt16(value)}; });
    case ColumnKind::Long:
        return inRange([&] { return qint64{toInt32(value)}; });
    case ColumnKind::Double:
        return toDouble(value);
    case ColumnKind::Money:
        return inRange([&] { return toCurrency(value); });
    case ColumnKind::Date:
        return toDateValue(value);
    case ColumnKind::Flag:
        return toFlag(value);
    case ColumnKind::Computed:
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
