#include "platform/data/postgres/Opening.h"

#include "platform/data/postgres/Settings.h"
#include "platform/data/postgres/SqlState.h"

#include <QDeadlineTimer>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <libpq-fe.h>
#include <mutex>
#include <poll.h>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

using OpenLine = std::unique_ptr<PGconn, decltype(&PQfinish)>;

/// False at the deadline.
bool isReady(const PGconn* line, bool forWriting, const QDeadlineTimer& deadline) {
    pollfd socket{PQsocket(line), static_cast<short>(forWriting ? POLLOUT : POLLIN), 0};
    int ready = 0;
    do {
        ready = ::poll(&socket, 1, static_cast<int>(deadline.remainingTime()));
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

/// What a server says beside its answers may hold records; the library would write it to the program's own output.
void ignoreNotice(void*, const PGresult*) {}

/// For the report: the library's own words name the computer, and of the server's no more than five characters.
QString refusalText(const QByteArray& said, const QByteArray& state, bool noPassword) {
    const QString words = said.isEmpty() ? u"no answer"_s : QString::fromUtf8(said);
    if (noPassword)
        return u"no password is stored for the account; "_s + words;
    if (state == "28P01")
        return u"the password of the account is refused; "_s + words;
    if (state == "28000")
        return u"the account is not let in there; "_s + words;
    return words;
}

OpenLine opened(const QByteArray& address, const QDeadlineTimer& deadline) {
    const Settings settings(address);
    OpenLine line(PQconnectStartParams(settings.keywords().data(), settings.values().data(), 1), PQfinish);
    if (!line)
        return line;
    PQsetNoticeReceiver(line.get(), ignoreNotice, nullptr);
    // The server's sentences come in its own language and name the account; its five characters do neither.
    PQsetErrorVerbosity(line.get(), PQERRORS_SQLSTATE);
    PostgresPollingStatusType step = PGRES_POLLING_WRITING;
    while (PQstatus(line.get()) != CONNECTION_BAD &&
           (step == PGRES_POLLING_READING || step == PGRES_POLLING_WRITING)) {
        if (!isReady(line.get(), step == PGRES_POLLING_WRITING, deadline))
            break;
        step = PQconnectPoll(line.get());
    }
    return line;
}

}  // namespace

struct Opening::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool ended = false;
    OpenLine line{nullptr, PQfinish};
    QByteArray state;
    QString message;
};

Opening::Opening(const QByteArray& address, int milliseconds) : m_shared(std::make_shared<Shared>()) {
    std::thread([shared = m_shared, address, deadline = QDeadlineTimer(milliseconds)] {
        OpenLine line = opened(address, deadline);
        const std::lock_guard guard(shared->mutex);
        if (PQstatus(line.get()) == CONNECTION_OK) {
            PQsetErrorVerbosity(line.get(), PQERRORS_DEFAULT);
            PQsetnonblocking(line.get(), 1);
            shared->line = std::move(line);
        } else {
            const QByteArray said = lastAttempt(PQerrorMessage(line.get()));
            shared->state = stateAtEnd(said);
            shared->message = refusalText(said, shared->state, PQconnectionNeedsPassword(line.get()) != 0);
        }
        shared->ended = true;
        shared->changed.notify_all();
    }).detach();
}

Opening::~Opening() = default;

bool Opening::waitFor(int milliseconds) const {
    std::unique_lock guard(m_shared->mutex);
    return m_shared->changed.wait_for(guard, std::chrono::milliseconds(milliseconds),
                                      [this] { return m_shared->ended; });
}

bool Opening::hasFailed() const {
    const std::lock_guard guard(m_shared->mutex);
    return m_shared->ended && !m_shared->line;
}

pg_conn* Opening::take() { return m_shared->line.release(); }

QByteArray Opening::state() const { return m_shared->state; }

QString Opening::message() const { return m_shared->message; }

}  // namespace platform::postgres
