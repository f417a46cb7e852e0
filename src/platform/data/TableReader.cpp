#include "platform/data/TableReader.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"
#include "platform/data/FieldList.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace platform {

TableReader::TableReader(ConnectionPtr connection, const QString& table, const QString& key,
                         const QStringList& expressions)
    : m_connection(std::move(connection)),
      m_sql(u"SELECT %2, %3 FROM %1 WHERE %2 > ?1 ORDER BY %2 LIMIT ?2"_s.arg(table, key,
                                                                              expressions.join(u", "_s))),
      m_after(std::numeric_limits<std::int64_t>::min()) {}

std::vector<KeyedRow> TableReader::next(int most) {
    if (!m_connection || m_connection->state() == 0)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, m_sql);
    const auto query = m_connection->engine().prepare(m_sql, m_sql);
    query->bind(1, QVariant::fromValue<qint64>(m_after));
    query->bind(2, QVariant::fromValue<qint64>(most));
    const FieldList fields(*query);
    std::vector<KeyedRow> rows;
    while (query->step()) {
        std::vector<QVariant> values = fields.read(*query);
        values.erase(values.begin());
        m_after = query->integer(0);
        rows.push_back({m_after, std::move(values)});
    }
    return rows;
}

}  // namespace platform
