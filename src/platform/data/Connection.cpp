// The engine of the connection, and the statements of the dialect on their way to it.
#include "platform/data/Connection.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DataLocation.h"
#include "platform/data/Query.h"
#include "platform/data/postgres/ServerEngine.h"
#include "platform/data/sqlite/FileEngine.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Up to the next setting that is known, since a path may hold ";" and "=" itself.
QString dataSource(const QString& connectionString) {
    static const QRegularExpression setting(
        u"(?:^|;)\\s*Data Source\\s*=(.*?)(?:;\\s*(?:Persist Security Info|Provider)\\s*=.*)?;?$"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto match = setting.match(connectionString);
    if (match.hasMatch())
        return match.captured(1);
    throw RuntimeError(error::cannotOpen, u"No Data Source in the connection text"_s, u"Database"_s);
}

}  // namespace

struct Connection::Private {
    void expectClosed() const {
        if (engine)
            throw RuntimeError(error::invalidProcedureCall, u"The connection is already open"_s,
                               u"Database"_s);
    }

    std::unique_ptr<Engine> engine;
    Trace trace;
    std::shared_ptr<Waiter> waiter;
};

Connection::Connection() : d(std::make_unique<Private>()) {}

Connection::~Connection() = default;

void Connection::setWaiter(std::shared_ptr<Waiter> waiter) { d->waiter = std::move(waiter); }

void Connection::open(const QString& connectionString) {
    d->expectClosed();
    const DataLocation location(dataSource(connectionString));
    d->engine = location.isServer() ? postgres::openServer(location.text(), d->waiter)
                                    : sqlite::openFile(platformPath(dataSource(connectionString)));
}

void Connection::openForReading(const QString& path) {
    d->expectClosed();
    d->engine = sqlite::openFile(platformPath(path), sqlite::OpenFor::Reading);
}

void Connection::close() { d->engine.reset(); }

int Connection::state() const { return d->engine ? 1 : 0; }

std::int64_t Connection::execute(const QString& statement) {
    announce(statement);
    Engine& store = engine(statement);
    const Translation translation =
        translateStatement(statement, store.words(), [&](const QString& table, const QString& column) {
            return store.declaredType(table, column);
        });
    Query query(store.prepareTranslated(translation, statement));
    while (query.step()) {
    }
    return query.isReadOnly() ? 0 : query.changedRows();
}

void Connection::setTrace(Trace trace) { d->trace = std::move(trace); }

void Connection::announce(const QString& statement) const {
    if (d->trace)
        d->trace(statement);
}

bool Connection::isReadOnly() const { return d->engine && d->engine->isReadOnly(); }

std::int64_t Connection::changeState() const { return engine().changeState(); }

QString Connection::declaredType(const QString& table, const QString& column) const {
    return engine().declaredType(table, column);
}

bool Connection::isKey(const QString& table, const QString& column) const {
    return engine().isKey(table, column);
}

QString Connection::location() const { return d->engine ? d->engine->location() : QString(); }

bool Connection::isServer() const { return d->engine && d->engine->isServer(); }

QString Connection::file() const { return isServer() ? QString() : location(); }

Engine& Connection::engine(const QString& statement) const {
    if (!d->engine)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, statement);
    return *d->engine;
}

}  // namespace platform
