// One column of a whole table, for lists that look at every row.
#pragma once

#include "platform/data/TableReader.h"

#include <QHash>
#include <QString>
#include <cstdint>

namespace sorvanto {

/// Reads it in pieces of a thousand rows.
class ColumnTexts {
public:
    /// Throws as openDB.
    ColumnTexts(const QString& table, const QString& key, const QString& column);

    /// False when there was nothing more. Throws as Connection::execute.
    bool readPiece();
    /// By the keys of the rows read so far; a missing value is an empty text.
    const QHash<std::int64_t, QString>& texts() const { return m_texts; }

private:
    platform::TableReader m_reader;
    QHash<std::int64_t, QString> m_texts;
};

/// All of it at once.
QHash<std::int64_t, QString> columnTexts(const QString& table, const QString& key, const QString& column);

}  // namespace sorvanto
