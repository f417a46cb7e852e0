#include "records/ColumnTexts.h"

#include "platform/basic/Values.h"
#include "platform/data/TableReader.h"
#include "shared/basMain.h"

namespace sorvanto {

using namespace platform;

QHash<std::int64_t, QString> columnTexts(const QString& table, const QString& key, const QString& column) {
    constexpr int piece = 1000;
    QHash<std::int64_t, QString> texts;
    TableReader reader(openDB(), table, key, {column});
    for (auto rows = reader.next(piece); !rows.empty(); rows = reader.next(piece)) {
        for (const KeyedRow& row : rows)
            texts.insert(row.key, nullText(row.values.front()));
    }
    return texts;
}

}  // namespace sorvanto
