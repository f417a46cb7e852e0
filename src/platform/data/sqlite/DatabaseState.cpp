// First the file system's answer, then the engine's.
#include "platform/data/sqlite/DatabaseState.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int lookPatienceMs = 200;

DatabaseState stateWithoutFile(const QFileInfo& file) {
    const QDir folder = file.absoluteDir();
    if (!folder.exists())
        return DatabaseState::FolderAbsent;
    const bool empty = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty();
    return empty ? DatabaseState::FolderEmpty : DatabaseState::Missing;
}

DatabaseState stateOf(int code) {
    switch (code & 0xff) {
    case SQLITE_OK:
        return DatabaseState::Usable;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DatabaseState::Locked;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_READONLY:
        return DatabaseState::Forbidden;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_ERROR:
        return DatabaseState::Damaged;
    default:
        return DatabaseState::Unreadable;
    }
}

}  // namespace

DatabaseState databaseState(const QString& path) {
    const QFileInfo file(platformPath(path));
    if (path.trimmed().isEmpty() || !file.exists())
        return path.trimmed().isEmpty() ? DatabaseState::Missing : stateWithoutFile(file);
    if (!file.isFile())
        return DatabaseState::NotAFile;
    if (!file.isReadable())
        return DatabaseState::Forbidden;
    if (file.size() == 0)
        return DatabaseState::Damaged;
    sqlite3* opened = nullptr;
    int code = sqlite3_open_v2(file.absoluteFilePath().toUtf8().constData(), &opened, SQLITE_OPEN_READWRITE,
                               nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
    sqlite3_busy_timeout(opened, lookPatienceMs);
    if (code == SQLITE_OK)
        code = sqlite3_exec(opened, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    return stateOf(code);
}

}  // namespace platform
