// Settings of a connection to a file, and which way of opening fits the place where it lies.
#include "platform/data/sqlite/OpenFile.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/ExpressionFunctions.h"
#include "platform/data/sqlite/LikeFunction.h"

#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

/// How long another program may hold the file before a statement gives up.
constexpr int patienceMs = 2000;

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
    installLike(database);
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
Handle openAs(const QByteArray& name, int flags, const QString& path) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    Handle database(opened);
    if (code != SQLITE_OK)
        cannotOpen(database, path);
    configure(database.get());
    probe(database, path);
    return database;
}

}  // namespace

void CloseHandle::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

Handle openHandle(const QString& path, OpenFor use) {
    const QFileInfo file(path);
    if (file.isDir())
        cannotOpen(error::cannotOpen, path, u"it is a folder"_s);
    if (!file.exists())
        cannotOpen(error::cannotOpen, path, u"there is no such file"_s);
    if (file.size() == 0)
        cannotOpen(error::general, path, u"the file is empty"_s);
    const QByteArray name = file.absoluteFilePath().toUtf8();
    const bool writes = use == OpenFor::Work && isFolderWritable(file);
    try {
        return openAs(name, writes ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY, path);
    } catch (const RuntimeError&) {
        if (!isImmutable(file))
            throw;
    }
    return openAs("file:" + name.toPercentEncoding("/") + "?immutable=1",
                  SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, path);
}

}  // namespace platform::sqlite
