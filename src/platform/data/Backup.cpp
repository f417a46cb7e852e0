// Copies by the engine's own backup interface; a file is complete and checked before it gets its name.
#include "platform/data/Backup.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseCopy.h"
#include "platform/data/Sqlite.h"

#include <QFile>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

ConnectionPtr openDatabase(const QString& file) {
    auto connection = std::make_shared<Connection>();
    connection->open(u"Data Source="_s + file);
    return connection;
}

[[noreturn]] void fail(std::int32_t number, const QString& reason) {
    throw RuntimeError(number, reason, u"Database"_s);
}

void copyChecked(const QString& file, const QString& target) {
    DatabaseCopy(openDatabase(file), target).step(-1);
}

/// "name.before-restore", with a number behind it where that is taken.
QString freeName(const QString& file) {
    QString name = file + u".before-restore"_s;
    for (int number = 2; QFile::exists(name); ++number)
        name = file + u".before-restore-%1"_s.arg(number);
    return name;
}

/// The file's unfinished journal goes along: beside the new file it would spoil that.
QString putAside(const QString& file) {
    if (!QFile::exists(file))
        return {};
    const QString aside = freeName(file);
    const QString journal = u"-journal"_s;
    if (!QFile::rename(file, aside))
        fail(error::permissionDenied, u"\"%1\" can't be put aside"_s.arg(file));
    if (QFile::exists(file + journal))
        QFile::rename(file + journal, aside + journal);
    return aside;
}

}  // namespace

void backupDatabase(const QString& file, const QString& target) {
    const QString path = platformPath(target);
    if (QFile::exists(path))
        fail(error::permissionDenied, u"\"%1\" exists already"_s.arg(path));
    copyChecked(file, path);
}

QString restoreDatabase(const QString& backup, const QString& file) {
    const QString path = platformPath(file);
    const QString restored = path + u".restored"_s;
    copyChecked(backup, restored);
    const QString aside = putAside(path);
    if (!QFile::rename(restored, path))
        fail(error::permissionDenied, u"\"%1\" can't be written"_s.arg(path));
    return aside;
}

QStringList integrityProblems(const QString& file) {
    const ConnectionPtr connection = openDatabase(file);
    QStringList problems;
    const ColumnType text{ColumnKind::Text, 0};
    sqlite::Statement integrity(connection->handle(), u"PRAGMA integrity_check"_s, {});
    while (integrity.step()) {
        const QString line = integrity.value(0, text).toString();
        if (line != "ok"_L1)
            problems << line;
    }
    sqlite::Statement relations(connection->handle(), u"PRAGMA foreign_key_check"_s, {});
    while (relations.step())
        problems << u"Row %1 of %2 refers to a row of %3 that is not there"_s.arg(
            relations.value(1, text).toString(), relations.value(0, text).toString(),
            relations.value(2, text).toString());
    return problems;
}

}  // namespace platform
