#include "platform/data/sqlite/Guard.h"

#include <sqlite3.h>

namespace platform::sqlite {

Guard::Guard(sqlite3* database) : m_database(database) {}

// A statement may outlive the connection.
Guard::~Guard() { sqlite3_set_authorizer(m_database, nullptr, nullptr); }

void Guard::setSpanOpen(bool open) {
    m_spanOpen = open;
    sqlite3_set_authorizer(m_database, open ? answer : nullptr, this);
}

int Guard::answer(void*, int action, const char*, const char*, const char*, const char*) {
    const bool control = action == SQLITE_TRANSACTION || action == SQLITE_SAVEPOINT ||
                         action == SQLITE_ATTACH || action == SQLITE_DETACH;
    return control ? SQLITE_DENY : SQLITE_OK;
}

}  // namespace platform::sqlite
