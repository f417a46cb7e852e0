#include "core/KeysLeft.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

struct KeyedTable {
    const char* name;  ///< as the user knows it, in English
    const char* table;
};

constexpr KeyedTable keyedTables[] = {
    {"Logs", "Log"},         {"Prescriptions", "RXs"},    {"Patients", "Patient"},
    {"Formulas", "Formula"}, {"Ingredients", "FormChem"}, {"Chemicals", "Chemical"}};

}  // namespace

std::vector<TableKeys> keysLeft(const platform::Connection& connection) {
    platform::Engine& engine = connection.engine();
    QStringList names;
    for (const KeyedTable& one : keyedTables) {
        names << QString::fromLatin1(one.table);
        if (!engine.hasKeys(names.last()))
            throw platform::RuntimeError(platform::error::statement,
                                         u"There is no table %1"_s.arg(names.last()), u"Database"_s);
    }
    std::vector<TableKeys> tables;
    for (const std::int64_t last : engine.lastKeys(names))
        tables.push_back({QString::fromLatin1(keyedTables[tables.size()].name), last});
    std::stable_sort(tables.begin(), tables.end(),
                     [](const TableKeys& a, const TableKeys& b) { return a.left() < b.left(); });
    return tables;
}

std::int64_t rowsWithKeys(const platform::Connection& connection) {
    std::int64_t rows = 0;
    for (const KeyedTable& one : keyedTables)
        rows +=
            platform::number(connection.engine(), u"SELECT count(*) FROM %1"_s.arg(QLatin1String(one.table)));
    return rows;
}

}  // namespace sorvanto
