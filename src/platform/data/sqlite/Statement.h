// The engine's C interface in RAII: a prepared statement, and its error codes turned into RuntimeError.
#pragma once

#include "platform/data/ColumnType.h"
#include "platform/data/Engine.h"

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
class Statement : public EngineQuery {
public:
    /// original: the statement as the program worded it, for the error.
    Statement(sqlite3* database, const QString& sql, const QString& original);
    ~Statement() override;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(int parameter, const QVariant& value) override;
    bool step() override;
    void reset() override;

    bool isReadOnly() const override;
    std::int64_t changedRows() const override;
    int columnCount() const override;
    ResultColumn column(int column) const override;
    std::int64_t integer(int column) const override;
    QVariant value(int column, const ColumnType& type) const override;

private:
    sqlite3* m_database;
    QString m_original;
    sqlite3_stmt* m_statement = nullptr;
};

}  // namespace platform::sqlite
