// Opens the database file with the settings that the program relies on, and runs statements on it.
#include "platform/data/Connection.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Dialect.h"
#include "platform/data/ExpressionFunctions.h"
#include "platform/data/LikePattern.h"
#include "platform/data/Sqlite.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// How long another program may hold the file before a statement gives up.
constexpr int patienceMs = 2000;

struct CloseHandle {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

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

[[noreturn]] void cannotOpen(std::int32_t number, const QString& path, const QString& reason) {
    throw RuntimeError(number, u"The database \"%1\" can't be opened: %2"_s.arg(path, reason), u"Database"_s);
}

[[noreturn]] void cannotOpen(const Handle& database, const QString& path) {
    const int code = sqlite3_errcode(database.get());
    const bool closedFile = code == SQLITE_CANTOPEN || code == SQLITE_PERM || code == SQLITE_AUTH;
    cannotOpen(closedFile ? error::cannotOpen : error::general, path,
               QString::fromUtf8(sqlite3_errmsg(database.get())));
}

/// Statements see only the file's own tables, relations are enforced, "text" is never a name by accident.
void configure(sqlite3* database) {
    sqlite3_extended_result_codes(database, 1);
    sqlite3_busy_timeout(database, patienceMs);
    for (const auto& [setting, on] :
         {std::pair{SQLITE_DBCONFIG_ENABLE_FKEY, 1}, std::pair{SQLITE_DBCONFIG_DQS_DML, 0},
          std::pair{SQLITE_DBCONFIG_DQS_DDL, 0}, std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
          std::pair{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0}, std::pair{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}})
        sqlite3_db_config(database, setting, on, nullptr);
    LikePattern::install(database);
    installExpressionFunctions(database);
}

bool run(const Handle& database, const char* sql) {
    return sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// The file must have a header and a schema that can be read; a copied file must not depend on a log beside it.
/// EXTRA also flushes the folder when the journal goes: else a power cut brings it back, and takes back with it
/// what the program believes to be written.
void probe(const Handle& database, const QString& path) {
    if (!run(database, "SELECT count(*) FROM sqlite_schema"))
        cannotOpen(database, path);
    if (!run(database, "PRAGMA synchronous = EXTRA"))
        cannotOpen(database, path);
    if (sqlite3_db_readonly(database.get(), "main") == 0 && !run(database, "PRAGMA journal_mode = DELETE"))
        cannotOpen(database, path);
}

/// Where no file can be made beside the database, nothing can be written safely.
bool isFolderWritable(const QFileInfo& file) {
    return ::faccessat(AT_FDCWD, QFile::encodeName(file.absolutePath()).constData(), W_OK, AT_EACCESS) == 0;
}

/// A medium that nobody can write, with nothing left half done on it: the engine needs no locks then, nor
/// files beside the database.
bool isImmutable(const QFileInfo& file) {
    struct statvfs medium {};
    const QString path = file.absoluteFilePath();
    return ::statvfs(QFile::encodeName(path).constData(), &medium) == 0 && (medium.f_flag & ST_RDONLY) != 0 &&
           !QFile::exists(path + u"-journal"_s) && !QFile::exists(path + u"-wal"_s);
}

/// One thread alone uses a connection; locks for others would cost a third of each short step.
Handle openHandle(const QByteArray& name, int flags, const QString& path) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    Handle database(opened);
    if (code != SQLITE_OK)
        cannotOpen(database, path);
    configure(database.get());
    probe(database, path);
    return database;
}

Handle openFile(const QString& path) {
    const QFileInfo file(path);
    if (file.isDir())
        cannotOpen(error::cannotOpen, path, u"it is a folder"_s);
    if (!file.exists())
        cannotOpen(error::cannotOpen, path, u"there is no such file"_s);
    if (file.size() == 0)
        cannotOpen(error::general, path, u"the file is empty"_s);
    const QByteArray name = file.absoluteFilePath().toUtf8();
    try {
        return openHandle(name, isFolderWritable(file) ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY, path);
    } catch (const RuntimeError&) {
        if (!isImmutable(file))
            throw;
    }
    return openHandle("file:" + name.toPercentEncoding("/") + "?immutable=1",
                      SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, path);
}

}  // namespace

struct Connection::Private {
    Handle database;
    Trace trace;

    sqlite3* checked(const QString& statement) const {
        if (!database)
            throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, statement);
        return database.get();
    }
};

Connection::Connection() : d(std::make_unique<Private>()) {}

Connection::~Connection() = default;

void Connection::open(const QString& connectionString) {
    if (d->database)
        throw RuntimeError(error::invalidProcedureCall, u"The connection is already open"_s, u"Database"_s);
    d->database = openFile(platformPath(dataSource(connectionString)));
}

void Connection::close() { d->database.reset(); }

int Connection::state() const { return d->database ? 1 : 0; }

std::int64_t Connection::execute(const QString& statement) {
    announce(statement);
    sqlite3* database = d->checked(statement);
    const Translation translation =
        translateStatement(statement, [this](const QString& table, const QString& column) {
            return declaredType(table, column);
        });
    sqlite::Statement prepared(database, translation.sql, statement);
    while (prepared.step()) {
    }
    return prepared.isReadOnly() ? 0 : sqlite3_changes64(database);
}

void Connection::setTrace(Trace trace) { d->trace = std::move(trace); }

void Connection::announce(const QString& statement) const {
    if (d->trace)
        d->trace(statement);
}

bool Connection::isReadOnly() const {
    return d->database && sqlite3_db_readonly(d->database.get(), "main") == 1;
}

std::int64_t Connection::changeState() const {
    sqlite3* database = d->checked({});
    sqlite::Statement others(database, u"PRAGMA data_version"_s, {});
    const std::int64_t version = others.step() ? others.integer(0) : 0;
    return (version << 40) + sqlite3_total_changes64(database);
}

QString Connection::declaredType(const QString& table, const QString& column) const {
    const char* declared = nullptr;
    const int code = sqlite3_table_column_metadata(d->checked({}), nullptr, table.toUtf8().constData(),
                                                   column.toUtf8().constData(), &declared, nullptr, nullptr,
                                                   nullptr, nullptr);
    return code == SQLITE_OK ? QString::fromUtf8(declared) : QString();
}

bool Connection::isKey(const QString& table, const QString& column) const {
    int key = 0;
    sqlite3_table_column_metadata(d->checked({}), nullptr, table.toUtf8().constData(),
                                  column.toUtf8().constData(), nullptr, nullptr, nullptr, &key, nullptr);
    return key != 0;
}

sqlite3* Connection::handle() const { return d->database.get(); }

}  // namespace platform
