// The line to a server: opening it, commands on their way there and back, each with a deadline, and turns for whoever
// keeps the windows alive meanwhile. Knows nothing of what the commands mean.
#pragma once

#include "platform/data/postgres/Opening.h"
#include "platform/data/postgres/Result.h"
#include "platform/data/postgres/Settings.h"

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

struct pg_conn;
struct pg_result;

namespace platform::postgres {

struct Command {
    QByteArray sql;
    std::vector<QVariant> parameters = {};  ///< $1 and so on; see Query::bind
    /// The result has no rows, only what its columns are.
    bool describe = false;
};

/// Milliseconds.
struct Limits {
    int openMs = 10000;
    /// The server itself ends a statement before, so that this is for a server that says nothing.
    int answerMs = statementMs + 5000;
    /// How long it has to end what the user doesn't want to wait for.
    int stopMs = 3000;
    /// The same for what nobody has asked for.
    int quietStopMs = 500;
    /// How long a server that refuses to be opened, as one that is just starting, is tried again.
    int againMs = 3000;
    /// How long it is tried to find out what became of a change.
    int lookUpMs = 10000;
    /// After so long without a word the server is asked, in the background, whether the line still stands: a firewall that
    /// has dropped it says nothing.
    int quietMs = 10000;
    /// How long it has for the answer.
    int knockMs = 3000;
    /// What is tried for one statement once an answer to it has stayed away ends after so long in all, so that the user is
    /// told; each step of it has as long as least.
    int wholeMs = 30000, leastMs = 3000;
};

class Line {
public:
    /// turn: while something is waited for; false ends the wait.
    Line(const QString& address, const Limits& limits, std::function<bool()> turn);
    ~Line();
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    /// False where it did not come to it in so many milliseconds; refusal() tells why.
    bool open(int milliseconds);
    /// Begins it and returns at once; the next open() takes over.
    void openInBackground();
    /// Whether that has come to its end, so that open() does not wait.
    bool isOpenedInBackground() const;
    void close();
    /// Also notices what has happened to it since it was last used.
    bool isOpen();
    /// The same, and asks the server after a silence; waits for no answer. False once that is overdue.
    bool lookAfter();
    /// The same, and waits for the answer where one is due, or where nobody has asked for long, as behind a sleep of the
    /// computer. A line without one is closed.
    bool isAnswering();
    struct Refusal {
        QByteArray state;  ///< empty where the server has said nothing
        QString message;
    };
    const Refusal& refusal() const { return m_refusal; }
    /// Milliseconds since the server was last heard over a line that is closed by now; 0 while it is open.
    std::int64_t silentFor() const;
    /// Counts what was opened.
    int number() const { return m_number; }
    /// How long the server has to end what is not waited for any more.
    void setStopTime(int milliseconds) { m_limits.stopMs = milliseconds; }
    /// What the server has told of itself.
    QByteArray told(const char* parameter) const;

    struct Outcome {
        std::vector<Result> results;
        bool lost = false;  ///< and the line is closed
        bool failed() const { return lost || results.back().failed(); }
    };
    /// By one message there and one back; the answer has so many milliseconds.
    Outcome send(const std::vector<Command>& commands, int milliseconds);
    Outcome send(const std::vector<Command>& commands) { return send(commands, m_limits.answerMs); }
    /// False when the user has ended the wait.
    bool pause(int milliseconds);
    /// Whether the user has ended a wait since the last forgetStop().
    bool wasStopped() const { return m_stopped; }
    void forgetStop() { m_stopped = false; }

private:
    bool isConnected() const;
    /// Sends what the server answers with nothing.
    void knock();
    void hear();
    void queue(const Command& command);
    std::vector<Result> receive(const std::vector<Command>& commands);
    /// The next result; null between those of two commands, and for ever once the line is lost.
    pg_result* next();
    /// Until the socket can be read, or written; false at the deadline.
    bool wait(bool forWriting);
    void giveTurn();
    /// Asks the server to end what it is doing.
    void cancel() const;

    QByteArray m_address;
    Limits m_limits;
    std::function<bool()> m_turn;
    std::unique_ptr<Opening> m_opening;
    Refusal m_refusal;
    pg_conn* m_connection = nullptr;
    std::int64_t m_deadline = 0;              ///< of what is under way
    std::int64_t m_heard = 0, m_knocked = 0;  ///< when; the latter 0 while no answer to a knock is due
    int m_number = 0;
    bool m_stopped = false;
};

}  // namespace platform::postgres
