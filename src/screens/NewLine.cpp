#include "screens/NewLine.h"

#include "platform/basic/Values.h"
#include "platform/widgets/RecordGrid.h"

namespace sorvanto {

NewLine::NewLine(platform::RecordGrid& grid, QString key)
    : m_grid(grid), m_key(std::move(key)), m_before(keys()) {}

QString NewLine::keyOf(int row) const {
    const platform::RecordsetPtr& rows = m_grid.dataSource();
    return platform::nullText(rows->valueAt(row, rows->fieldIndex(m_key)));
}

QSet<QString> NewLine::keys() const {
    QSet<QString> all;
    for (int row = 0; row < m_grid.model()->rowCount(); ++row)
        all.insert(keyOf(row));
    return all;
}

void NewLine::show() const {
    for (int row = 0; row < m_grid.model()->rowCount(); ++row) {
        if (!m_before.contains(keyOf(row)))
            m_grid.showRow(row);
    }
}

}  // namespace sorvanto
