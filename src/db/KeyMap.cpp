#include "db/KeyMap.h"

#include "platform/data/Query.h"

#include <QStringList>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;
using platform::run;

struct Table {
    const char* name;
    const char* key;
    bool renumbered;
    bool ofBatch;  ///< has the key of a batch in LogID
};
constexpr std::array<Table, 7> tables{Table{"Chemical", "ChemicalID", false, false},
                                      Table{"Formula", "FormulaID", false, false},
                                      Table{"Patient", "PatientID", false, false},
                                      Table{"FormChem", "FormChemID", true, false},
                                      Table{"Log", "LogID", true, true},
                                      Table{"LogChem", "LogChemID", true, true},
                                      Table{"RXs", "RXsID", true, true}};

/// In SQL %1 is the table, %2 its key.
QString filled(const char* sql, const Table& table) {
    return QString::fromLatin1(sql)
        .replace("%1"_L1, QLatin1String(table.name))
        .replace("%2"_L1, QLatin1String(table.key));
}

/// Each row as one text of all its columns, in the order of the keys. translate: old keys stand as the new ones,
/// and rows without one are left out.
QString rowsOf(platform::Engine& database, const Table& table, bool translate) {
    QStringList values;
    for (const QString& column : database.columns(QLatin1String(table.name))) {
        QString value = u"t.\"%1\""_s.arg(column);
        const bool isKey = column == QLatin1String(table.key);
        if (translate && isKey)
            value = u"k.kmp_New"_s;
        else if (translate && column == "LogID"_L1)
            value = u"(SELECT kmp_New FROM KeyMap WHERE kmp_Table = 'Log' AND kmp_Old = t.LogID)"_s;
        values << u"quote(%1)"_s.arg(value);
    }
    const QString join =
        translate ? filled(" JOIN KeyMap k ON k.kmp_Table = '%1' AND k.kmp_Old = t.%2", table) : QString();
    return u"SELECT %1 FROM %2 t%3 ORDER BY t.%4"_s.arg(
        values.join(u" || ',' || "_s), QLatin1String(table.name), join, QLatin1String(table.key));
}

}  // namespace

void writeKeyMap(platform::Engine& database, const QString& archive, const QString& oldBatches) {
    run(database, u"DROP TABLE IF EXISTS KeyMap"_s);
    run(database, keyMapTable);
    for (const Table& table : tables) {
        if (!table.renumbered)
            continue;
        QString sql =
            filled("INSERT INTO KeyMap SELECT '%3', '%1', %2, row_number() OVER (ORDER BY %2) FROM %1", table)
                .replace("%3"_L1, archive);
        if (table.ofBatch)
            sql += u" WHERE LogID NOT IN (SELECT LogID FROM Log WHERE %1)"_s.arg(oldBatches);
        run(database, sql);
    }
}

// First to keys that nobody has, so that no order of the rows can make two meet.
void renumber(platform::Engine& database) {
    for (const Table& table : tables) {
        if (!table.renumbered)
            continue;
        run(database,
            filled("UPDATE %1 SET %2 = -(SELECT kmp_New FROM KeyMap WHERE kmp_Table = '%1' AND kmp_Old = %2)",
                   table));
        run(database, filled("UPDATE %1 SET %2 = -%2", table));
        if (table.ofBatch && qstrcmp(table.key, "LogID") != 0)
            run(database,
                filled("UPDATE %1 SET LogID = (SELECT kmp_New FROM KeyMap WHERE kmp_Table = 'Log' AND "
                       "kmp_Old = LogID)",
                       table));
        run(database,
            filled("UPDATE sqlite_sequence SET seq = (SELECT coalesce(max(%2), 0) FROM %1) WHERE name = '%1'",
                   table));
    }
}

QString firstDifference(platform::Engine& before, platform::Engine& after) {
    for (const Table& table : tables) {
        Query old(before, rowsOf(before, table, table.renumbered), {});
        Query now(after, rowsOf(after, table, false), {});
        int row = 0;
        while (true) {
            ++row;
            const bool one = old.step();
            const bool other = now.step();
            if (!one && !other)
                break;
            if (one != other || old.value(0, asText) != now.value(0, asText))
                return u"Row %1 of %2 would not stay as it was"_s.arg(row).arg(QLatin1String(table.name));
        }
    }
    return {};
}

}  // namespace sorvanto
