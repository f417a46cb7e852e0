// The engine's own C interface, used directly.
#include "RawDatabase.h"

#include "Stop.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace tour {

RawDatabase::RawDatabase(const QString& path) {
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &m_handle, SQLITE_OPEN_READONLY, nullptr);
    require(code == SQLITE_OK, u"the database %1 can't be read."_s.arg(path));
    sqlite3_busy_timeout(m_handle, 5000);
}

RawDatabase::~RawDatabase() { sqlite3_close(m_handle); }

QList<QStringList> RawDatabase::rows(const QString& statement) const {
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(m_handle, statement.toUtf8().constData(), -1, &prepared, nullptr);
    require(code == SQLITE_OK,
            u"the file refuses \"%1\": %2"_s.arg(statement, QString::fromUtf8(sqlite3_errmsg(m_handle))));
    QList<QStringList> all;
    while (sqlite3_step(prepared) == SQLITE_ROW) {
        QStringList row;
        for (int column = 0; column < sqlite3_column_count(prepared); ++column)
            row << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(prepared, column)));
        all << row;
    }
    sqlite3_finalize(prepared);
    return all;
}

QString RawDatabase::value(const QString& statement) const {
    const auto all = rows(statement);
    require(all.size() == 1, u"\"%1\" gives %2 rows instead of one."_s.arg(statement).arg(all.size()));
    return all.first().first();
}

}  // namespace tour
