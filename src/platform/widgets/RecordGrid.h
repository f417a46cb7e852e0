// A table bound to a result set: its current row is the set's current row, and an edited cell is
// written through the set to the table behind it.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>
#include <QTableView>
#include <functional>
#include <vector>

namespace platform {

class RecordDelegate;
class RecordModel;

/// A column as designed; width in pixels at 100 %, 0 stretches. Where texts would be
/// cut, the others give the width that their texts leave empty.
struct GridColumn {
    QString field{};  ///< name in the set, matched without regard to case
    QString caption{};
    int width = 0;
    bool editable = false;
    bool hidden = false;
    QString numberFormat{};  ///< picture, "" as the value stands, "Currency", "Yes/No" for flags as words
    std::function<QString(int row)> text{};  ///< what a column shows that is no field of the set
};

class RecordGrid : public QTableView {
    Q_OBJECT
public:
    explicit RecordGrid(QWidget* parent = nullptr);
    ~RecordGrid() override;

    /// Smaller type and closer columns, for many of them; to be set before the columns.
    void setCompact();
    /// Of a column that shows this text whole.
    int widthOf(const QString& text) const;
    void setColumns(std::vector<GridColumn> columns);
    const std::vector<GridColumn>& columns() const;
    /// A column by its designed caption; throws itemNotFound. The shown caption may differ.
    int columnByCaption(const QString& designCaption) const;
    int columnByField(const QString& field) const;
    void setShownCaption(int column, const QString& caption);
    QString shownCaption(int column) const;
    void setNumberFormat(int column, const QString& picture);

    /// Binds the set (null: none). A field the set lacks shows empty cells.
    void setDataSource(const RecordsetPtr& rows);
    const RecordsetPtr& dataSource() const;

    bool allowUpdate() const;
    void setAllowUpdate(bool on);
    /// Writes a cell being edited to the set and the table. False when that was refused (told to the user).
    bool commitEdit();
    /// Whether a cell is open for typing.
    bool isCellOpen() const;
    /// Closes an open cell; what was typed into it is neither written nor told.
    void dropEdit();
    /// Value of a column in the current row; NULL when there is no row.
    QVariant currentValue(int column) const;
    /// Rows the user has selected. The row that is current after binding is not.
    int selectedCount() const;
    /// Makes the row the current one, marked, and brings it into view; a row that is not there does nothing.
    void showRow(int row);

    /// As high as its rows, between three and forty of them, and its horizontal scroll bar.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Told of a failed cell edit; the cell then shows the stored value again.
    std::function<void()> onEditFailed;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    bool focusNextPrevChild(bool next) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void layOutColumns();
    void shareRoom();
    int contentWidth(int column) const;
    /// Nobody has drawn a column wider or narrower.
    bool widthsAreOurs() const;
    int barHeight() const;
    void followSet();
    bool moveBy(int step);

    RecordModel* m_model;
    RecordDelegate* m_delegate;
    std::vector<int> m_laidOut;  ///< widths as they were shared; empty where no column stretches
};

}  // namespace platform
