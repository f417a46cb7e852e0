#include "records/ColumnTexts.h"

#include "platform/basic/Values.h"
#include "shared/basMain.h"

namespace sorvanto {

ColumnTexts::ColumnTexts(const QString& table, const QString& key, const QString& column)
    : m_reader(openDB(), table, key, {column}) {}

bool ColumnTexts::readPiece() {
    constexpr int piece = 1000;
    const std::vector<platform::KeyedRow> rows = m_reader.next(piece);
    for (const platform::KeyedRow& row : rows)
        m_texts.insert(row.key, platform::nullText(row.values.front()));
    return !rows.empty();
}

QHash<std::int64_t, QString> columnTexts(const QString& table, const QString& key, const QString& column) {
    ColumnTexts reader(table, key, column);
    while (reader.readPiece()) {
    }
    return reader.texts();
}

}  // namespace sorvanto
