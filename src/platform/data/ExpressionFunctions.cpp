// The arithmetic of the dialect: floating division, whole division, powers, joined texts; NULL goes through.
#include "platform/data/ExpressionFunctions.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Decimal.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ColumnType.h"

#include <QVariant>
#include <cmath>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

struct KnownError {
    std::int32_t number;
    const char* message;
};

constexpr KnownError knownErrors[] = {{error::divisionByZero, "Division by zero"},
                                      {error::overflow, "Overflow"},
                                      {error::dataMismatch, "Data type mismatch in expression"}};

[[noreturn]] void mismatch() { throw RuntimeError(error::dataMismatch, u"Data type mismatch"_s); }

QVariant valueOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qint64{sqlite3_value_int64(value)};
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    default:
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return QString::fromUtf8(bytes, sqlite3_value_bytes(value));
    }
}

bool isText(const QVariant& value) { return value.typeId() == QMetaType::QString; }

/// Dates are texts in the file, numbers in a calculation.
double numberOf(const QVariant& value) {
    if (isText(value)) {
        if (const QDateTime date = fromStoredDate(value.toString()); date.isValid())
            return toSerial(date);
    }
    return toDouble(value);
}

std::int64_t wholeOf(const QVariant& value) { return toInt32(numberOf(value)); }

QVariant finite(double value) {
    if (std::isnan(value))
        throw RuntimeError(error::invalidProcedureCall, u"Invalid procedure call"_s);
    if (std::isinf(value))
        throw RuntimeError(error::overflow, u"Overflow"_s);
    return value;
}

void refuseZero(bool isZero) {
    if (isZero)
        throw RuntimeError(error::divisionByZero, u"Division by zero"_s);
}

/// Whole numbers stay exact as long as they fit.
QVariant sum(const QVariant& a, QChar sign, const QVariant& b) {
    if (a.typeId() == QMetaType::LongLong && b.typeId() == QMetaType::LongLong) {
        std::int64_t result = 0;
        const std::int64_t left = a.toLongLong(), right = b.toLongLong();
        const bool over = sign == u'+'   ? __builtin_add_overflow(left, right, &result)
                          : sign == u'-' ? __builtin_sub_overflow(left, right, &result)
                                         : __builtin_mul_overflow(left, right, &result);
        if (!over)
            return qint64{result};
    }
    const double left = numberOf(a), right = numberOf(b);
    return finite(sign == u'+' ? left + right : sign == u'-' ? left - right : left * right);
}

QVariant power(double base, double exponent) {
    refuseZero(base == 0 && exponent < 0);
    return finite(std::pow(base, exponent));
}

QVariant wholeDivision(QChar sign, const QVariant& a, const QVariant& b) {
    const std::int64_t left = wholeOf(a), right = wholeOf(b);
    refuseZero(right == 0);
    return qint64{sign == u'\\' ? left / right : left % right};
}

QVariant calculated(const QVariant& a, QChar sign, const QVariant& b) {
    if (sign == u'&')
        return a.isValid() || b.isValid() ? QVariant(nullText(a) + nullText(b)) : QVariant();
    if (!a.isValid() || !b.isValid())
        return {};
    switch (sign.unicode()) {
    case u'+':
        if (isText(a) && isText(b))
            return a.toString() + b.toString();
        return sum(a, sign, b);
    case u'-':
    case u'*':
        return sum(a, sign, b);
    case u'/': {
        const double divisor = numberOf(b);
        return finite(quotient(numberOf(a), divisor));
    }
    case u'^':
        return power(numberOf(a), numberOf(b));
    default:
        return wholeDivision(sign, a, b);
    }
}

QVariant compared(const QVariant& a, const QVariant& b) {
    if (!a.isValid() || !b.isValid())
        return {};
    if (isText(a) != isText(b))
        mismatch();
    if (isText(a))
        return qint64{qBound(-1, a.toString().compare(b.toString(), Qt::CaseInsensitive), 1)};
    const double left = a.toDouble(), right = b.toDouble();
    return qint64{left < right ? -1 : left > right ? 1 : 0};
}

QVariant truth(const QVariant& value) {
    return value.isValid() ? QVariant(qint64{numberOf(value) != 0 ? -1 : 0}) : QVariant();
}

QVariant columnValue(const QString& declared, const QVariant& value) {
    const ColumnType type = ColumnType::fromDeclaration(declared);
    if (isText(value) && !type.isText()) {
        if (const QDateTime date = fromStoredDate(value.toString()); date.isValid())
            return type.convert(date);
    }
    return type.convert(value);
}

QVariant rounded(const QVariant& value, int decimals) {
    Decimal decimal = Decimal::fromDouble(numberOf(value));
    decimal.round(decimals, Decimal::Tie::even);
    return toDouble(QString::fromLatin1(decimal.fixed(decimals)));
}

void give(sqlite3_context* context, const QVariant& result) {
    const int type = result.userType();
    if (!result.isValid()) {
        sqlite3_result_null(context);
    } else if (type == QMetaType::Bool || type == QMetaType::LongLong) {
        sqlite3_result_int64(context,
                             type == QMetaType::Bool ? (result.toBool() ? 1 : 0) : result.toLongLong());
    } else if (type == QMetaType::Double) {
        sqlite3_result_double(context, result.toDouble());
    } else {
        const QString text = type == qMetaTypeId<Currency>() ? result.value<Currency>().toText()
                             : type == QMetaType::QDateTime  ? storedDate(result.toDateTime())
                                                             : result.toString();
        const QByteArray bytes = text.toUtf8();
        sqlite3_result_text(context, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }
}

void fail(sqlite3_context* context, const RuntimeError& failure) {
    const std::int32_t number =
        failure.number() == error::typeMismatch ? error::dataMismatch : failure.number();
    for (const KnownError& known : knownErrors) {
        if (known.number == number)
            return sqlite3_result_error(context, known.message, -1);
    }
    sqlite3_result_error(context, failure.description().toUtf8().constData(), -1);
}

using Values = std::vector<QVariant>;
using Function = QVariant (*)(const Values&);

template <Function function>
void call(sqlite3_context* context, int count, sqlite3_value** arguments) {
    try {
        Values values;
        for (int i = 0; i < count; ++i)
            values.push_back(valueOf(arguments[i]));
        give(context, function(values));
    } catch (const RuntimeError& failure) {
        fail(context, failure);
    }
}

template <Function function>
void install(sqlite3* database, const char* name, int count) {
    sqlite3_create_function_v2(database, name, count, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                               nullptr, call<function>, nullptr, nullptr, nullptr);
}

QVariant calcFunction(const Values& v) {
    QVariant result = v.at(0);
    for (std::size_t i = 1; i + 1 < v.size(); i += 2)
        result = calculated(result, v[i].toString().front(), v[i + 1]);
    return result;
}

QVariant compareFunction(const Values& v) { return compared(v[0], v[1]); }

QVariant truthFunction(const Values& v) { return truth(v[0]); }

QVariant valueFunction(const Values& v) { return columnValue(v[0].toString(), v[1]); }

/// A function of one number; NULL gives NULL.
template <double (*function)(double)>
QVariant numberFunction(const Values& v) {
    return v[0].isValid() ? QVariant(function(numberOf(v[0]))) : QVariant();
}

double sign(double value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

QVariant roundFunction(const Values& v) {
    if (!v[0].isValid())
        return {};
    const int decimals = v.size() > 1 ? toInt16(v[1]) : 0;
    if (v.size() > 2 || decimals < 0 || decimals > 15)
        throw RuntimeError(error::invalidProcedureCall, u"Invalid procedure call"_s);
    return rounded(v[0], decimals);
}

QVariant valFunction(const Values& v) { return leadingNumber(nullText(v[0])); }

}  // namespace

void installExpressionFunctions(sqlite3* database) {
    install<calcFunction>(database, "dialect_calc", -1);
    install<compareFunction>(database, "dialect_compare", 2);
    install<truthFunction>(database, "dialect_truth", 1);
    install<valueFunction>(database, "dialect_value", 2);
    install<numberFunction<std::fabs>>(database, "dialect_abs", 1);
    install<numberFunction<std::floor>>(database, "dialect_int", 1);
    install<numberFunction<std::trunc>>(database, "dialect_fix", 1);
    install<numberFunction<sign>>(database, "dialect_sgn", 1);
    install<roundFunction>(database, "dialect_round", -1);
    install<valFunction>(database, "dialect_val", 1);
}

std::optional<std::int32_t> expressionErrorNumber(std::string_view message) {
    for (const KnownError& known : knownErrors) {
        if (message == known.message)
            return known.number;
    }
    return {};
}

}  // namespace platform
