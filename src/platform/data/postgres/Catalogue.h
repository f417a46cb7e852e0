// The tables of the records on the server, their columns and keys, read at once by one statement.
#pragma once

#include "platform/data/postgres/Session.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace platform::postgres {

class Catalogue {
public:
    struct Column {
        QString name, declaredType;
        int place = 0;  ///< the server's number of the column in its table
        bool isKey = false;
    };
    struct Table {
        QString name;
        std::vector<Column> columns;
        bool isView = false;
    };

    /// Throws general where there are none.
    void read(Session& session);

    QStringList tables() const;
    /// Case is ignored. Null where there is none.
    const Table* table(const QString& name) const;
    const Column* column(const QString& table, const QString& column) const;
    /// By the server's numbers; empty where it is not one of these.
    const Table* table(std::uint32_t number) const;
    static const Column* column(const Table& table, int place);
    /// The column that holds the key of each row; empty where no single one does.
    QString key(const QString& table) const;
    /// As the catalogue spells the name of a table or a column; empty where it has none of the kind.
    QString spelled(const QString& name) const { return m_spellings.value(name.toCaseFolded()); }

private:
    void add(const Result& rows, int row);

    QHash<std::uint32_t, Table> m_tables;
    QHash<QString, std::uint32_t> m_numbers;
    QHash<QString, QString> m_spellings;
};

}  // namespace platform::postgres
