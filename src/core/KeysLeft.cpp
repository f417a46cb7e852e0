#include "core/KeysLeft.h"

#include "platform/data/Connection.h"
#include "platform/data/Query.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::number;

TableKeys keysOf(const platform::Connection& connection, const QString& name, const char* table) {
    const QString own = QString::fromLatin1(table);
    return {name, number(connection.engine(), u"SELECT count(*) FROM %1"_s.arg(own)),
            connection.engine().lastKey(own)};
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
