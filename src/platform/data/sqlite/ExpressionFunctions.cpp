// The dialect's calculations as functions of the engine: its values in, its values or an error out.
#include "platform/data/sqlite/ExpressionFunctions.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ColumnType.h"
#include "platform/data/DialectArithmetic.h"

#include <QVariant>
#include <cmath>
#include <limits>
#include <optional>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using namespace dialect;

struct KnownError {
    std::int32_t number;
    const char* message;
};

constexpr KnownError knownErrors[] = {{error::divisionByZero, "Division by zero"},
                                      {error::overflow, "Overflow"},
                                      {error::dataMismatch, "Data type mismatch in expression"}};

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

QVariant columnValue(const QString& declared, const QVariant& value) {
    const ColumnType type = ColumnType::fromDeclaration(declared);
    if (isText(value) && !type.isText()) {
        if (const QDateTime date = fromStoredDate(value.toString()); date.isValid())
            return type.convert(date);
    }
    return type.convert(value);
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
using Calculation = QVariant (*)(const Values&);

template <Calculation function>
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

void installStep(sqlite3* database, const char* name, int count,
                 void (*step)(sqlite3_context*, int, sqlite3_value**)) {
    sqlite3_create_function_v2(database, name, count, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                               nullptr, step, nullptr, nullptr, nullptr);
}

template <Calculation function>
void install(sqlite3* database, const char* name, int count) {
    installStep(database, name, count, call<function>);
}

QVariant calcFunction(const Values& v) {
    QVariant result = v.at(0);
    for (std::size_t i = 1; i + 1 < v.size(); i += 2)
        result = calculated(result, v[i].toString().front(), v[i + 1]);
    return result;
}

/// The calculation of two numbers, without the long way round: a sum over many rows has a call for each. Nothing
/// is given where something else is to be calculated or the result is none.
bool calculatedPlainly(sqlite3_context* context, sqlite3_value** arguments) {
    sqlite3_value *left = arguments[0], *right = arguments[2];
    const int leftType = sqlite3_value_type(left), rightType = sqlite3_value_type(right);
    const auto isNumber = [](int type) { return type == SQLITE_FLOAT || type == SQLITE_INTEGER; };
    if (!isNumber(leftType) || !isNumber(rightType))
        return false;
    const char sign = static_cast<char>(*sqlite3_value_text(arguments[1]));
    if (leftType == SQLITE_INTEGER && rightType == SQLITE_INTEGER) {
        if (const auto whole = wholeResult(sqlite3_value_int64(left), sign, sqlite3_value_int64(right))) {
            sqlite3_result_int64(context, *whole);
            return true;
        }
    }
    const auto result = plainResult(sqlite3_value_double(left), sign, sqlite3_value_double(right));
    if (result)
        sqlite3_result_double(context, *result);
    return result.has_value();
}

void calc(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (count != 3 || !calculatedPlainly(context, arguments))
        call<calcFunction>(context, count, arguments);
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
    installStep(database, "dialect_calc", -1, calc);
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
