// While a row is dragged, a line shows where it would land: above the row under the pointer, or at the end.
#include "platform/widgets/ReportList.h"

#include "platform/widgets/FocusMark.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace platform {

namespace {

constexpr int numberMargin = 10;

/// The number of each row stands at its left edge; it is no part of the row's texts.
class NumberedRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        if (index.column() != 0)
            return;
        painter->setFont(option.font);
        painter->setPen(theme().secondaryText);
        painter->drawText(option.rect.adjusted(numberMargin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                          QString::number(index.row() + 1));
    }
};

}  // namespace

ReportList::ReportList(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    new FocusMark(*this);
    setAllColumnsShowFocus(true);
    setItemDelegate(new NumberedRows(this));
    setDragDropMode(NoDragDrop);
    header()->setFixedHeight(headPitch);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(false);
    header()->setHighlightSections(false);
}

void ReportList::setColumnCaptions(const QStringList& captions) {
    setColumnCount(static_cast<int>(captions.size()));
    setHeaderLabels(captions);
    header()->setSectionResizeMode(QHeaderView::Stretch);
    for (int i = 0; i < columnCount(); ++i)
        headerItem()->setTextAlignment(i, Qt::AlignVCenter | Qt::AlignRight);
}

void ReportList::addRow(const QStringList& texts, int at) {
    auto* item = new QTreeWidgetItem(texts);
    for (int i = 0; i < columnCount(); ++i)
        item->setTextAlignment(i, Qt::AlignVCenter | Qt::AlignRight);
    item->setSizeHint(0, {0, rowPitch});
    insertTopLevelItem(at < 0 ? count() : at, item);
}

QStringList ReportList::row(int row) const {
    QStringList texts;
    if (const QTreeWidgetItem* item = topLevelItem(row))
        for (int i = 0; i < columnCount(); ++i)
            texts += item->text(i);
    return texts;
}

void ReportList::showRow(int row) {
    if (QTreeWidgetItem* item = topLevelItem(row))
        scrollToItem(item);
}

void ReportList::removeRow(int row) { delete takeTopLevelItem(row); }

int ReportList::currentRow() const {
    const auto selected = selectedItems();
    return selected.isEmpty() ? -1 : indexOfTopLevelItem(selected.first());
}

void ReportList::setCurrentRow(int row) { setCurrentItem(topLevelItem(row)); }

QSize ReportList::sizeHint() const { return {360, headPitch + 6 * rowPitch}; }

int ReportList::rowAt(const QPoint& place) const { return indexOfTopLevelItem(itemAt(place)); }

void ReportList::mousePressEvent(QMouseEvent* event) {
    QTreeWidget::mousePressEvent(event);
    m_pressedAt = event->position().toPoint();
    m_pressed = event->button() == Qt::LeftButton && rowAt(m_pressedAt) >= 0;
}

void ReportList::mouseMoveEvent(QMouseEvent* event) {
    if (!m_pressed || !(event->buttons() & Qt::LeftButton)) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    const QPoint place = event->position().toPoint();
    const bool far = (place - m_pressedAt).manhattanLength() >= QApplication::startDragDistance();
    if (!m_inDrag && m_dragging && far) {
        m_inDrag = true;
        viewport()->setCursor(Qt::ClosedHandCursor);
        emit dragStarted();
    }
    if (m_inDrag)
        dragTo(place);
}

void ReportList::dragTo(const QPoint& place) {
    m_dropRow = rowAt(place);
    if (m_dropRow >= 0)
        scrollToItem(topLevelItem(m_dropRow));
    viewport()->update();
}

void ReportList::mouseReleaseEvent(QMouseEvent* event) {
    const bool drop = m_inDrag && event->button() == Qt::LeftButton;
    const QPoint place = event->position().toPoint();
    const int row = rowAt(place);
    endDrag();
    if (!drop)
        QTreeWidget::mouseReleaseEvent(event);
    else if (viewport()->rect().contains(place))
        emit dropped(row);
}

void ReportList::endDrag() {
    m_pressed = m_inDrag = false;
    viewport()->unsetCursor();
    viewport()->update();
}

void ReportList::keyPressEvent(QKeyEvent* event) {
    const bool arrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (m_inDrag && event->key() == Qt::Key_Escape)
        endDrag();
    else if (arrow && event->modifiers() == Qt::AltModifier)
        moveByKey(event->key() == Qt::Key_Up);
    else
        QTreeWidget::keyPressEvent(event);
}

void ReportList::moveByKey(bool up) {
    const int row = currentRow();
    if (!m_dragging || row < 0 || (up ? row == 0 : row + 1 == count()))
        return;
    emit dragStarted();
    emit dropped(up ? row - 1 : row + 2 < count() ? row + 2 : -1);
}

void ReportList::focusOutEvent(QFocusEvent* event) {
    QTreeWidget::focusOutEvent(event);
    endDrag();
}

void ReportList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (!m_inDrag || count() == 0)
        return;
    const int y = m_dropRow >= 0 ? visualItemRect(topLevelItem(m_dropRow)).top()
                                 : visualItemRect(topLevelItem(count() - 1)).bottom();
    QPainter painter(viewport());
    painter.fillRect(QRect(0, qMax(0, y - 1), viewport()->width(), 2), theme().accent);
}

}  // namespace platform
