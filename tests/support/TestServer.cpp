// The server is asked through the client library directly, as its administrator.
#include "TestServer.h"

#include <QFile>
#include <QProcess>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <map>
#include <memory>
#include <sys/stat.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace support {
namespace {

const QString script = QString::fromUtf8(SORVANTO_SOURCE_DIR "/scripts/start-server.sh");

/// A folder in memory where there is room: each test's database is a few hundred files, and a disk's file system may take
/// longer to make and drop them than the test lasts. The path is short, since that of a socket has to be.
QString scratchFolder() {
    constexpr qint64 enough = 1'000'000'000;
    const QStorageInfo memory(u"/dev/shm"_s);
    const bool hasRoom = memory.isReady() && !memory.isReadOnly() && memory.bytesAvailable() > enough;
    return (hasRoom ? u"/dev/shm"_s : u"/tmp"_s) + u"/srvXXXXXX"_s;
}

/// Waits for the end of this program at the other side of a pipe, and stops the server then.
class Warden {
public:
    explicit Warden(const QString& folder) {
        const QString command =
            u"exec >/dev/null 2>&1; trap '' INT TERM HUP; cat; '%1' '%2/s' --stop; rm -rf '%2'"_s.arg(script,
                                                                                                      folder);
        m_pipe = popen(command.toUtf8().constData(), "we");
    }
    ~Warden() { pclose(m_pipe); }
    Warden(const Warden&) = delete;
    Warden& operator=(const Warden&) = delete;

private:
    FILE* m_pipe = nullptr;
};

class Server {
public:
    Server() {
        m_folder.setAutoRemove(false);  // that is the warden's
        chmod(m_folder.path().toUtf8().constData(), 0755);
        m_warden = std::make_unique<Warden>(m_folder.path());
        start();
        openDoorForTests();
        ask(u"postgres"_s, u"ALTER DATABASE sorvanto RENAME TO empty"_s);
    }

    QString address(const QString& user, const QString& database) const {
        return u"postgresql://%1@/%2?host=%3/s/run&port=5432"_s.arg(user, database, m_folder.path());
    }
    Rows ask(const QString& database, const QString& statements);
    /// The connection to it would stand in the way of what is made of it, or end with it.
    void leave(const QString& database) { m_connections.erase(database); }
    QString folder() const { return m_folder.path(); }

private:
    using Asking = std::unique_ptr<PGconn, decltype(&PQfinish)>;

    PGconn* connectionTo(const QString& database);

    void start() {
        QProcess process;
        process.start(script, {m_folder.filePath("s"), "--local"});
        process.waitForFinished(120000);
        if (process.exitCode() != 0)
            throw std::runtime_error("No server: " + process.readAllStandardError().toStdString());
        const QString password = m_folder.filePath("pgpass");
        QFile passwords(password);
        passwords.open(QIODevice::WriteOnly);
        for (const char* role : {"bench", "owner"}) {
            QFile one(m_folder.filePath(u"s/%1.pgpass"_s.arg(QLatin1String(role))));
            one.open(QIODevice::ReadOnly);
            passwords.write(one.readAll());
        }
        passwords.close();
        chmod(password.toUtf8().constData(), 0600);
        qputenv("PGPASSFILE", password.toUtf8());
    }
    /// The administrator comes in as this account too, and benches into whichever database.
    void openDoorForTests() {
        QFile doors(m_folder.filePath("s/data/pg_hba.conf"));
        if (!doors.open(QIODevice::ReadWrite))
            throw std::runtime_error("The server's doors can't be opened.");
        const QByteArray before = doors.readAll();
        doors.seek(0);
        doors.write("local all sorvanto_admin trust\n" + before);
        doors.close();
        // A test need not outlive a power failure.
        QFile settings(m_folder.filePath("s/data/sorvanto.conf"));
        if (!settings.open(QIODevice::Append))
            throw std::runtime_error("The server's settings can't be changed.");
        settings.write("fsync = off\nfull_page_writes = off\nautovacuum = off\n"
                       "min_wal_size = 32MB\nmax_wal_size = 128MB\n");
        settings.close();
        QProcess::execute(script, {m_folder.filePath("s"), "--stop"});
        QProcess again;
        again.start(script, {m_folder.filePath("s")});
        again.waitForFinished(120000);
    }

    QTemporaryDir m_folder{scratchFolder()};
    std::unique_ptr<Warden> m_warden;
    std::map<QString, Asking> m_connections;
};

std::unique_ptr<Server> running;

/// Ends the server before the program's own objects go.
class ServerEnd : public ::testing::Environment {
    void TearDown() override { running.reset(); }
};
const auto* const serverEnd = ::testing::AddGlobalTestEnvironment(new ServerEnd);

Server& server() {
    static bool tried = false;
    if (!std::exchange(tried, true))
        running = std::make_unique<Server>();
    if (!running)
        throw std::runtime_error("The server could not be started, as told above.");
    return *running;
}

constexpr Oid float8 = 701;

QString valueText(const PGresult* result, int row, int column) {
    if (PQgetisnull(result, row, column))
        return u"NULL"_s;
    const QString text = QString::fromUtf8(PQgetvalue(result, row, column));
    if (PQftype(result, column) != float8)
        return text;
    const QString number = QString::number(text.toDouble(), 'g', 15);
    return number.contains('.') || number.contains('e') ? number : number + u".0"_s;
}

PGconn* Server::connectionTo(const QString& database) {
    Asking& connection = m_connections.try_emplace(database, nullptr, PQfinish).first->second;
    const auto begins = [&] {
        PQclear(PQexec(connection.get(),
                       "RESET ALL; SET client_min_messages = warning; SET search_path = sorvanto"));
        return PQstatus(connection.get()) == CONNECTION_OK;
    };
    if (!connection || !begins()) {  // a test may have ended it
        connection.reset(PQconnectdb(address(u"sorvanto_admin"_s, database).toUtf8().constData()));
        begins();
    }
    return connection.get();
}

Rows Server::ask(const QString& database, const QString& statements) {
    PGconn* const connection = connectionTo(database);
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(
        PQexec(connection, statements.toUtf8().constData()), PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        ADD_FAILURE() << PQerrorMessage(connection) << "\nin: " << statements.left(2000).toStdString();
    Rows rows;
    for (int row = 0; row < PQntuples(result.get()); ++row) {
        rows.emplace_back();
        for (int column = 0; column < PQnfields(result.get()); ++column)
            rows.back() << valueText(result.get(), row, column);
    }
    return rows;
}

QString quoted(const QString& text) {
    return text == "NULL"_L1 ? text : u'\'' + QString(text).replace(u'\'', "''"_L1) + u'\'';
}

/// One INSERT for each row of the file, as the administrator.
QString copyOf(const QString& file, const QString& table) {
    QStringList columns, rows;
    for (const QStringList& column : runSql(file, u"SELECT name FROM pragma_table_info('%1')"_s.arg(table)))
        columns << u'"' + column.first() + u'"';
    for (const QStringList& row : runSql(file, u"SELECT * FROM %1 ORDER BY 1"_s.arg(table))) {
        QStringList values;
        for (const QString& value : row)
            values << quoted(value);
        rows << u'(' + values.join(u", "_s) + u')';
    }
    return rows.isEmpty() ? QString()
                          : u"INSERT INTO \"%1\" (%2) VALUES %3;"_s.arg(table, columns.join(u", "_s),
                                                                        rows.join(u",\n"_s));
}

QString copyOf(const QString& file) {
    QString all;
    for (const char* table : {"Chemical", "Formula", "FormChem", "Patient", "Log", "LogChem", "RXs"})
        all += copyOf(file, QString::fromLatin1(table));
    return all;
}

/// The database that each test's is made from.
void makeTemplate(const QString& file) {
    server().ask(u"postgres"_s, u"CREATE DATABASE sample TEMPLATE empty"_s);
    // What is the updater's on a server, tests do as a bench.
    server().ask(u"sample"_s, u"GRANT UPDATE ON \"Options\" TO sorvanto_bench;"_s + copyOf(file));
    server().leave(u"sample"_s);
}

void makeFrom(const QString& model) {
    server().leave(u"sorvanto"_s);
    server().ask(u"postgres"_s, u"DROP DATABASE IF EXISTS sorvanto WITH (FORCE)"_s);
    server().ask(u"postgres"_s, u"CREATE DATABASE sorvanto TEMPLATE "_s + model);
}

}  // namespace

void makeServerRecords(const QString& likeFile) {
    static const bool made = [&] { return makeTemplate(likeFile), true; }();
    Q_UNUSED(made)
    makeFrom(u"sample"_s);
}

void addServerRecords(const QString& likeFile) { server().ask(u"sorvanto"_s, copyOf(likeFile)); }

void makeEmptyServer() { makeFrom(u"empty"_s); }

QString serverOwnerAddress() { return server().address(u"sorvanto_owner"_s, u"sorvanto"_s); }

QString serverAddress() { return server().address(u"bench"_s, u"sorvanto"_s); }

Rows runOnServer(const QString& statements) { return server().ask(u"sorvanto"_s, statements); }

Rows runOnWholeServer(const QString& statements) { return server().ask(u"postgres"_s, statements); }

}  // namespace support
