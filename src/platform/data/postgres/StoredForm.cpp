#include "platform/data/postgres/StoredForm.h"

#include "platform/basic/RuntimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

constexpr int yearDigits = 4;

/// The year before 1 is 0 in a file, and 1 BC on the server.
QByteArray dateFromServer(QByteArray date) {
    if (!date.endsWith(" BC"))
        return date;
    date.chop(3);
    const qsizetype end = date.indexOf('-');
    const int year = 1 - date.left(end).toInt();
    return (year < 0 ? "-" : "") + QByteArray::number(std::abs(year)).rightJustified(yearDigits, '0') +
           date.mid(end);
}

QByteArray dateForServer(const QByteArray& date) {
    const qsizetype end = date.indexOf('-', 1);
    const int year = date.left(end).toInt();
    if (year > 0)
        return date;
    return QByteArray::number(1 - year).rightJustified(yearDigits, '0') + date.mid(end) + " BC";
}

double realFromServer(const QByteArray& digits) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (digits.endsWith("Infinity"))
        return digits.startsWith('-') ? -infinity : infinity;
    return digits.toDouble();
}

PlainValue moneyFromServer(const QByteArray& digits) {
    bool whole = false;
    digits.toLongLong(&whole);
    return whole ? PlainValue{'i', digits} : moneyValue(realFromServer(digits));
}

[[noreturn]] void refuse(const QString& named, const QString& why) {
    throw RuntimeError(error::dataMismatch, named + u' ' + why, u"Copy"_s);
}

QByteArray textForServer(const PlainValue& value, const QString& declaredType, const QString& named) {
    if (declaredType == "BLOB"_L1)
        return "\\x" + value.bytes.toHex();
    if (value.kind == 'b')
        refuse(named, u"holds bytes that are no text"_s);
    if (declaredType == "DATETIME"_L1)
        return dateForServer(value.bytes);
    if (value.bytes.contains('\0'))
        refuse(named, u"holds a null character, which a server can't keep"_s);
    if (QByteArrayView bytes = value.bytes; !bytes.isValidUtf8())
        refuse(named, u"holds broken characters"_s);
    return value.bytes;
}

}  // namespace

PlainValue storedForm(const Result& result, int row, int column, const QString& declaredType) {
    if (result.isNull(row, column))
        return {};
    const QByteArray bytes(result.bytes(row, column).constData(), result.bytes(row, column).size());
    if (declaredType == "SMALLINT"_L1 || declaredType == "INTEGER"_L1 || declaredType == "YESNO"_L1)
        return {'i', bytes};
    if (declaredType == "DOUBLE"_L1)
        return realValue(realFromServer(bytes));
    if (declaredType == "CURRENCY"_L1)
        return moneyFromServer(bytes);
    if (declaredType == "DATETIME"_L1)
        return {'t', dateFromServer(bytes)};
    if (declaredType == "BLOB"_L1)
        return {'b', QByteArray::fromHex(bytes.mid(2))};
    return {'t', bytes};
}

QString arrayOf(const std::vector<StoredRow>& rows, std::size_t column, const QString& declaredType,
                const QString& named) {
    QByteArray all;
    for (const StoredRow& row : rows) {
        const PlainValue& value = row.at(column);
        all += all.isEmpty() ? '{' : ',';
        if (value.kind == 'n') {
            all += "NULL";
            continue;
        }
        QByteArray text = textForServer(value, declaredType, named);
        all += '"' + text.replace('\\', "\\\\").replace('"', "\\\"") + '"';
    }
    return QString::fromUtf8(all + '}');
}

}  // namespace platform::postgres
