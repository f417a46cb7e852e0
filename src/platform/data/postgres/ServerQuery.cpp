#include "platform/data/postgres/ServerQuery.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/postgres/ServerRows.h"
#include "platform/data/postgres/Types.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace platform::postgres {

ServerQuery::ServerQuery(ServerStore& store, const QString& sql, Access access, QString original,
                         bool givesKey)
    : m_store(store), m_sql(sql.toUtf8()), m_command(access), m_original(std::move(original)),
      m_givesKey(givesKey) {}

void ServerQuery::bind(int parameter, const QVariant& value) {
    const auto place = static_cast<std::size_t>(parameter);
    if (m_parameters.size() < place)
        m_parameters.resize(place);
    m_parameters[place - 1] = value;
}

const Result& ServerQuery::result() const {
    if (m_result)
        return *m_result;
    if (m_command == Access::Changes && m_store.refusesChanges)
        throw RuntimeError(error::permissionDenied, u"The records are open for reading only"_s, u"Database"_s,
                           m_original);
    m_result = m_store.session.runOne({m_sql, m_parameters, false}, m_command, m_original);
    m_changedRows = m_result->changedRows();
    if (m_givesKey && m_result->rows() > 0)
        m_store.words.setLastKey(m_result->integer(m_result->rows() - 1, 0));
    return *m_result;
}

bool ServerQuery::step() {
    const int rows = m_givesKey ? (result(), 0) : result().rows();
    if (m_row + 1 >= rows) {
        reset();
        return false;
    }
    ++m_row;
    return true;
}

void ServerQuery::reset() {
    m_result.reset();
    m_row = -1;
}

int ServerQuery::columnCount() const { return m_givesKey ? 0 : result().columns(); }

ResultColumn ServerQuery::column(int column) const { return resultColumn(m_store, result(), column); }

/// A condition is 1 or 0, as with a file.
std::int64_t ServerQuery::integer(int column) const {
    const Result& rows = result();
    return rows.columnType(column) == type::boolean ? rows.bytes(m_row, column) == "t"
                                                    : rows.integer(m_row, column);
}

QVariant ServerQuery::value(int column, const ColumnType& type) const {
    return valueOf(result(), m_row, column, type);
}

}  // namespace platform::postgres
