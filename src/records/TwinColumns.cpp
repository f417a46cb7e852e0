#include "records/TwinColumns.h"

#include "platform/basic/Values.h"
#include "platform/data/TableReader.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QHash>
#include <QSet>
#include <exception>
#include <memory>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

constexpr auto chemicalTable = "Chemical"_L1;

struct TwinColumn {
    const char* column;
    const char* caption;  ///< English
    int characters;
};
constexpr TwinColumn chemicalColumns[] = {
    {"chm_Lot", "Lot", 20}, {"chm_Units", "Units", 10}, {"chm_Supplier", "Supplier", 28}};

bool hasColumn(const Recordset& rows, const QString& column) {
    for (int field = 0; field < rows.fieldCount(); ++field) {
        if (rows.fieldInfo(field).baseColumn.compare(column, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// Whether two rows show the same in every column but the key.
bool hasTwins(const Recordset& rows) {
    QSet<QStringList> shown;
    for (int row = 0; row < rows.recordCount(); ++row) {
        QStringList texts;
        for (int field = 1; field < rows.fieldCount(); ++field)
            texts << nullText(rows.valueAt(row, field));
        if (shown.contains(texts))
            return true;
        shown.insert(texts);
    }
    return false;
}

/// In English where the language can't give it.
QString captionOf(const TwinColumn& twin) {
    try {
        return translated(QLatin1String(twin.caption));
    } catch (const std::exception&) {
        return QLatin1String(twin.caption);
    }
}

using Texts = QHash<std::int64_t, QString>;

/// The values of a column by their rows' keys.
std::shared_ptr<const Texts> textsOf(const QString& table, const QString& key, const QString& column) {
    constexpr int piece = 1000;
    auto texts = std::make_shared<Texts>();
    TableReader reader(openDB(), table, key, {column});
    for (auto rows = reader.next(piece); !rows.empty(); rows = reader.next(piece)) {
        for (const KeyedRow& row : rows)
            texts->insert(row.key, nullText(row.values.front()));
    }
    return texts;
}

}  // namespace

void addTwinColumns(std::vector<GridColumn>& columns, const RecordsetPtr& rows, const ListMeasure& measure) {
    const FieldInfo& key = rows->fieldInfo(0);
    if (key.baseTable.compare(chemicalTable, Qt::CaseInsensitive) != 0 || !hasTwins(*rows))
        return;
    for (const TwinColumn& twin : chemicalColumns) {
        if (hasColumn(*rows, QLatin1String(twin.column)))
            continue;
        const auto texts = textsOf(key.baseTable, key.baseColumn, QLatin1String(twin.column));
        GridColumn column;
        column.caption = captionOf(twin);
        column.width = twin.characters * measure.characterWidth;
        column.text = [rows, texts](int row) { return texts->value(rows->valueAt(row, 0).toLongLong()); };
        columns.push_back(std::move(column));
    }
}

}  // namespace sorvanto
