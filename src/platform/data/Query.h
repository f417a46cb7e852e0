// One prepared statement in the engine's own words: for what the program asks by itself, never with a text in it that a
// user typed. Holds no lock between two runs.
#pragma once

#include "platform/data/ColumnType.h"
#include "platform/data/Engine.h"

#include <QString>
#include <QVariant>
#include <cstdint>
#include <memory>

namespace platform {

class Query {
public:
    /// original: the statement as the program worded it, for the error.
    /// Throws as Connection::execute, here and at each step.
    Query(Engine& engine, const QString& sql, const QString& original = {})
        : m_query(engine.prepare(sql, original)) {}
    explicit Query(std::unique_ptr<EngineQuery> query) : m_query(std::move(query)) {}

    /// Parameters count from 1. NULL, bool, qint64, double, Currency, QDateTime (stored form), QString.
    void bind(int parameter, const QVariant& value) { m_query->bind(parameter, value); }
    /// True while there is a row.
    bool step() { return m_query->step(); }
    void reset() { m_query->reset(); }

    bool isReadOnly() const { return m_query->isReadOnly(); }
    /// By the last run of a statement that changes rows.
    std::int64_t changedRows() const { return m_query->changedRows(); }
    int columnCount() const { return m_query->columnCount(); }
    ResultColumn column(int column) const { return m_query->column(column); }
    std::int64_t integer(int column) const { return m_query->integer(column); }
    /// The value of the present row as the type of the column wants it. A value that doesn't fit the type
    /// comes as the engine holds it.
    QVariant value(int column, const ColumnType& type) const { return m_query->value(column, type); }

private:
    std::unique_ptr<EngineQuery> m_query;
};

/// Runs one statement to its end.
inline void run(Engine& engine, const QString& sql) {
    Query query(engine, sql, sql);
    while (query.step()) {
    }
}

/// The first column of its first row; 0 when there is none.
inline std::int64_t number(Engine& engine, const QString& sql) {
    Query query(engine, sql, sql);
    return query.step() ? query.integer(0) : 0;
}

/// The same as text; empty when there is none.
inline QString text(Engine& engine, const QString& sql) {
    Query query(engine, sql, sql);
    return query.step() ? query.value(0, asText).toString() : QString();
}

}  // namespace platform
