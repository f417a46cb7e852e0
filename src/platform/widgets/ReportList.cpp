// While a row is dragged, a line shows where it would land: above the row under the pointer, or at the end.
#include "platform/widgets/ReportList.h"

#include "platform/widgets/Theme.h"

#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>

namespace platform {

namespace {

constexpr int rowPixels = 30;
constexpr int headerPixels = 32;
constexpr auto rowFormat = "application/x-report-list-row";

}  // namespace

ReportList::ReportList(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    setAllColumnsShowFocus(true);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    header()->setFixedHeight(headerPixels);
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
    item->setSizeHint(0, {0, rowPixels});
    insertTopLevelItem(at < 0 ? count() : at, item);
}

QStringList ReportList::row(int row) const {
    QStringList texts;
    if (const QTreeWidgetItem* item = topLevelItem(row))
        for (int i = 0; i < columnCount(); ++i)
            texts += item->text(i);
    return texts;
}

void ReportList::removeRow(int row) {
    delete takeTopLevelItem(row);
}

int ReportList::currentRow() const {
    const auto selected = selectedItems();
    return selected.isEmpty() ? -1 : indexOfTopLevelItem(selected.first());
}

void ReportList::setCurrentRow(int row) {
    setCurrentItem(topLevelItem(row));
}

QSize ReportList::sizeHint() const {
    return {360, headerPixels + 6 * rowPixels};
}

int ReportList::rowAt(const QPoint& place) const {
    return indexOfTopLevelItem(itemAt(place));
}

void ReportList::startDrag(Qt::DropActions) {
    const int row = currentRow();
    if (row < 0 || !m_dragging)
        return;
    emit dragStarted();
    auto* drag = new QDrag(this);
    auto* data = new QMimeData;
    data->setData(QLatin1String(rowFormat), QByteArray::number(row));
    drag->setMimeData(data);
    const QRect place = visualItemRect(topLevelItem(row)).intersected(viewport()->rect());
    drag->setPixmap(viewport()->grab(place));
    drag->exec(Qt::MoveAction);
}

void ReportList::dragEnterEvent(QDragEnterEvent* event) {
    if (event->source() == this)
        event->acceptProposedAction();
    else
        event->ignore();
}

void ReportList::dragMoveEvent(QDragMoveEvent* event) {
    if (event->source() != this) {
        event->ignore();
        return;
    }
    m_dropRow = rowAt(event->position().toPoint());
    m_dragOver = true;
    viewport()->update();
    event->acceptProposedAction();
}

void ReportList::dragLeaveEvent(QDragLeaveEvent* event) {
    m_dragOver = false;
    viewport()->update();
    event->accept();
}

void ReportList::dropEvent(QDropEvent* event) {
    m_dragOver = false;
    viewport()->update();
    if (event->source() != this) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept();
    emit dropped(rowAt(event->position().toPoint()));
}

void ReportList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (!m_dragOver || count() == 0)
        return;
    const int y = m_dropRow >= 0 ? visualItemRect(topLevelItem(m_dropRow)).top()
                                 : visualItemRect(topLevelItem(count() - 1)).bottom();
    QPainter painter(viewport());
    painter.fillRect(QRect(0, qMax(0, y - 1), viewport()->width(), 2), theme().accent);
}

}  // namespace platform
