// The engine's authorizer. It stays in place for the whole life of a connection: putting one in makes the engine prepare
// all its statements anew.
#include "platform/data/sqlite/Guard.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/Statement.h"

#include <algorithm>
#include <array>
#include <sqlite3.h>
#include <string_view>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

/// What the dialect's functions and operators are written as.
constexpr std::array<std::string_view, 18> functions{"avg",
                                                     "count",
                                                     "dialect_abs",
                                                     "dialect_calc",
                                                     "dialect_compare",
                                                     "dialect_fix",
                                                     "dialect_int",
                                                     "dialect_round",
                                                     "dialect_sgn",
                                                     "dialect_truth",
                                                     "dialect_val",
                                                     "dialect_value",
                                                     "iif",
                                                     "last_insert_rowid",
                                                     "like",
                                                     "max",
                                                     "min",
                                                     "sum"};

bool isFunction(const char* name) {
    return name && std::find(functions.begin(), functions.end(), std::string_view(name)) != functions.end();
}

bool isControl(int action) {
    return action == SQLITE_TRANSACTION || action == SQLITE_SAVEPOINT || action == SQLITE_ATTACH ||
           action == SQLITE_DETACH;
}

}  // namespace

Guard::Guard(sqlite3* database) : m_database(database) { sqlite3_set_authorizer(database, answer, this); }

// A statement may outlive the connection.
Guard::~Guard() { sqlite3_set_authorizer(m_database, nullptr, nullptr); }

// One that was prepared before the span is prepared anew, and so asked about anew.
void Guard::setSpanOpen(bool open) {
    m_spanOpen = open;
    if (open)
        sqlite3_set_authorizer(m_database, answer, this);
}

int Guard::answer(void* self, int action, const char* first, const char* second, const char*,
                  const char* trigger) {
    auto& guard = *static_cast<Guard*>(self);
    if (guard.m_spanOpen && isControl(action))
        return SQLITE_DENY;
    const bool allowed = guard.m_typed == Typed::No || trigger || guard.allows(action, first, second);
    return allowed ? SQLITE_OK : SQLITE_DENY;
}

bool Guard::allows(int action, const char* first, const char* second) {
    switch (action) {
    case SQLITE_SELECT:
        return true;
    case SQLITE_READ:
        return knowsTable(first);
    case SQLITE_FUNCTION:
        return isFunction(second);
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
        return m_typed == Typed::Changing && knowsTable(first);
    default:
        return false;
    }
}

bool Guard::knowsTable(const char* name) {
    if (!m_lastMet.isEmpty() &&
        qstricmp(name, m_lastMet.constData()) == 0)  // one look for all columns of a table
        return true;
    const QByteArray table = QByteArray(name).toLower();
    const bool known = m_tables.contains(table);
    if (known)
        m_lastMet = table;
    m_metStranger = m_metStranger || !known;
    return known;
}

bool Guard::readTables(const QString& statement) {
    Statement names(m_database,
                    u"SELECT name FROM main.sqlite_schema WHERE type IN ('table', 'view') AND "
                    "substr(name, 1, 7) <> 'sqlite_'"_s,
                    statement);
    QSet<QByteArray> tables;
    while (names.step())
        tables << names.value(0, asText).toString().toUtf8().toLower();
    const bool differs = tables != m_tables;
    m_tables = std::move(tables);
    m_lastMet.clear();
    return differs;
}

std::unique_ptr<Statement> Guard::attempt(const QString& sql, const QString& statement, Typed typed) {
    m_typed = typed;
    m_metStranger = false;
    try {
        auto prepared = std::make_unique<Statement>(m_database, sql, statement);
        m_typed = Typed::No;
        return prepared;
    } catch (...) {
        m_typed = Typed::No;
        throw;
    }
}

std::unique_ptr<Statement> Guard::prepareTyped(const QString& sql, const QString& statement, bool mayChange) {
    const Typed typed = mayChange ? Typed::Changing : Typed::Reading;
    if (m_tables.isEmpty())
        readTables(statement);
    try {
        return attempt(sql, statement, typed);
    } catch (const RuntimeError&) {
        if (!m_metStranger || !readTables(statement))
            throw;
    }
    return attempt(sql, statement, typed);  // a table that has come since
}

}  // namespace platform::sqlite
