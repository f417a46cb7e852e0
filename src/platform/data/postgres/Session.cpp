// Commands go out in the client library's pipeline, so that the statements around a command cost no way of their own.
#include "platform/data/postgres/Session.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/postgres/Parameters.h"
#include "platform/data/postgres/Settings.h"
#include "platform/data/postgres/SqlState.h"

#include <QDeadlineTimer>
#include <QRegularExpression>
#include <algorithm>
#include <cerrno>
#include <libpq-fe.h>
#include <poll.h>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

/// A statement that takes longer is ended by the server itself, so that this is for a server that says nothing.
constexpr int answerMs = statementMs + 5000;
constexpr int openMs = 10000;

std::int64_t inMilliseconds(int time) { return QDeadlineTimer(time).deadline(); }

/// The library gives no more than a sentence, in which the server's five characters stand.
QByteArray stateIn(const QString& message) {
    static const QRegularExpression state(u"\\b[A-Z]+:\\s+([0-9A-Z]{5}): "_s);
    return state.match(message).captured(1).toLatin1();
}

/// Around a command, so that it is kept whole or not at all, and a failure leaves what was open before it.
struct Frame {
    QByteArrayList before, after, afterFailure;
};

Frame frameFor(Access access, bool inSpan) {
    const bool reads = access == Access::Reads;
    if (!inSpan)
        return reads ? Frame() : Frame{{"BEGIN READ WRITE"}, {"COMMIT"}, {"ROLLBACK"}};
    const QByteArray back = "ROLLBACK TO command", end = "RELEASE command";
    if (reads)
        return {{"SAVEPOINT command", "SET LOCAL transaction_read_only = on"}, {back, end}, {back, end}};
    return {{"SAVEPOINT command"}, {end}, {back, end}};
}

std::vector<Command> commandsOf(const QByteArrayList& statements) {
    std::vector<Command> commands;
    for (const QByteArray& sql : statements)
        commands.push_back({sql, {}, false});
    return commands;
}

}  // namespace

Session::Session(const QString& address) : m_address(address.toUtf8()) { connect(); }

Session::~Session() { close(); }

void Session::close() {
    PQfinish(m_connection);
    m_connection = nullptr;
}

void Session::connect() {
    close();
    ++m_number;
    const Settings settings(m_address);
    m_connection = PQconnectStartParams(settings.keywords().data(), settings.values().data(), 1);
    PQsetErrorVerbosity(m_connection, PQERRORS_VERBOSE);
    m_deadline = inMilliseconds(openMs);
    PostgresPollingStatusType status = PGRES_POLLING_WRITING;
    while (isConnected() && (status == PGRES_POLLING_READING || status == PGRES_POLLING_WRITING)) {
        if (!wait(status == PGRES_POLLING_WRITING))
            break;
        status = PQconnectPoll(m_connection);
    }
    if (status == PGRES_POLLING_OK) {
        PQsetErrorVerbosity(m_connection, PQERRORS_DEFAULT);
        PQsetnonblocking(m_connection, 1);
        if (!m_greeting.isEmpty())
            send(commandsOf(m_greeting));
        return;
    }
    const QString message = QString::fromUtf8(PQerrorMessage(m_connection)).section(u'\n', 0, 0);
    close();
    const Failure failure = openFailureOf(stateIn(message));
    throw RuntimeError(
        failure.number,
        u"%1 (%2)"_s.arg(QString::fromUtf8(failure.text), message.isEmpty() ? u"no answer"_s : message),
        u"Database"_s);
}

void Session::setGreeting(QByteArrayList statements) {
    m_greeting = std::move(statements);
    send(commandsOf(m_greeting));
}

bool Session::isConnected() const { return m_connection && PQstatus(m_connection) != CONNECTION_BAD; }

bool Session::isStandby() const {
    return isConnected() && QByteArray(PQparameterStatus(m_connection, "in_hot_standby")) == "on";
}

void Session::refresh() {
    if (isSpanOpen())
        return;
    pollfd socket{PQsocket(m_connection), POLLIN, 0};
    while (isConnected() && poll(&socket, 1, 0) > 0 && PQconsumeInput(m_connection)) {
    }
    if (!isConnected())
        connect();
}

std::vector<Result> Session::run(std::vector<Command> commands, Access access, const QString& statement) {
    const bool inSpan = isSpanOpen();
    refresh();
    const Frame frame = frameFor(access, inSpan);
    std::vector<Command> all =
        commandsOf(access == Access::Changes ? frame.before + m_beforeChanges : frame.before);
    const auto first = static_cast<std::ptrdiff_t>(all.size());
    const auto count = static_cast<std::ptrdiff_t>(commands.size());
    std::move(commands.begin(), commands.end(), std::back_inserter(all));
    for (Command& command : commandsOf(frame.after))
        all.push_back(std::move(command));

    Outcome outcome = send(all);
    if (outcome.lineLost && access == Access::Reads && !inSpan) {
        connect();
        outcome = send(all);
    }
    if (!outcome.lineLost && !outcome.results.back().failed()) {
        const auto begin = outcome.results.begin() + first;
        return {begin, begin + count};
    }
    if (!outcome.lineLost && !frame.afterFailure.isEmpty())
        send(commandsOf(frame.afterFailure));
    fail(outcome, access, statement);
}

void Session::control(const QByteArray& sql, const QString& statement) {
    refresh();
    const Outcome outcome = send({{sql, {}, false}});
    if (outcome.lineLost || outcome.results.back().failed())
        fail(outcome, Access::Changes, statement);
    if (sql == "COMMIT" && outcome.results.back().tag() != sql)
        throw RuntimeError(error::statement, u"A statement before has failed, and nothing was saved"_s,
                           u"Database"_s, statement);
}

Session::Outcome Session::send(const std::vector<Command>& commands) {
    m_deadline = inMilliseconds(answerMs);
    if (!isConnected() || !PQenterPipelineMode(m_connection))
        return {{}, true};
    for (const Command& command : commands)
        queue(command);
    PQpipelineSync(m_connection);
    Outcome outcome{receive(commands), false};
    outcome.lineLost = !isConnected() || !PQexitPipelineMode(m_connection);
    if (outcome.lineLost)
        close();
    return outcome;
}

void Session::queue(const Command& command) {
    if (command.describe) {
        PQsendPrepare(m_connection, "", command.sql.constData(), 0, nullptr);
        PQsendDescribePrepared(m_connection, "");
        return;
    }
    const Parameters parameters(command.parameters);
    PQsendQueryParams(m_connection, command.sql.constData(), parameters.count(), parameters.types(),
                      parameters.values(), nullptr, nullptr, 0);
}

std::vector<Result> Session::receive(const std::vector<Command>& commands) {
    std::vector<Result> results;
    const auto answer = [this] {
        Result result(next());
        next();
        return result;
    };
    for (const Command& command : commands) {
        Result result = answer();
        if (const Result described = command.describe ? answer() : result; !result.failed())
            result = described;
        results.push_back(result);
    }
    const Result end(next());  // of the pipeline itself
    return results;
}

pg_result* Session::next() {
    for (;;) {
        const int unsent = PQflush(m_connection);
        if (unsent < 0 || !isConnected())
            return nullptr;
        if (!PQisBusy(m_connection))
            return PQgetResult(m_connection);
        if (!wait(unsent == 1) || !PQconsumeInput(m_connection)) {
            close();
            return nullptr;
        }
    }
}

bool Session::wait(bool forWriting) {
    pollfd socket{PQsocket(m_connection), static_cast<short>(forWriting ? POLLIN | POLLOUT : POLLIN), 0};
    for (;;) {
        const std::int64_t left = m_deadline - QDeadlineTimer::current().deadline();
        if (left <= 0 || socket.fd < 0)
            return false;
        const int ready = poll(&socket, 1, static_cast<int>(left));
        if (ready >= 0 || errno != EINTR)  // a signal says nothing about the line
            return ready > 0;
    }
}

void Session::fail(const Outcome& outcome, Access access, const QString& statement) const {
    const auto met = std::find_if(outcome.results.begin(), outcome.results.end(), [](const Result& result) {
        return result.failed() && !result.state().isEmpty();
    });
    const bool answered = met != outcome.results.end();
    const Failure failure = failureOf(answered ? met->state() : QByteArray());
    QString text = QString::fromUtf8(failure.text);
    if (answered)
        text += u" (%1)"_s.arg(met->message());
    if (outcome.lineLost && access == Access::Changes)
        text += u"; it is not known whether the change was saved"_s;
    throw RuntimeError(failure.number, text, u"Database"_s, statement);
}

}  // namespace platform::postgres
