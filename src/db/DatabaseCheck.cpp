// The check of a database file: soundness by the engine, shape by comparison with an empty file.
#include "db/DatabaseCheck.h"

#include "db/DatabaseFile.h"
#include "history/HistoryChain.h"
#include "history/HistoryReplay.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "platform/data/sqlite/FileEngine.h"

#include <QMap>
#include <QSet>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

using platform::asText;
using platform::Query;

struct Shape {
    QMap<QString, QMap<QString, QString>> columns;  ///< table, column: declared type
    QSet<QString> relations;                        ///< "RXs.LogID to Log"
};

Shape shapeOf(platform::Engine& database) {
    Shape shape;
    for (const QString& table : database.tables()) {
        for (const QString& column : database.columns(table))
            shape.columns[table][column] = database.declaredType(table, column);
        Query keys(database, u"SELECT \"from\", \"table\", on_delete FROM pragma_foreign_key_list(?)"_s, {});
        keys.bind(1, table);
        while (keys.step()) {
            const bool cascade = keys.value(2, asText).toString() == "CASCADE"_L1;
            shape.relations << u"%1.%2 to %3%4"_s.arg(table, keys.value(0, asText).toString(),
                                                      keys.value(1, asText).toString(),
                                                      cascade ? u" with its rows"_s : QString());
        }
    }
    return shape;
}

QStringList columnProblems(const Shape& expected, const Shape& found) {
    QStringList problems;
    for (auto table = expected.columns.begin(); table != expected.columns.end(); ++table) {
        if (!found.columns.contains(table.key())) {
            problems << u"Table %1 is missing"_s.arg(table.key());
            continue;
        }
        const QMap<QString, QString> columns = found.columns.value(table.key());
        for (auto column = table->begin(); column != table->end(); ++column) {
            const QString name = table.key() + u'.' + column.key();
            if (!columns.contains(column.key()))
                problems << u"Column %1 is missing"_s.arg(name);
            else if (columns.value(column.key()).compare(column.value(), Qt::CaseInsensitive) != 0)
                problems << u"Column %1 is %2, not %3"_s.arg(name, columns.value(column.key()),
                                                             column.value());
        }
    }
    return problems;
}

QStringList relationProblems(const Shape& expected, const Shape& found) {
    QStringList problems;
    for (const QString& relation : expected.relations - found.relations)
        problems << u"The relation %1 is missing"_s.arg(relation);
    problems.sort();
    return problems;
}

/// Since version 1.1 a file has one identity.
QStringList identityProblems(platform::Engine& database, bool hasTable) {
    Query version(database, u"SELECT max(opt_Version) >= 1.1 FROM Options"_s, {});
    if (!version.step() || version.integer(0) == 0)
        return {};
    if (!hasTable)
        return {u"Table FileIdentity is missing"_s};
    Query count(database, u"SELECT count(*) FROM FileIdentity WHERE length(fid_Identity) = 32"_s, {});
    count.step();
    if (count.integer(0) == 1)
        return {};
    return {u"Table FileIdentity has %1 identities, not one"_s.arg(count.integer(0))};
}

/// Name and text of all that keeps the history.
QMap<QString, QString> historyKeepers(platform::Engine& database) {
    Query list(database,
               u"SELECT name, sql FROM sqlite_schema WHERE substr(name, 1, 7) = 'History' AND sql NOT NULL"_s,
               {});
    QMap<QString, QString> keepers;
    while (list.step())
        keepers[list.value(0, asText).toString()] = list.value(1, asText).toString().simplified();
    return keepers;
}

/// Since version 1.2 a file keeps its history, and can prove it.
QStringList historyProblems(platform::Engine& database) {
    Query version(database, u"SELECT max(opt_Version) >= 1.2 FROM Options"_s, {});
    if (!version.step() || version.integer(0) == 0)
        return {};
    const auto expected = platform::sqlite::inMemory(schemaStatements() + historyStatements());
    const QMap<QString, QString> wanted = historyKeepers(*expected);
    const QMap<QString, QString> found = historyKeepers(database);
    if (!found.contains(u"History"_s))
        return {u"Table History is missing"_s};
    QStringList problems;
    for (auto keeper = wanted.begin(); keeper != wanted.end(); ++keeper) {
        if (found.value(keeper.key()) != keeper.value())
            problems << (found.contains(keeper.key()) ? u"%1 is not as it was delivered"_s
                                                      : u"%1 is missing"_s)
                            .arg(keeper.key());
    }
    return problems + chainProblems(database) + recordProblems(database);
}

QStringList versionProblems(platform::Engine& database) {
    Query count(database, u"SELECT count(*) FROM Options"_s, {});
    count.step();
    if (count.integer(0) == 1)
        return {};
    return {u"Table Options has %1 rows, not one"_s.arg(count.integer(0))};
}

}  // namespace

QStringList soundnessProblems(const QString& path) {
    QStringList problems = platform::integrityProblems(path);
    platform::Connection connection;
    connection.open(u"Data Source="_s + path);
    const Shape expected = shapeOf(*platform::sqlite::inMemory(schemaStatements()));
    const Shape found = shapeOf(connection.engine());
    problems += columnProblems(expected, found);
    problems += relationProblems(expected, found);
    if (found.columns.contains(u"Options"_s)) {
        problems += versionProblems(connection.engine());
        problems += identityProblems(connection.engine(), found.columns.contains(u"FileIdentity"_s));
    }
    return problems;
}

QStringList checkDatabase(const QString& path) {
    const QStringList problems = soundnessProblems(path);
    if (!problems.isEmpty())
        return problems;
    platform::Connection connection;
    connection.open(u"Data Source="_s + path);
    return historyProblems(connection.engine());
}

}  // namespace sorvanto
