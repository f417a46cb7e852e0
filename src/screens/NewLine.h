// A line that a grid has got: it is brought into view and marked as the current one.
#pragma once

#include <QSet>
#include <QString>

namespace platform {
class RecordGrid;
}

namespace sorvanto {

class NewLine {
public:
    /// Notes the lines that are there, by the field that holds their keys. The grid outlives this object.
    NewLine(platform::RecordGrid& grid, QString key);
    /// The line that was not there before; without one nothing changes.
    void show() const;

private:
    QSet<QString> keys() const;
    QString keyOf(int row) const;

    platform::RecordGrid& m_grid;
    const QString m_key;
    const QSet<QString> m_before;
};

}  // namespace sorvanto
