// One thread with one loop; what tests ask for stands behind a lock and wakes it by a pipe.
#include "ServerProxy.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace support {
namespace {

using Clock = std::chrono::steady_clock;

sockaddr_un placeIn(const QString& folder) {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    const QByteArray path = folder.toUtf8() + "/.s.PGSQL.5432";
    std::copy_n(path.constData(), path.size(), place.sun_path);
    return place;
}

/// One line: what is to become of it, and what has yet to reach the client.
struct Wire {
    int client = -1, server = -1;
    bool answered = true;  ///< the client has heard since it last spoke
    bool losing = false;   ///< what the server says goes nowhere; at its end the line is cut
    bool silent = false;
    bool over = false;
    struct Late {
        Clock::time_point due;
        QByteArray bytes;
    };
    std::deque<Late> late;
};

QByteArray readFrom(int socket) {
    std::array<char, 65536> bytes;
    const ssize_t count = ::read(socket, bytes.data(), bytes.size());
    return count > 0 ? QByteArray(bytes.data(), count) : QByteArray();
}

void writeTo(int socket, const QByteArray& bytes) {
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::send(socket, bytes.constData() + written,
                                     static_cast<std::size_t>(bytes.size() - written), MSG_NOSIGNAL);
        if (count <= 0)
            return;
        written += count;
    }
}

/// "ready for the next", whatever the state of the transaction.
bool isEndOfAnswer(const QByteArray& bytes) {
    return bytes.chopped(std::min<qsizetype>(1, bytes.size())).endsWith(QByteArray("Z\0\0\0\5", 5));
}

}  // namespace

class ServerProxy::Loop {
public:
    template <class What>
    auto change(What what) {
        const std::lock_guard guard(m_mutex);
        const char byte = 0;
        if (::write(m_wake[1], &byte, 1) != 1)
            std::abort();
        return what();
    }

    explicit Loop(const QString& serverFolder) : m_server(placeIn(serverFolder)) {
        const sockaddr_un own = placeIn(m_folder.path());
        m_listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ::bind(m_listener, reinterpret_cast<const sockaddr*>(&own), sizeof own);
        ::listen(m_listener, 20);
        if (::pipe(m_wake.data()) != 0)
            std::abort();
        m_thread = std::thread([this] { run(); });
    }
    ~Loop() {
        change([this] { m_ended = true; });
        m_thread.join();
        for (Wire& wire : m_wires)
            close(wire);
        ::close(m_listener);
        ::close(m_wake[0]);
        ::close(m_wake[1]);
    }
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    QString folder() const { return m_folder.path(); }
    /// The client knows at once.
    void cut() {
        for (const Wire& wire : m_wires)
            ::shutdown(wire.client, SHUT_RDWR);
    }

    void fallSilent() {
        for (Wire& wire : m_wires)
            wire.silent = true;
    }

    // Under the lock.
    QByteArray text;
    Fault fault = Fault::Cut;
    bool armed = false;
    int skipped = 0;
    bool refused = false, silent = false;
    int delay = 0, trips = 0, lines = 0;
    QByteArray messages;
    std::function<void()> asked;

private:
    void run();
    std::optional<timespec> patience() const;
    void accept();
    void fromClient(Wire& wire);
    void fromServer(Wire& wire);
    void deliver(Wire& wire);
    static void close(const Wire& wire) {
        ::close(wire.client);
        ::close(wire.server);
    }

    QTemporaryDir m_folder{QStringLiteral("/tmp/prxXXXXXX")};
    sockaddr_un m_server;
    int m_listener = -1;
    std::array<int, 2> m_wake{-1, -1};
    std::list<Wire> m_wires;
    std::mutex m_mutex;
    bool m_ended = false;
    std::thread m_thread;
};

/// Until something is late enough; for ever where nothing is.
std::optional<timespec> ServerProxy::Loop::patience() const {
    std::optional<Clock::time_point> next;
    for (const Wire& wire : m_wires) {
        if (!wire.late.empty() && (!next || wire.late.front().due < *next))
            next = wire.late.front().due;
    }
    if (!next)
        return std::nullopt;
    const auto left = std::max<std::int64_t>(0, std::chrono::nanoseconds(*next - Clock::now()).count());
    constexpr std::int64_t second = 1'000'000'000;
    return timespec{left / second, left % second};
}

void ServerProxy::Loop::run() {
    for (;;) {
        std::vector<pollfd> sockets{{m_wake[0], POLLIN, 0}, {m_listener, POLLIN, 0}};
        for (const Wire& wire : m_wires) {
            sockets.push_back({wire.client, POLLIN, 0});
            sockets.push_back({wire.server, POLLIN, 0});
        }
        const std::optional<timespec> time = patience();
        ::ppoll(sockets.data(), sockets.size(), time ? &*time : nullptr, nullptr);
        const std::lock_guard guard(m_mutex);
        if (m_ended)
            return;
        if (sockets[0].revents != 0)
            readFrom(m_wake[0]);
        auto socket = sockets.begin() + 2;
        for (Wire& wire : m_wires) {
            if ((socket++)->revents != 0)
                fromClient(wire);
            if ((socket++)->revents != 0)
                fromServer(wire);
            deliver(wire);
        }
        m_wires.remove_if([](const Wire& wire) { return wire.over && (close(wire), true); });
        if (sockets[1].revents != 0)
            accept();
    }
}

void ServerProxy::Loop::accept() {
    Wire wire;
    wire.client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    wire.server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool open = !refused && ::connect(wire.server, reinterpret_cast<const sockaddr*>(&m_server),
                                            sizeof m_server) == 0;
    if (!open)
        return close(wire);
    ++lines;
    wire.silent = silent;
    m_wires.push_back(wire);
}

void ServerProxy::Loop::fromClient(Wire& wire) {
    const QByteArray bytes = readFrom(wire.client);
    wire.over = bytes.isEmpty();
    if (std::exchange(wire.answered, false)) {
        ++trips;
        messages += '\n';
        if (asked)
            asked();
    }
    messages += bytes;
    if (armed && bytes.contains(text) && skipped-- == 0) {
        armed = false;
        wire.losing = fault == Fault::LoseReply || fault == Fault::LoseServer;
        refused = refused || fault == Fault::LoseServer;
        wire.silent = fault == Fault::FallSilent;
        wire.over = wire.over || fault == Fault::Cut;
    }
    if (!wire.silent && !wire.over)
        writeTo(wire.server, bytes);
}

void ServerProxy::Loop::fromServer(Wire& wire) {
    const QByteArray bytes = readFrom(wire.server);
    if (wire.losing) {
        wire.over = wire.over || bytes.isEmpty() || isEndOfAnswer(bytes);
        return;
    }
    wire.late.push_back({Clock::now() + std::chrono::milliseconds(delay), bytes});
}

/// An empty message is the end of the line.
void ServerProxy::Loop::deliver(Wire& wire) {
    for (; !wire.late.empty() && wire.late.front().due <= Clock::now(); wire.late.pop_front()) {
        const QByteArray& bytes = wire.late.front().bytes;
        wire.answered = true;
        wire.over = wire.over || (bytes.isEmpty() && !wire.silent);
        if (!wire.silent)
            writeTo(wire.client, bytes);
    }
}

namespace {

/// Of an address such as "postgresql://bench@/sorvanto?host=/tmp/x/run&port=5432".
const QRegularExpression& hostPart() {
    static const QRegularExpression part(QStringLiteral("(?<=[?&]host=)[^&]*"));
    return part;
}

}  // namespace

ServerProxy::ServerProxy(const QString& address)
    : m_address(address), m_loop(std::make_unique<Loop>(hostPart().match(address).captured())) {
    m_address.replace(hostPart(), m_loop->folder());
}

ServerProxy::~ServerProxy() = default;

void ServerProxy::arm(const QByteArray& text, Fault fault, int skipped) {
    m_loop->change([&] {
        m_loop->text = text;
        m_loop->fault = fault;
        m_loop->skipped = skipped;
        m_loop->armed = true;
    });
}

bool ServerProxy::isArmed() const {
    return m_loop->change([this] { return m_loop->armed; });
}

void ServerProxy::disarm() {
    m_loop->change([this] { m_loop->armed = false; });
}

void ServerProxy::fallSilent() {
    m_loop->change([this] { m_loop->fallSilent(); });
}

void ServerProxy::silence(bool silent) {
    m_loop->change([&] {
        m_loop->silent = silent;
        if (silent)
            m_loop->fallSilent();
    });
}

void ServerProxy::cut() {
    m_loop->change([this] { m_loop->cut(); });
}

void ServerProxy::refuse(bool refused) {
    m_loop->change([&] { m_loop->refused = refused; });
}

void ServerProxy::delay(int milliseconds) {
    m_loop->change([&] { m_loop->delay = milliseconds; });
}

int ServerProxy::takeTrips() {
    return m_loop->change([this] { return std::exchange(m_loop->trips, 0); });
}

QString ServerProxy::takeMessages() {
    static const QRegularExpression noText(QStringLiteral("[^ -~\\n]+"));
    const QByteArray bytes = m_loop->change([this] { return std::exchange(m_loop->messages, {}); });
    return QString::fromLatin1(bytes).replace(noText, QStringLiteral(" ")).trimmed();
}

void ServerProxy::whenAsked(std::function<void()> asked) {
    m_loop->change([&] { m_loop->asked = std::move(asked); });
}

int ServerProxy::lines() const {
    return m_loop->change([this] { return m_loop->lines; });
}

}  // namespace support
