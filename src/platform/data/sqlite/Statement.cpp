// Prepared statements and error codes of the engine.
#include "platform/data/sqlite/Statement.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/ExpressionFunctions.h"

#include <QDateTime>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

struct Meaning {
    std::int32_t number;
    const char* text;  ///< before the engine's own words
};

Meaning constraint(int extended) {
    switch (extended) {
    case SQLITE_CONSTRAINT_FOREIGNKEY:
    case SQLITE_CONSTRAINT_TRIGGER:
        return {error::general, "The record is related to records of another table"};
    default:
        return {error::dataMismatch, "A value does not fit its column"};
    }
}

Meaning meaning(int extended) {
    switch (extended & 0xff) {
    case SQLITE_CONSTRAINT:
        return constraint(extended);
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
        return {error::dataMismatch, "A value does not fit its column"};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {error::permissionDenied, "The database file is locked by another program"};
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {error::permissionDenied, "The database file is read-only"};
    case SQLITE_CANTOPEN:
        return {error::permissionDenied, "A file beside the database can't be created"};
    case SQLITE_FULL:
        return {error::diskFull, "The disk is full"};
    case SQLITE_IOERR:
        return {error::deviceIo, "The database file can't be read or written"};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return {error::deviceIo, "The database file is damaged"};
    default:
        return {error::statement, "The statement failed"};
    }
}

QString utf8(const char* text) { return QString::fromUtf8(text); }

}  // namespace

void fail(sqlite3* database, const QString& statement) {
    const char* message = sqlite3_errmsg(database);
    if (const auto number = expressionErrorNumber(message))
        throw RuntimeError(*number, utf8(message), u"Database"_s, statement);
    const Meaning found = meaning(sqlite3_extended_errcode(database));
    throw RuntimeError(found.number, u"%1 (%2)"_s.arg(utf8(found.text), utf8(message)), u"Database"_s,
                       statement);
}

Statement::Statement(sqlite3* database, const QString& sql, const QString& original)
    : m_database(database), m_original(original) {
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(database, text.constData(), static_cast<int>(text.size()), &m_statement,
                           nullptr) != SQLITE_OK)
        fail(database, original);
}

Statement::~Statement() { sqlite3_finalize(m_statement); }

void Statement::bind(int parameter, const QVariant& value) {
    int code = SQLITE_OK;
    const int type = value.userType();
    if (!value.isValid())
        code = sqlite3_bind_null(m_statement, parameter);
    else if (type == QMetaType::Bool)
        code = sqlite3_bind_int(m_statement, parameter, value.toBool() ? 1 : 0);
    else if (type == QMetaType::LongLong || type == QMetaType::Int)
        code = sqlite3_bind_int64(m_statement, parameter, value.toLongLong());
    else if (type == QMetaType::Double)
        code = sqlite3_bind_double(m_statement, parameter, value.toDouble());
    else {
        const QString text = type == qMetaTypeId<Currency>() ? value.value<Currency>().toText()
                             : type == QMetaType::QDateTime  ? storedDate(value.toDateTime())
                                                             : value.toString();
        const QByteArray bytes = text.toUtf8();
        code = sqlite3_bind_text(m_statement, parameter, bytes.constData(), static_cast<int>(bytes.size()),
                                 SQLITE_TRANSIENT);
    }
    if (code != SQLITE_OK)
        fail(m_database, m_original);
}

bool Statement::step() {
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE)
        return false;
    try {
        fail(m_database, m_original);
    } catch (...) {
        sqlite3_reset(m_statement);
        throw;
    }
}

void Statement::reset() { sqlite3_reset(m_statement); }

bool Statement::isReadOnly() const { return sqlite3_stmt_readonly(m_statement) != 0; }

int Statement::columnCount() const { return sqlite3_column_count(m_statement); }

std::int64_t Statement::changedRows() const { return sqlite3_changes64(m_database); }

ResultColumn Statement::column(int column) const {
    return {utf8(sqlite3_column_name(m_statement, column)),
            utf8(sqlite3_column_decltype(m_statement, column)),
            utf8(sqlite3_column_table_name(m_statement, column)),
            utf8(sqlite3_column_origin_name(m_statement, column))};
}

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(m_statement, column); }

QVariant Statement::value(int column, const ColumnType& type) const {
    const int storage = sqlite3_column_type(m_statement, column);
    if (storage == SQLITE_NULL)
        return {};
    if (storage == SQLITE_TEXT || storage == SQLITE_BLOB || type.isText()) {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
        const int size = sqlite3_column_bytes(m_statement, column);
        if (type.kind == FieldKind::Date) {
            const QDateTime date = fromStoredDate(QLatin1StringView(bytes, size));
            if (date.isValid())
                return date;
        }
        return QString::fromUtf8(bytes, size);
    }
    const double number = sqlite3_column_double(m_statement, column);
    switch (type.kind) {
    case FieldKind::Money:
        return QVariant::fromValue(Currency::fromStored(number));
    case FieldKind::Date:
        return fromSerial(number);
    case FieldKind::Flag:
        return number != 0.0;
    case FieldKind::Double:
        return number;
    default:
        break;
    }
    if (storage == SQLITE_INTEGER)
        return qint64{sqlite3_column_int64(m_statement, column)};
    return number;
}

}  // namespace platform::sqlite
