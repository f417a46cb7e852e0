// Paints the cells of a record grid (check marks for flags) and gives each kind of value its editor.
#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

namespace platform {

class RecordModel;
class TextBox;

class RecordDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    RecordDelegate(RecordModel& model, QObject* parent);
    /// The open editor, if any.
    QWidget* editor() const { return m_editor; }
    /// Room on each side of a cell's text.
    int cellMargin() const { return m_cellMargin; }
    void setCellMargin(int pixels) { m_cellMargin = pixels; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    /// A text that is cut off shows whole under the mouse.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    bool refusesToLeave(QObject* editor) const;
    TextBox* textEditor(QWidget* parent, int column) const;

    RecordModel& m_model;
    mutable QPointer<QWidget> m_editor;
    mutable bool m_writing = false;
    int m_cellMargin = 10;
};

}  // namespace platform
