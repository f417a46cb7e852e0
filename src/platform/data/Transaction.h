// A span of changes that is kept whole or not at all. The outermost one of a connection is a transaction of the
// file, one within another a savepoint. Unless committed, it is taken back however its scope is left. As long as
// one is open, no other statement can begin or end a transaction, or attach another file.
#pragma once

#include <QString>

struct sqlite3;

namespace platform {

class Transaction {
public:
    /// Takes the file's write lock at once. statement: what the failure's report names.
    /// Throws permissionDenied when the file stays locked or can't be written.
    explicit Transaction(sqlite3* database, QString statement = {});
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Throws when the engine can't keep the changes; they are taken back then.
    void commit();

private:
    /// Runs one of the span's own statements past the guard; the engine's code.
    int control(const char* statement) const;

    sqlite3* m_database;
    QString m_statement;
    bool m_outermost;
    bool m_open = true;
};

}  // namespace platform
