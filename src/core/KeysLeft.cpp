#include "core/KeysLeft.h"

#include "platform/data/Connection.h"
#include "platform/data/Sqlite.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::sqlite::Statement;

std::int64_t number(const platform::Connection& connection, const QString& sql) {
    Statement statement(connection.handle(), sql, sql);
    return statement.step() ? statement.integer(0) : 0;
}

TableKeys keysOf(const platform::Connection& connection, const QString& name, const char* table) {
    const QString own = QString::fromLatin1(table);
    return {name, number(connection, u"SELECT count(*) FROM %1"_s.arg(own)),
            number(connection, u"SELECT seq FROM sqlite_sequence WHERE name = '%1'"_s.arg(own))};
}

}  // namespace

std::vector<TableKeys> keysLeft(const platform::Connection& connection) {
    std::vector<TableKeys> tables{keysOf(connection, u"Logs"_s, "Log"),
                                  keysOf(connection, u"Prescriptions"_s, "RXs"),
                                  keysOf(connection, u"Patients"_s, "Patient"),
                                  keysOf(connection, u"Formulas"_s, "Formula"),
                                  keysOf(connection, u"Ingredients"_s, "FormChem"),
                                  keysOf(connection, u"Chemicals"_s, "Chemical")};
    std::stable_sort(tables.begin(), tables.end(),
                     [](const TableKeys& a, const TableKeys& b) { return a.left() < b.left(); });
    return tables;
}

}  // namespace sorvanto
