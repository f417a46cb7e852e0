#include "platform/data/sqlite/FileReader.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/Statement.h"

#include <sqlite3.h>

namespace platform::sqlite {

namespace {

constexpr int readerPatienceMs = 5000;

}  // namespace

FileReader::FileReader(const QString& path) {
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &m_database, SQLITE_OPEN_READONLY, nullptr);
    if (code != SQLITE_OK) {
        const QString why = QString::fromUtf8(sqlite3_errmsg(m_database));
        sqlite3_close(m_database);
        throw RuntimeError(error::cannotOpen, why);
    }
    sqlite3_busy_timeout(m_database, readerPatienceMs);
}

FileReader::~FileReader() { sqlite3_close(m_database); }

QList<QStringList> FileReader::rows(const QString& statement) const {
    Statement prepared(m_database, statement, statement);
    QList<QStringList> all;
    while (prepared.step()) {
        QStringList row;
        for (int column = 0; column < prepared.columnCount(); ++column)
            row << prepared.value(column, asText).toString();
        all << row;
    }
    return all;
}

}  // namespace platform::sqlite
