// The unfinished copy bears a name of its own until it is checked.
#include "platform/data/DatabaseCopy.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <cstdio>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

const QString source = u"Database"_s;

/// Only the owner may read it: it holds patients.
void makePrivateFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw RuntimeError(error::permissionDenied, file.errorString() + u": "_s + path, source);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

}  // namespace

DatabaseCopy::DatabaseCopy(ConnectionPtr connection, const QString& target)
    : m_source(std::move(connection)), m_target(platformPath(target)), m_unfinished(m_target + u".part"_s) {
    QDir().mkpath(QFileInfo(m_target).path());
    makePrivateFile(m_unfinished);
    if (sqlite3_open(m_unfinished.toUtf8().constData(), &m_copy) != SQLITE_OK ||
        !(m_backup = sqlite3_backup_init(m_copy, "main", deref(m_source).handle(), "main"))) {
        const QString why = QString::fromUtf8(sqlite3_errmsg(m_copy));
        sqlite3_close(m_copy);
        QFile::remove(m_unfinished);
        throw RuntimeError(error::general, why, source);
    }
}

DatabaseCopy::~DatabaseCopy() {
    if (m_check.valid())
        m_check.wait();
    sqlite3_backup_finish(m_backup);
    sqlite3_close(m_copy);
    if (!m_unfinished.isEmpty())
        QFile::remove(m_unfinished);
}

bool DatabaseCopy::step(int pages) {
    if (m_backup && !copyPages(pages))
        return false;
    if (pages >= 0 && m_check.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return false;
    takePlace(m_check.get());
    return true;
}

bool DatabaseCopy::copyPages(int pages) {
    const int result = sqlite3_backup_step(m_backup, pages);
    if (result == SQLITE_OK || result == SQLITE_BUSY || result == SQLITE_LOCKED)
        return false;
    if (result != SQLITE_DONE)
        throw RuntimeError(error::deviceIo, QString::fromUtf8(sqlite3_errstr(result)), source);
    sqlite3_backup_finish(std::exchange(m_backup, nullptr));
    sqlite3_close(std::exchange(m_copy, nullptr));
    // Half a second for a large file: with a connection of its own, while the user works on.
    m_check = std::async(std::launch::async, integrityProblems, m_unfinished);
    return true;
}

void DatabaseCopy::takePlace(const QStringList& problems) {
    if (!problems.isEmpty())
        throw RuntimeError(error::general, u"The copy is not sound: "_s + problems.first(), source);
    if (std::rename(QFile::encodeName(m_unfinished).constData(), QFile::encodeName(m_target).constData()) !=
        0)
        throw RuntimeError(error::permissionDenied, u"Can't be written: "_s + m_target, source);
    m_unfinished.clear();
}

}  // namespace platform
