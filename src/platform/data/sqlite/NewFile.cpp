#include "platform/data/sqlite/NewFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/Statement.h"

#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

NewFile::NewFile(const QString& path)
    : m_path(platformPath(path)), m_part(m_path + u".part"_s), m_database(nullptr, sqlite3_close) {
    refuseTaken();
    QFile::remove(m_part);
    QFile file(m_part);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        refuse(file.errorString());
    file.close();
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(m_part.toUtf8().constData(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW, nullptr);
    m_database.reset(opened);
    if (code != SQLITE_OK)
        fail(opened, {});
    run("PRAGMA foreign_keys = ON; BEGIN");
}

NewFile::~NewFile() {
    m_database.reset();
    QFile::remove(m_part);
}

void NewFile::run(const QByteArray& statements) {
    if (sqlite3_exec(m_database.get(), statements.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(m_database.get(), {});
}

void NewFile::finish() {
    run("COMMIT");
    m_database.reset();
    if (giveSecondName(m_part, m_path))
        return;
    refuseTaken();
    replaceFile(m_part, m_path);
}

void NewFile::refuse(const QString& why) const {
    throw RuntimeError(error::permissionDenied, u"\"%1\" can't be created: %2"_s.arg(m_path, why));
}

void NewFile::refuseTaken() const {
    if (QFileInfo(m_path).isSymLink() || QFile::exists(m_path))
        refuse(u"The file exists already"_s);
}

}  // namespace platform::sqlite
