#include "history/HistoryPause.h"

#include "history/HistorySeal.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;
using platform::run;

}  // namespace

HistoryPause::HistoryPause(platform::Engine& database) : m_database(database) {
    QStringList names;
    {
        Query triggers(database,
                       u"SELECT name, sql FROM main.sqlite_schema WHERE type = 'trigger' AND "
                       "substr(name, 1, 8) = 'History_' ORDER BY rowid"_s,
                       {});
        while (triggers.step()) {
            names << triggers.value(0, asText).toString();
            m_triggers << triggers.value(1, asText).toString();
        }
    }
    for (const QString& name : names)
        run(database, u"DROP TRIGGER main.\"%1\""_s.arg(name));
}

void HistoryPause::end() {
    for (const QString& trigger : m_triggers)
        run(m_database, trigger);
}

void addHistoryRow(platform::Engine& database, const QString& what, const QString& fields) {
    if (!hasHistory(database))
        return;
    const QString sql =
        u"INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_What, hst_Fields) VALUES ('', 0, 0, ?, ?)"_s;
    Query statement(database, sql, sql);
    statement.bind(1, what);
    statement.bind(2, fields);
    statement.step();
}

void noteRestored(const QString& file, const QString& copy) {
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    keepHistory(connection);
    addHistoryRow(connection.engine(), u"restored"_s,
                  u"copy='%1'"_s.arg(QFileInfo(copy).fileName().replace(u"'"_s, u"''"_s)));
}

void continueHistory(platform::Engine& database, const QString& archive, const HistoryHead& before) {
    if (!hasHistory(database))
        return;
    run(database, u"DELETE FROM History"_s);
    const QString sql =
        u"INSERT INTO History (HistoryID, hst_Table, hst_Key, hst_Record, hst_What, hst_Fields) SELECT ?, '', 0, 0, "
        "'archived', ? || coalesce(',' || group_concat(name || '=' || seq), '') FROM sqlite_sequence WHERE name <> 'History'"_s;
    Query statement(database, sql, sql);
    statement.bind(1, qint64{before.count + 1});
    statement.bind(2, u"archive='%1',before='%2'"_s.arg(archive, toText(before)));
    statement.step();
}

}  // namespace sorvanto
