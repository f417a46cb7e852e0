// Commands go out in the client library's pipeline, so that the statements around a command cost no way of their own.
#include "platform/data/postgres/Line.h"

#include "platform/data/postgres/Parameters.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <libpq-fe.h>
#include <poll.h>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

/// Between two turns; a window may stand still for 50.
constexpr int turnMs = 30;

std::int64_t inMilliseconds(int time) { return QDeadlineTimer(time).deadline(); }

/// Goes on while the computer sleeps.
std::int64_t nowMs() {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    constexpr std::int64_t second = 1000, million = 1'000'000;
    return time.tv_sec * second + time.tv_nsec / million;
}

int leftUntil(std::int64_t deadline) {
    return static_cast<int>(std::max<std::int64_t>(0, deadline - QDeadlineTimer::current().deadline()));
}

}  // namespace

Line::Line(const QString& address, const Limits& limits, std::function<bool()> turn)
    : m_address(address.toUtf8()), m_limits(limits), m_turn(std::move(turn)) {}

Line::~Line() { close(); }

void Line::openInBackground() {
    if (!m_opening || m_opening->hasFailed())
        m_opening = std::make_unique<Opening>(m_address, m_limits.openMs);
}

bool Line::isOpenedInBackground() const {
    return m_opening && m_opening->waitFor(0) && !m_opening->hasFailed();
}

bool Line::open(int milliseconds) {
    close();
    openInBackground();
    m_deadline = inMilliseconds(milliseconds);
    while (!m_opening->waitFor(std::min(turnMs, leftUntil(m_deadline)))) {
        giveTurn();
        if (m_stopped || leftUntil(m_deadline) == 0) {
            m_opening.reset();
            m_refusal = {{}, u"no answer"_s};
            return false;
        }
    }
    const std::unique_ptr<Opening> opening = std::move(m_opening);
    m_connection = opening->take();
    m_refusal = {opening->state(), opening->message()};
    if (m_connection) {
        ++m_number;
        m_heard = nowMs();
    }
    return m_connection;
}

void Line::close() {
    PQfinish(m_connection);
    m_connection = nullptr;
    m_knocked = 0;
}

bool Line::isConnected() const { return m_connection && PQstatus(m_connection) != CONNECTION_BAD; }

std::int64_t Line::silentFor() const {
    return isConnected() ? 0 : std::max<std::int64_t>(1, nowMs() - m_heard);
}

bool Line::isOpen() {
    pollfd socket{PQsocket(m_connection), POLLIN, 0};
    while (isConnected() && poll(&socket, 1, 0) > 0 && PQconsumeInput(m_connection)) {
    }
    hear();
    return isConnected();
}

void Line::knock() {
    m_knocked = nowMs();
    PQsendQueryParams(m_connection, "", 0, nullptr, nullptr, nullptr, nullptr, 0);
    PQflush(m_connection);
}

void Line::hear() {
    while (m_knocked != 0 && isConnected() && !PQisBusy(m_connection)) {
        pg_result* const answer = PQgetResult(m_connection);
        PQclear(answer);
        if (!answer) {
            m_knocked = 0;
            m_heard = nowMs();
        }
    }
}

bool Line::lookAfter() {
    if (!isOpen())
        return false;
    if (m_knocked != 0 && nowMs() - m_knocked > m_limits.knockMs)
        close();
    else if (m_knocked == 0 && nowMs() - m_heard >= m_limits.quietMs)
        knock();
    return isConnected();
}

bool Line::isAnswering() {
    if (!isOpen())
        return false;
    // In the background it is asked sooner, so that a click has hardly ever to wait.
    if (m_knocked == 0 && nowMs() - m_heard >= 2 * std::int64_t{m_limits.quietMs})
        knock();
    const std::int64_t left = m_knocked + m_limits.knockMs - nowMs();
    m_deadline = inMilliseconds(static_cast<int>(std::max<std::int64_t>(0, left)));
    while (m_knocked != 0 && isConnected()) {
        if (!wait(false) || !PQconsumeInput(m_connection))
            close();
        hear();
    }
    return isConnected();
}

QByteArray Line::told(const char* parameter) const {
    return isConnected() ? QByteArray(PQparameterStatus(m_connection, parameter)) : QByteArray();
}

Line::Outcome Line::send(const std::vector<Command>& commands, int milliseconds) {
    if (m_knocked != 0 && !isAnswering())
        return {{}, true};
    m_deadline = inMilliseconds(milliseconds);
    if (!isConnected() || !PQenterPipelineMode(m_connection))
        return {{}, true};
    for (const Command& command : commands)
        queue(command);
    PQpipelineSync(m_connection);
    Outcome outcome{receive(commands), false};
    outcome.lost = !isConnected() || !PQexitPipelineMode(m_connection);
    if (outcome.lost)
        close();
    else
        m_heard = nowMs();
    return outcome;
}

void Line::queue(const Command& command) {
    if (command.describe) {
        PQsendPrepare(m_connection, "", command.sql.constData(), 0, nullptr);
        PQsendDescribePrepared(m_connection, "");
        return;
    }
    const Parameters parameters(command.parameters);
    PQsendQueryParams(m_connection, command.sql.constData(), parameters.count(), parameters.types(),
                      parameters.values(), nullptr, nullptr, 0);
}

std::vector<Result> Line::receive(const std::vector<Command>& commands) {
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

pg_result* Line::next() {
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

bool Line::wait(bool forWriting) {
    pollfd socket{PQsocket(m_connection), static_cast<short>(forWriting ? POLLIN | POLLOUT : POLLIN), 0};
    while (socket.fd >= 0 && leftUntil(m_deadline) > 0) {
        const int ready = poll(&socket, 1, std::min(turnMs, leftUntil(m_deadline)));
        if (ready > 0)
            return true;
        if (ready < 0 && errno != EINTR)  // a signal says nothing about the line
            return false;
        if (ready == 0)
            giveTurn();
    }
    return false;
}

bool Line::pause(int milliseconds) {
    for (m_deadline = inMilliseconds(milliseconds); !m_stopped && leftUntil(m_deadline) > 0; giveTurn())
        poll(nullptr, 0, std::min(turnMs, leftUntil(m_deadline)));
    return !m_stopped;
}

void Line::giveTurn() {
    if (m_turn() || std::exchange(m_stopped, true))
        return;
    m_deadline = std::min(m_deadline, inMilliseconds(m_limits.stopMs));
    cancel();
}

// In a thread, since the library waits for the server meanwhile.
void Line::cancel() const {
    if (!m_connection)
        return;
    const std::shared_ptr<PGcancel> request(PQgetCancel(m_connection), PQfreeCancel);
    std::thread([request] {
        std::array<char, 256> why{};
        if (request)
            PQcancel(request.get(), why.data(), static_cast<int>(why.size()));
    }).detach();
}

}  // namespace platform::postgres
