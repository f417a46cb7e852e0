// One connection to a server: opening it, commands on their way there and back, each with a deadline, and what a line
// that breaks means for them.
#pragma once

#include "platform/data/postgres/Result.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QVariant>
#include <memory>
#include <vector>

struct pg_conn;

namespace platform::postgres {

struct Command {
    QByteArray sql;
    std::vector<QVariant> parameters;  ///< $1 and so on; see Query::bind
    /// The result has no rows, only what its columns are.
    bool describe = false;
};

/// What a command does to the records.
enum class Access {
    Reads,    ///< the server refuses it any change
    Changes,  ///< kept as a whole, or nothing of it
};

class Session {
public:
    /// Throws cannotOpen or general, see openFailureOf.
    explicit Session(const QString& address);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Runs these together, by one message there and one back, and gives the result of each. What reads outside a span
    /// is tried once more over a new connection where the old one turns out to be broken; a change never is: whether
    /// it was kept is not known then, and the error says so. A command that fails leaves an open span as it was.
    /// statement: for the error. Throws as failureOf tells.
    std::vector<Result> run(std::vector<Command> commands, Access access, const QString& statement);
    Result runOne(Command command, Access access, const QString& statement) {
        return run({std::move(command)}, access, statement).front();
    }

    /// What is told to the server at the beginning of each connection, this one included, and before each change. None of
    /// it must fail.
    void setGreeting(QByteArrayList statements);
    void setBeforeChanges(QByteArrayList statements) { m_beforeChanges = std::move(statements); }

    /// Statements that begin and end spans. Only for Span.
    void control(const QByteArray& sql, const QString& statement);
    bool isSpanOpen() const { return m_spans > 0; }
    void countSpan(int change) { m_spans += change; }
    /// Changes with each new connection: what was open on the one before is gone.
    int connectionNumber() const { return m_number; }

    /// Whether this server follows another one and takes no changes.
    bool isStandby() const;

private:
    struct Outcome {
        std::vector<Result> results;
        bool lineLost = false;
    };

    void connect();
    /// Opens the connection again where it has ended since, as that of a server that was started anew.
    void refresh();
    void close();
    bool isConnected() const;
    Outcome send(const std::vector<Command>& commands);
    void queue(const Command& command);
    std::vector<Result> receive(const std::vector<Command>& commands);
    /// The next result; null between those of two commands, and for ever once the line is lost.
    pg_result* next();
    /// Until the socket can be read, or written; false at the deadline.
    bool wait(bool forWriting);
    [[noreturn]] void fail(const Outcome& outcome, Access access, const QString& statement) const;

    QByteArray m_address;
    QByteArrayList m_greeting, m_beforeChanges;
    pg_conn* m_connection = nullptr;
    std::int64_t m_deadline = 0;  ///< of what is under way
    int m_spans = 0;
    int m_number = 0;
};

}  // namespace platform::postgres
