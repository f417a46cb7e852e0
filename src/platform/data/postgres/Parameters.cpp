#include "platform/data/postgres/Parameters.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/data/postgres/Types.h"

#include <QDateTime>

namespace platform::postgres {

namespace {

QByteArray textOf(const QVariant& value) {
    const int type = value.userType();
    if (type == QMetaType::Bool)
        return value.toBool() ? "1" : "0";
    if (type == QMetaType::Double)
        return QByteArray::number(value.toDouble(), 'g', 17);
    if (type == qMetaTypeId<Currency>())
        return value.value<Currency>().toText().toUtf8();
    return (type == QMetaType::QDateTime ? storedDate(value.toDateTime()) : value.toString()).toUtf8();
}

/// A whole number may be wider than the column beside which it stands.
unsigned typeOf(const QVariant& value) {
    const int type = value.userType();
    if (type == QMetaType::LongLong || type == QMetaType::Int)
        return type::int8;
    return type == QMetaType::Double ? type::float8 : 0;
}

}  // namespace

Parameters::Parameters(const std::vector<QVariant>& values) {
    m_texts.reserve(values.size());  // a short text lies in the object itself
    for (const QVariant& value : values) {
        m_texts.push_back(value.isValid() ? textOf(value) : QByteArray());
        m_values.push_back(value.isValid() ? m_texts.back().constData() : nullptr);
        m_types.push_back(typeOf(value));
    }
}

}  // namespace platform::postgres
