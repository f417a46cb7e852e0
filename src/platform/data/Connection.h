// A connection to the records. Takes statements in the dialect of the program (see docs/database.md) and carries them
// over to the engine that keeps them.
#pragma once

#include <QString>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <memory>

namespace platform {

class Engine;
class Waiter;

class Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Hears of the waits for a server from the next opening on; nobody does unless told. Only for the thread that the
    /// windows belong to.
    void setWaiter(std::shared_ptr<Waiter> waiter);
    /// "Provider=...;Data Source=<location>;..." opens the file or the server of Data Source (see DataLocation). Never
    /// creates one. Reads header and schema, so that a file that is no database fails here, as does a server without the
    /// tables. Throws cannotOpen or general.
    void open(const QString& connectionString);
    /// Opens a file so that nothing in it or beside it can be changed, whatever its rights are. Throws as open().
    void openForReading(const QString& path);
    void close();
    /// 1 open, 0 closed.
    int state() const;

    /// Runs one statement; gives the count of rows affected. Throws statement, dataMismatch, or general
    /// for a refused relation and for nothing else; permissionDenied for a locked or read-only file, diskFull,
    /// deviceIo; objectClosed on a closed connection. The error carries the statement's text.
    std::int64_t execute(const QString& statement);

    /// Sees the exact text of every statement handed in, before it is translated.
    using Trace = std::function<void(const QString& statement)>;
    void setTrace(Trace trace);

    /// Whether the file can't be written; browsing works, each change throws permissionDenied.
    bool isReadOnly() const;

    /// Another number after any change of the file, by this connection or by any other program.
    std::int64_t changeState() const;

    /// For the result set: hands a statement's text to the trace.
    void announce(const QString& statement) const;
    /// For the result set: the declared type of a column, empty when there is none.
    QString declaredType(const QString& table, const QString& column) const;
    /// For the result set: whether the column is (part of) the table's primary key.
    bool isKey(const QString& table, const QString& column) const;
    /// Path of the file, or address of the server, that is open; empty on a closed connection.
    QString location() const;
    /// Whether the records lie on a server, where others work on them too; false on a closed connection.
    bool isServer() const;
    /// Path of the file that is open; empty where there is none to copy or to lock: with a server, and on a closed
    /// connection.
    QString file() const;
    /// What keeps the records, for the result set and for what the program asks in the engine's own words. Throws
    /// objectClosed on a closed connection; statement: for the error.
    Engine& engine(const QString& statement = {}) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
using ConnectionPtr = std::shared_ptr<Connection>;

}  // namespace platform
