#include "platform/data/postgres/Trial.h"

#include "platform/data/postgres/Address.h"
#include "platform/data/postgres/SqlState.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <libpq-fe.h>
#include <netdb.h>
#include <poll.h>
#include <thread>
#include <utility>

namespace platform::postgres {

namespace {

constexpr int turn = 50;  // milliseconds between two looks at whether it was stopped
constexpr int waitingTurn = 5;

/// Whether the name leads anywhere. Looking it up can take long, and can't be stopped.
bool isKnown(const QString& host) {
    if (host.isEmpty() || host.startsWith(u'/'))
        return true;
    const QStringList names = host.split(u',');
    return std::any_of(names.begin(), names.end(), [](const QString& name) {
        addrinfo* found = nullptr;
        const bool known = ::getaddrinfo(name.toUtf8().constData(), nullptr, nullptr, &found) == 0;
        if (found)
            ::freeaddrinfo(found);
        return known;
    });
}

TrialEnd endOfState(const QByteArray& state) {
    if (state == "3D000")
        return TrialEnd::NoDatabase;
    return state.startsWith("28") || state == "42501" ? TrialEnd::Refused : TrialEnd::NotReady;
}

}  // namespace

/// One attempt, in its own thread; only what is atomic is touched by others.
class Attempt {
public:
    Attempt(const QString& address, int milliseconds, Admission admission)
        : m_address(address.toUtf8()), m_host(readAddress(address).host), m_deadline(milliseconds),
          m_admission(std::move(admission)) {}

    void run() {
        m_end = made();
        m_ended = true;
    }
    void stop() { m_stopped = true; }
    bool ended() const { return m_ended || m_stopped || m_deadline.hasExpired(); }
    TrialEnd end() const { return m_ended ? m_end.load() : whyOver(); }

private:
    using Connection = std::unique_ptr<PGconn, decltype(&PQfinish)>;

    TrialEnd made() const;
    Connection begun() const;
    TrialEnd connected(PGconn* connection) const;
    TrialEnd looked(PGconn* connection) const;

    bool isOver() const { return m_stopped || m_deadline.hasExpired(); }
    TrialEnd whyOver() const { return m_stopped ? TrialEnd::Stopped : TrialEnd::TookTooLong; }
    /// A moment at most.
    static bool isReady(const PGconn* connection, bool forWriting) {
        pollfd socket{PQsocket(connection), static_cast<short>(forWriting ? POLLOUT : POLLIN), 0};
        return ::poll(&socket, 1, turn) > 0;
    }

    QByteArray m_address;
    QString m_host;
    QDeadlineTimer m_deadline;
    Admission m_admission;
    std::atomic<bool> m_stopped = false;
    std::atomic<TrialEnd> m_end = TrialEnd::Stopped;
    std::atomic<bool> m_ended = false;
};

TrialEnd Attempt::made() const {
    if (!isKnown(m_host))
        return TrialEnd::UnknownName;
    if (isOver())
        return whyOver();
    const Connection connection = begun();
    const TrialEnd end = connection ? connected(connection.get()) : TrialEnd::NotReady;
    return end == TrialEnd::Works ? looked(connection.get()) : end;
}

/// As the program's own connections: the server proves its name, but for a socket of this computer.
Attempt::Connection Attempt::begun() const {
    constexpr const char* none = nullptr;
    const std::array keywords{"dbname", "sslmode", "gssencmode", "fallback_application_name", none};
    const std::array values{m_address.constData(), "verify-full", "disable", "sorvanto", none};
    Connection connection(PQconnectStartParams(keywords.data(), values.data(), 1), PQfinish);
    // The server's sentences come in its own language; its five characters do not.
    if (connection)
        PQsetErrorVerbosity(connection.get(), PQERRORS_SQLSTATE);
    return connection;
}

TrialEnd Attempt::connected(PGconn* connection) const {
    ConnStatusType reached = PQstatus(connection);
    auto step = reached == CONNECTION_BAD ? PGRES_POLLING_FAILED : PGRES_POLLING_WRITING;
    while (step == PGRES_POLLING_READING || step == PGRES_POLLING_WRITING) {
        if (isOver())
            return whyOver();
        if (!isReady(connection, step == PGRES_POLLING_WRITING))
            continue;
        reached = PQstatus(connection);
        step = PQconnectPoll(connection);
    }
    if (step == PGRES_POLLING_OK)
        return TrialEnd::Works;
    if (const QByteArray state = stateAtEnd(lastAttempt(PQerrorMessage(connection))); !state.isEmpty())
        return endOfState(state);
    if (PQconnectionNeedsPassword(connection) != 0)
        return TrialEnd::NoPassword;
    return reached == CONNECTION_SSL_STARTUP ? TrialEnd::NotProven : TrialEnd::NoAnswer;
}

TrialEnd Attempt::looked(PGconn* connection) const {
    const QByteArray question =
        m_admission.admits ? m_admission.question : "SELECT \"opt_Version\" FROM sorvanto.\"Options\"";
    if (PQsendQuery(connection, question.constData()) == 0)
        return TrialEnd::NoAnswer;
    while (PQisBusy(connection) != 0) {
        if (isOver())
            return whyOver();
        if (isReady(connection, false) && PQconsumeInput(connection) == 0)
            return TrialEnd::NoAnswer;
    }
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQgetResult(connection), PQclear);
    if (PQntuples(result.get()) != 1)
        return TrialEnd::NoRecords;
    const bool admitted = !m_admission.admits || m_admission.admits(PQgetvalue(result.get(), 0, 0));
    return admitted ? TrialEnd::Works : TrialEnd::NotReady;
}

Trial::Trial(const QString& address, int milliseconds, Admission admission)
    : m_attempt(std::make_shared<Attempt>(address, milliseconds, std::move(admission))) {
    std::thread([attempt = m_attempt] { attempt->run(); }).detach();
}

Trial::~Trial() { stop(); }

void Trial::stop() { m_attempt->stop(); }

bool Trial::ended() const { return m_attempt->ended(); }

TrialEnd Trial::end() const { return m_attempt->end(); }

TrialEnd tryServer(const QString& address, int milliseconds) {
    const Trial trial(address, milliseconds);
    while (!trial.ended())
        std::this_thread::sleep_for(std::chrono::milliseconds(waitingTurn));
    return trial.end();
}

}  // namespace platform::postgres
