// The engine's C interface in RAII: a prepared statement, and its error codes turned into RuntimeError.
#pragma once

#include "platform/data/ColumnType.h"

#include <QString>
#include <QVariant>
#include <cstdint>

struct sqlite3;
struct sqlite3_stmt;

namespace platform::sqlite {

/// The failure that the connection met last as RuntimeError: general for a refused relation, dataMismatch
/// for a value that a column refuses, permissionDenied for a locked or read-only file, diskFull, deviceIo,
/// statement for everything else.
[[noreturn]] void fail(sqlite3* database, const QString& statement);

/// One prepared statement, finalised with the object. Holds no lock on the file between two runs.
class Statement {
public:
    /// original: the statement as the program worded it, for the error.
    Statement(sqlite3* database, const QString& sql, const QString& original);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Parameters count from 1. NULL, bool, qint64, double, Currency, QDateTime (stored form), QString.
    void bind(int parameter, const QVariant& value);
    /// True while there is a row.
    bool step();
    void reset();

    bool isReadOnly() const;
    int columnCount() const;
    QString columnName(int column) const;
    QString declaredType(int column) const;
    QString baseTable(int column) const;
    QString baseColumn(int column) const;
    std::int64_t integer(int column) const;
    /// The value of the present row as the type of the column wants it. A value that doesn't fit the type
    /// comes as the engine holds it.
    QVariant value(int column, const ColumnType& type) const;

private:
    sqlite3* m_database;
    QString m_original;
    sqlite3_stmt* m_statement = nullptr;
};

/// Runs one statement of the program's own to its end.
void run(sqlite3* database, const QString& sql);
/// The first column of its first row; 0 when there is none.
std::int64_t number(sqlite3* database, const QString& sql);

}  // namespace platform::sqlite
