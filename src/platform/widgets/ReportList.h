// A list in report style: numbered rows of texts under column headings, one row selected at a time. A row can be
// dragged with the mouse, inside the list alone; what a drop means is the listener's business, the list
// moves nothing by itself. Alt with the up or down arrow stands for dropping the selected row one place off.
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
    /// Brings the row into view.
    void showRow(int row);
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
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int rowAt(const QPoint& place) const;
    void dragTo(const QPoint& place);
    void endDrag();
    void moveByKey(bool up);

    bool m_dragging = true;  // allowed
    bool m_pressed = false, m_inDrag = false;
    QPoint m_pressedAt;
    int m_dropRow = -1;
};

}  // namespace platform
