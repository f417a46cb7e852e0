// One connection to a server and what is kept by it: commands within transactions and spans, and what a line that breaks
// means for them. Whatever it is asked for while it waits for the server is refused with permissionDenied.
#pragma once

#include "platform/data/postgres/Expected.h"
#include "platform/data/postgres/Line.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QElapsedTimer>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {
class Waiter;
}

namespace platform::postgres {

/// What a command does to the records.
enum class Access {
    Reads,    ///< the server refuses it any change
    Changes,  ///< kept as a whole, or nothing of it
};

/// Begins what reads the records as of its first statement.
inline constexpr char beginOneMoment[] = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY";

class Session {
public:
    /// Throws cannotOpen or general, see openFailureOf.
    explicit Session(const QString& address, std::shared_ptr<Waiter> waiter = {}, const Limits& limits = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Runs these together and gives the result of each. What reads takes one message there and one back; outside a span
    /// it is tried once more over a new connection where the old one turns out to be broken. A change never is: where it
    /// is not known whether it was kept, the server is asked, and the error says what it answered. A change outside a span
    /// takes two messages, so that the second, its end, can be asked about by the number of its transaction. A command
    /// that fails leaves an open span as it was. statement: for the error. Throws as failureOf tells.
    std::vector<Result> run(std::vector<Command> commands, Access access, const QString& statement);
    Result runOne(Command command, Access access, const QString& statement) {
        return run({std::move(command)}, access, statement).front();
    }
    /// Runs changes of an open span one after the other, by one message there and one back: taken hears the result of
    /// each. The first that is refused ends it and throws as run does; those in front of it stay.
    void runInTurn(const std::vector<Command>& changes, const QString& statement,
                   const std::function<void(const Result&)>& taken);

    /// SELECTs without parameters that are likely to be run next, in this order: what reads next brings their results along,
    /// for as long as nothing else is asked in between; all of it is of one moment. Empty forgets what is left of them.
    void expect(QByteArrayList statements) { m_expected.set(std::move(statements)); }
    /// How often something was changed by run or runInTurn.
    std::int64_t changesMade() const { return m_changesMade; }

    /// What is told to the server at the beginning of each connection that is opened from now on, and before each change.
    /// None of it must fail.
    void setGreeting(QByteArrayList statements) { m_greeting = std::move(statements); }
    void setBeforeChanges(std::function<QByteArrayList()> statements) {
        m_beforeChanges = std::move(statements);
    }

    /// What is asked after the greeting over each line that takes the place of a lost one; refusal gives of the answers why
    /// nothing may go by it, else nothing. Nothing does then: the next one that is opened is asked again.
    using Refusal = std::function<QString(const std::vector<Result>& answers)>;
    void setAdmission(std::vector<Command> questions, Refusal refusal);
    /// Whether the last line was refused.
    bool isRefused() const { return !m_refused.isEmpty(); }

    /// Statements that begin and end spans. Only for Span.
    void control(const QByteArray& sql, const QString& statement);
    bool isSpanOpen() const { return m_spans > 0; }
    void countSpan(int change) { m_spans += change; }
    /// Changes with each new connection: what was open on the one before is gone.
    int connectionNumber() const { return m_line.number(); }

    /// To be called now and then: opens a connection that has ended since, or that a server said nothing by to a question
    /// meanwhile, without waiting for it.
    void lookAfter();
    /// Milliseconds since the server was last heard, where its line is known to be broken and no other one has come about;
    /// else 0.
    std::int64_t awayFor() const {
        return m_working || isRefused() || m_line.isOpenedInBackground() ? 0 : m_line.silentFor();
    }

    /// Whether this server follows another one and takes no changes.
    bool isStandby() const;

private:
    enum class Fate { Saved, NotSaved, NotKnown };
    class Work;

    /// Opens the line where it has ended since, as that of a server that was started anew. Throws general where it is refused.
    void refresh(const QString& statement);
    void reopen(const QString& statement);
    /// False where it did not come to it.
    bool open();
    void greet();
    /// Of a time, what the statement that is under way may still take.
    int left(int milliseconds) const;
    /// Of what changes nothing: once more where the line was lost outside a span.
    Line::Outcome ask(const std::vector<Command>& commands, const QString& statement);
    /// After a change. transaction: its number.
    void changed(const Result& transaction);
    void commit(const QString& statement);
    /// Of the transaction whose end was not heard of.
    Fate lookUp();
    [[noreturn]] void fail(const Line::Outcome& outcome, const QString& statement, const QString& fate) const;

    std::shared_ptr<Waiter> m_waiter;
    QElapsedTimer m_sinceBegin;  ///< of what is under way
    bool m_working = false;
    Limits m_limits;
    Line m_line;
    QByteArrayList m_greeting;
    std::vector<Command> m_questions;
    Refusal m_refusal;
    QString m_refused;  ///< why nothing may go by the line; empty where all may
    std::function<QByteArrayList()> m_beforeChanges;
    QByteArray
        m_transaction;  ///< the server's number of the one that is open; empty while nothing was changed
    Expected m_expected;
    std::int64_t m_changesMade = 0;
    QElapsedTimer m_sinceTry;
    int m_tryMs = 0;  ///< after so long a lost line is tried again
    int m_spans = 0;
};

}  // namespace platform::postgres
