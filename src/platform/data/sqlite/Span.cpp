// The statements that begin and end a span, and the guard that refuses them to everybody else.
#include "platform/data/sqlite/Span.h"

#include "platform/data/sqlite/Guard.h"
#include "platform/data/sqlite/Statement.h"

#include <sqlite3.h>
#include <utility>

namespace platform::sqlite {

Span::Span(sqlite3* database, Guard& guard, QString statement)
    : m_database(database), m_guard(guard), m_statement(std::move(statement)),
      m_outermost(sqlite3_get_autocommit(database) != 0) {
    if (control(m_outermost ? "BEGIN IMMEDIATE" : "SAVEPOINT span") != SQLITE_OK)
        fail(m_database, m_statement);
}

Span::~Span() {
    if (!m_open)
        return;
    if (!m_outermost) {
        control("ROLLBACK TO span");
        control("RELEASE span");
    } else if (sqlite3_get_autocommit(m_database) == 0) {
        control("ROLLBACK");  // after some failures, a full disk among them, the engine has done it itself
    }
    m_guard.setSpanOpen(sqlite3_get_autocommit(m_database) == 0);
    m_guard.noteSpanTakenBack();
}

void Span::commit() {
    if (control(m_outermost ? "COMMIT" : "RELEASE span") != SQLITE_OK)
        fail(m_database, m_statement);
    m_open = false;
}

int Span::control(const char* statement) const {
    m_guard.setSpanOpen(false);
    const int code = sqlite3_exec(m_database, statement, nullptr, nullptr, nullptr);
    m_guard.setSpanOpen(sqlite3_get_autocommit(m_database) == 0);
    return code;
}

Look::Look(sqlite3* database)
    : m_database(database), m_own(sqlite3_get_autocommit(database) != 0 &&
                                  sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK) {}

Look::~Look() {
    if (m_own && sqlite3_get_autocommit(m_database) == 0)
        sqlite3_exec(m_database, "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace platform::sqlite
