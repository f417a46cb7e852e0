// The engine's own C interface, used directly.
#include "TestDatabase.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace support {
namespace {

/// A test need not outlive a power failure.
const QByteArray preparation = "PRAGMA foreign_keys = ON; PRAGMA synchronous = OFF;";

using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

Handle openFile(const QString& path, int flags) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &raw, flags, nullptr);
    Handle handle(raw, sqlite3_close);
    if (code != SQLITE_OK)
        throw std::runtime_error("Can't open " + path.toStdString() + ": " + sqlite3_errmsg(raw));
    sqlite3_busy_timeout(raw, 60'000);
    return handle;
}

int collect(void* target, int count, char** values, char**) {
    QStringList row;
    for (int i = 0; i < count; ++i)
        row << (values[i] ? QString::fromUtf8(values[i]) : u"NULL"_s);
    static_cast<Rows*>(target)->push_back(row);
    return 0;
}

Rows execute(sqlite3* handle, const QByteArray& statements) {
    Rows rows;
    char* message = nullptr;
    sqlite3_exec(handle, statements.constData(), collect, &rows, &message);
    if (message) {
        ADD_FAILURE() << message << "\nin: " << statements.left(2000).toStdString();
        sqlite3_free(message);
    }
    return rows;
}

/// The bytes of a database with the delivered schema and no records.
QByteArray emptyDatabase() {
    QFile schema(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/schema.sql"));
    if (!schema.open(QIODevice::ReadOnly))
        throw std::runtime_error("There is no data/schema.sql.");
    const QTemporaryDir folder;
    const QString path = folder.filePath("empty.mdb");
    {
        const Handle handle = openFile(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        execute(handle.get(), preparation + schema.readAll());
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("The schema made no file.");
    return file.readAll();
}

}  // namespace

void createDatabaseFile(const QString& path) {
    static const QByteArray empty = emptyDatabase();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(empty) != empty.size())
        throw std::runtime_error("Can't write " + path.toStdString());
}

Rows runSql(const QString& path, const QString& statements) {
    const Handle handle = openFile(path, SQLITE_OPEN_READWRITE);
    return execute(handle.get(), preparation + statements.toUtf8());
}

bool runSqlAtOnce(const QString& path, const QString& statements) {
    const Handle handle = openFile(path, SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(handle.get(), 0);
    const QByteArray whole = preparation + "BEGIN IMMEDIATE;" + statements.toUtf8() + ";COMMIT;";
    const int code = sqlite3_exec(handle.get(), whole.constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK && code != SQLITE_BUSY)
        ADD_FAILURE() << sqlite3_errmsg(handle.get());
    return code == SQLITE_OK;
}

QString rowsText(const Rows& rows) {
    QStringList lines;
    for (const QStringList& row : rows)
        lines << row.join('|');
    return lines.join('\n');
}

}  // namespace support
