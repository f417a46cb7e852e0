// A list in report style: rows of texts under column headings, one row selected at a time. A row can be
// dragged with the mouse; what a drop means is the listener's business, the list moves nothing by itself.
#pragma once

#include <QStringList>
#include <QTreeWidget>

namespace platform {

class ReportList : public QTreeWidget {
    Q_OBJECT
public:
    explicit ReportList(QWidget* parent = nullptr);

    void setColumnCaptions(const QStringList& captions);
    QString columnCaption(int column) const { return headerItem()->text(column); }
    /// Adds a row, at the end or before the row of that index.
    void addRow(const QStringList& texts, int at = -1);
    QStringList row(int row) const;
    void removeRow(int row);
    int count() const { return topLevelItemCount(); }
    /// The selected row, -1 for none.
    int currentRow() const;
    void setCurrentRow(int row);
    /// Whether a row may be dragged at all.
    void setRowDragging(bool on) { m_dragging = on; }

    QSize sizeHint() const override;

signals:
    /// The user begins to drag the selected row.
    void dragStarted();
    /// The dragged row was dropped: the row under the pointer, -1 for none.
    void dropped(int row);

protected:
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int rowAt(const QPoint& place) const;

    bool m_dragging = true, m_dragOver = false;
    int m_dropRow = -1;
};

}  // namespace platform
