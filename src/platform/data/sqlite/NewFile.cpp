#include "platform/data/sqlite/NewFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/Statement.h"

#include <QFile>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

NewFile::NewFile(const QString& path) : m_path(platformPath(path)), m_database(nullptr, sqlite3_close) {
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        throw RuntimeError(error::permissionDenied,
                           u"\"%1\" can't be created: %2"_s.arg(m_path, file.errorString()));
    file.close();
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(m_path.toUtf8().constData(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    m_database.reset(opened);
    if (code != SQLITE_OK)
        fail(opened, {});
    run("PRAGMA foreign_keys = ON; BEGIN");
}

NewFile::~NewFile() {
    m_database.reset();
    if (!m_finished)
        QFile::remove(m_path);
}

void NewFile::run(const QByteArray& statements) {
    if (sqlite3_exec(m_database.get(), statements.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(m_database.get(), {});
}

void NewFile::finish() {
    run("COMMIT");
    m_finished = true;
}

}  // namespace platform::sqlite
