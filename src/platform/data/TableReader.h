// Reads chosen columns of one table in pieces, in the order of its key. Nothing is locked between two pieces,
// and a row that is written meanwhile is read as it then stands.
#pragma once

#include "platform/data/Connection.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <vector>

namespace platform {

struct KeyedRow {
    std::int64_t key = 0;
    std::vector<QVariant> values;
};

class TableReader {
public:
    /// expressions: of columns, in the engine's own words, never with a text that a user typed.
    TableReader(ConnectionPtr connection, const QString& table, const QString& key,
                const QStringList& expressions);

    /// At most so many rows after those read so far; none at the end. Throws as Connection::execute.
    std::vector<KeyedRow> next(int most);

private:
    ConnectionPtr m_connection;
    QString m_sql;
    std::int64_t m_after;
};

}  // namespace platform
