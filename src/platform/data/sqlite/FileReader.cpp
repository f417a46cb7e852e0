#include "platform/data/sqlite/FileReader.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/Statement.h"

#include <QUrl>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

constexpr int readerPatienceMs = 5000;

}  // namespace

FileReader::FileReader(const QString& path, Reading reading) {
    const bool shared = reading == Reading::Shared;
    const QByteArray address =
        shared ? path.toUtf8() : QUrl::fromLocalFile(path).toEncoded() + "?immutable=1"_ba;
    const int flags = SQLITE_OPEN_READONLY | (shared ? 0 : SQLITE_OPEN_URI);
    const int code = sqlite3_open_v2(address.constData(), &m_database, flags, nullptr);
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
