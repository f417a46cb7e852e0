#include "records/TwinColumns.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Query.h"
#include "platform/data/TableReader.h"
#include "records/ColumnTexts.h"
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
constexpr auto nameColumn = "chm_Name"_L1;

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

/// One look at the index of names: without two equal ones there are no twins in a list that shows them.
bool someNameComesTwice() {
    return number(deref(openDB()).engine(),
                  u"SELECT EXISTS (SELECT 1 FROM Chemical GROUP BY chm_Name HAVING count(*) > 1)"_s) != 0;
}

/// Whether two rows of the list show the same in every column but the key.
bool hasTwins(const Recordset& rows) {
    constexpr int piece = 1000;
    if (hasColumn(rows, nameColumn) && !someNameComesTwice())
        return false;
    QStringList columns;
    for (int field = 1; field < rows.fieldCount(); ++field)
        columns << rows.fieldInfo(field).baseColumn;
    QSet<qint64> listed;
    for (std::int64_t row = 0; row < rows.recordCount(); ++row)
        listed.insert(rows.valueAt(row, 0).toLongLong());
    QSet<QStringList> shown;
    TableReader reader(openDB(), rows.fieldInfo(0).baseTable, rows.fieldInfo(0).baseColumn, columns);
    for (auto read = reader.next(piece); !read.empty(); read = reader.next(piece)) {
        for (const KeyedRow& row : read) {
            if (!listed.contains(row.key))
                continue;
            QStringList texts;
            for (const QVariant& value : row.values)
                texts << nullText(value);
            if (shown.contains(texts))
                return true;
            shown.insert(texts);
        }
    }
    return false;
}

/// All of the list's columns are the chemical table's own.
bool listsChemicals(const Recordset& rows) {
    for (int field = 0; field < rows.fieldCount(); ++field) {
        if (rows.fieldInfo(field).baseTable.compare(chemicalTable, Qt::CaseInsensitive) != 0)
            return false;
    }
    return rows.fieldCount() > 1;
}

/// In English where the language can't give it.
QString captionOf(const TwinColumn& twin) {
    try {
        return translated(QLatin1String(twin.caption));
    } catch (const std::exception&) {
        return QLatin1String(twin.caption);
    }
}

}  // namespace

void addTwinColumns(std::vector<GridColumn>& columns, const RecordsetPtr& rows, const ListMeasure& measure) {
    std::vector<TwinColumn> missing;
    for (const TwinColumn& twin : chemicalColumns) {
        if (!hasColumn(*rows, QLatin1String(twin.column)))
            missing.push_back(twin);
    }
    if (missing.empty() || !listsChemicals(*rows) || !hasTwins(*rows))
        return;
    const FieldInfo& key = rows->fieldInfo(0);
    for (const TwinColumn& twin : missing) {
        const auto texts = std::make_shared<const QHash<std::int64_t, QString>>(
            columnTexts(key.baseTable, key.baseColumn, QLatin1String(twin.column)));
        GridColumn column;
        column.caption = captionOf(twin);
        column.width = twin.characters * measure.characterWidth;
        column.text = [rows, texts](int row) { return texts->value(rows->valueAt(row, 0).toLongLong()); };
        columns.push_back(std::move(column));
    }
}

}  // namespace sorvanto
