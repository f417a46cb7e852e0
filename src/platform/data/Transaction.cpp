// The statements that begin and end a span, and the guard that refuses them to everybody else.
#include "platform/data/Transaction.h"

#include "platform/data/Sqlite.h"

#include <sqlite3.h>
#include <utility>

namespace platform {
namespace {

int refuseControl(void*, int action, const char*, const char*, const char*, const char*) {
    const bool control = action == SQLITE_TRANSACTION || action == SQLITE_SAVEPOINT ||
                         action == SQLITE_ATTACH || action == SQLITE_DETACH;
    return control ? SQLITE_DENY : SQLITE_OK;
}

/// On exactly as long as a span is open.
void guard(sqlite3* database) {
    const bool open = sqlite3_get_autocommit(database) == 0;
    sqlite3_set_authorizer(database, open ? refuseControl : nullptr, nullptr);
}

}  // namespace

Transaction::Transaction(sqlite3* database, QString statement)
    : m_database(database), m_statement(std::move(statement)),
      m_outermost(sqlite3_get_autocommit(database) != 0) {
    if (control(m_outermost ? "BEGIN IMMEDIATE" : "SAVEPOINT span") != SQLITE_OK)
        sqlite::fail(m_database, m_statement);
}

Transaction::~Transaction() {
    if (!m_open)
        return;
    if (!m_outermost) {
        control("ROLLBACK TO span");
        control("RELEASE span");
    } else if (sqlite3_get_autocommit(m_database) == 0) {
        control("ROLLBACK");  // after some failures, a full disk among them, the engine has done it itself
    }
    guard(m_database);
}

void Transaction::commit() {
    if (control(m_outermost ? "COMMIT" : "RELEASE span") != SQLITE_OK)
        sqlite::fail(m_database, m_statement);
    m_open = false;
}

int Transaction::control(const char* statement) const {
    sqlite3_set_authorizer(m_database, nullptr, nullptr);
    const int code = sqlite3_exec(m_database, statement, nullptr, nullptr, nullptr);
    guard(m_database);
    return code;
}

}  // namespace platform
