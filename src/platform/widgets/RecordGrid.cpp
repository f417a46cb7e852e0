// The view: columns, keys and the tie between its current row and the set's.
#include "platform/widgets/RecordGrid.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/ColumnRoom.h"
#include "platform/widgets/FocusMark.h"
#include "platform/widgets/RecordDelegate.h"
#include "platform/widgets/RecordModel.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/Theme.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int compactText = 12;  // pixels
constexpr int compactMargin = 6;
constexpr int leastOpen = 72, enoughOpen = 220;  // of a column that stretches, in pixels
constexpr int mostRows = 40;                     // more are scrolled, however high the window

}  // namespace

RecordGrid::RecordGrid(QWidget* parent)
    : QTableView(parent), m_model(new RecordModel(this)), m_delegate(new RecordDelegate(*m_model, this)) {
    setItemDelegate(m_delegate);
    setModel(m_model);
    setUpRows(*this);
    setFrameShape(QFrame::NoFrame);
    setAlternatingRowColors(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setCornerButtonEnabled(false);
    new FocusMark(*this);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setEditTriggers(AnyKeyPressed | DoubleClicked | EditKeyPressed | SelectedClicked);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    verticalHeader()->setMinimumSectionSize(rowPitch);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setMinimumSectionSize(40);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &RecordGrid::updateGeometry);
    connect(m_model, &RecordModel::setChanged, this, &RecordGrid::followSet);
    connect(m_model, &RecordModel::editFailed, this, [this] {
        if (onEditFailed)
            onEditFailed();
    });
}

RecordGrid::~RecordGrid() { setModel(nullptr); }

void RecordGrid::setColumns(std::vector<GridColumn> columns) {
    m_model->setColumns(std::move(columns));
    layOutColumns();
}

void RecordGrid::setCompact() {
    QFont small = font();
    small.setPixelSize(compactText);
    setFont(small);
    horizontalHeader()->setFont(small);
    setLook(*horizontalHeader(), "dense");
    m_delegate->setCellMargin(compactMargin);
}

int RecordGrid::widthOf(const QString& text) const {
    return fontMetrics().horizontalAdvance(text) + 2 * m_delegate->cellMargin() + 2;
}

void RecordGrid::layOutColumns() {
    m_laidOut.clear();
    for (int i = 0; i < static_cast<int>(columns().size()); ++i) {
        const GridColumn& column = columns()[static_cast<std::size_t>(i)];
        setColumnHidden(i, column.hidden);
        horizontalHeader()->setSectionResizeMode(i, column.width > 0 ? QHeaderView::Interactive
                                                                     : QHeaderView::Stretch);
        if (column.width > 0)
            setColumnWidth(i, std::max(column.width, horizontalHeader()->sectionSizeHint(i)));
    }
    shareRoom();
}

int RecordGrid::contentWidth(int column) const {
    return widestText(*m_model, column, fontMetrics()) + 2 * m_delegate->cellMargin() + 2;
}

bool RecordGrid::widthsAreOurs() const {
    for (std::size_t i = 0; i < m_laidOut.size(); ++i)
        if (const int column = static_cast<int>(i);
            !isColumnHidden(column) &&
            horizontalHeader()->sectionResizeMode(column) == QHeaderView::Interactive &&
            columnWidth(column) != m_laidOut[i])
            return false;
    return true;
}

// The last of the open columns stretches, so that no width is left over.
void RecordGrid::shareRoom() {
    std::vector<ColumnWish> wishes;
    std::vector<int> shown;
    int lastOpen = -1;
    for (int i = 0; i < static_cast<int>(columns().size()); ++i) {
        if (isColumnHidden(i))
            continue;
        shown.push_back(i);
        const int designed = columns()[static_cast<std::size_t>(i)].width;
        lastOpen = designed == 0 ? i : lastOpen;
        wishes.push_back({designed, horizontalHeader()->sectionSizeHint(i), contentWidth(i)});
    }
    if (lastOpen < 0 || !widthsAreOurs())
        return;
    const std::vector<int> widths = sharedWidths(wishes, viewport()->width(), leastOpen, enoughOpen);
    m_laidOut.assign(columns().size(), 0);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const int column = shown[i];
        horizontalHeader()->setSectionResizeMode(column, column == lastOpen ? QHeaderView::Stretch
                                                                            : QHeaderView::Interactive);
        if (column != lastOpen)
            setColumnWidth(column, widths[i]);
        m_laidOut[static_cast<std::size_t>(column)] = columnWidth(column);
    }
}

void RecordGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    shareRoom();
}

const std::vector<GridColumn>& RecordGrid::columns() const { return m_model->columns(); }

int RecordGrid::columnByCaption(const QString& designCaption) const {
    for (std::size_t i = 0; i < columns().size(); ++i)
        if (columns()[i].caption == designCaption)
            return static_cast<int>(i);
    throw RuntimeError(error::itemNotFound, u"The grid has no column \"%1\""_s.arg(designCaption));
}

int RecordGrid::columnByField(const QString& field) const {
    for (std::size_t i = 0; i < columns().size(); ++i)
        if (columns()[i].field.compare(field, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    throw RuntimeError(error::itemNotFound, u"The grid has no field \"%1\""_s.arg(field));
}

void RecordGrid::setShownCaption(int column, const QString& caption) {
    m_model->setShownCaption(column, caption);
    // A longer heading in another language takes the room that it needs.
    if (columns().at(static_cast<std::size_t>(column)).width > 0 && m_laidOut.empty())
        setColumnWidth(column, std::max(columnWidth(column), horizontalHeader()->sectionSizeHint(column)));
    shareRoom();
}

QString RecordGrid::shownCaption(int column) const { return m_model->shownCaption(column); }

void RecordGrid::setNumberFormat(int column, const QString& picture) {
    m_model->setNumberFormat(column, picture);
}

void RecordGrid::setDataSource(const RecordsetPtr& rows) {
    m_model->setRows(rows);
    followSet();
}

const RecordsetPtr& RecordGrid::dataSource() const { return m_model->rows(); }

void RecordGrid::followSet() {
    updateGeometry();
    shareRoom();
    const auto& rows = m_model->rows();
    const auto row = rows && rows->isOpen() ? static_cast<int>(rows->position()) : -1;
    if (row == currentIndex().row())
        return;
    int column = qMax(0, currentIndex().column());
    while (column < m_model->columnCount() && isColumnHidden(column))
        ++column;
    const bool had = selectedCount() > 0;
    selectionModel()->setCurrentIndex(m_model->index(row, column),
                                      had ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                          : QItemSelectionModel::NoUpdate);
}

bool RecordGrid::allowUpdate() const { return m_model->allowUpdate(); }

void RecordGrid::setAllowUpdate(bool on) { m_model->setAllowUpdate(on); }

bool RecordGrid::commitEdit() {
    QWidget* editor = m_delegate->editor();
    if (!editor || state() != EditingState)
        return true;
    const bool modified = qobject_cast<QLineEdit*>(editor)->isModified();
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return !modified || m_model->lastEditTaken();
}

bool RecordGrid::isCellOpen() const { return m_delegate->editor() && state() == EditingState; }

void RecordGrid::dropEdit() {
    if (isCellOpen())
        closeEditor(m_delegate->editor(), QAbstractItemDelegate::RevertModelCache);
}

QVariant RecordGrid::currentValue(int column) const {
    const auto& rows = m_model->rows();
    return rows && rows->isOpen() ? m_model->value(static_cast<int>(rows->position()), column) : QVariant();
}

int RecordGrid::selectedCount() const { return static_cast<int>(selectionModel()->selectedRows().size()); }

void RecordGrid::showRow(int row) {
    if (row < 0 || row >= m_model->rowCount())
        return;
    int column = 0;
    while (isColumnHidden(column) && column + 1 < m_model->columnCount())
        ++column;
    setCurrentIndex(m_model->index(row, column));
    scrollTo(currentIndex());
}

// The bar takes its height from the rows while the columns need it.
int RecordGrid::barHeight() const {
    const QScrollBar* bar = horizontalScrollBar();
    return bar->maximum() > bar->minimum() ? bar->sizeHint().height() : 0;
}

QSize RecordGrid::sizeHint() const {
    return {480, headPitch + rowPitch * qBound(3, m_model->rowCount(), mostRows) + 2 + barHeight()};
}

QSize RecordGrid::minimumSizeHint() const { return {160, headPitch + rowPitch * 2 + barHeight()}; }

void RecordGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (current.row() != previous.row())
        viewport()->update();  // the whole row is marked, not the cell alone
    if (current.isValid() && current.row() != previous.row() && !m_model->makeCurrent(current.row()))
        QMetaObject::invokeMethod(this, &RecordGrid::followSet, Qt::QueuedConnection);
}

bool RecordGrid::moveBy(int step) {
    int row = currentIndex().row(), column = currentIndex().column();
    const int columns = m_model->columnCount();
    do {
        column += step;
        if (column < 0 || column >= columns) {
            row += step;
            column = step > 0 ? 0 : columns - 1;
        }
        if (row < 0 || row >= m_model->rowCount())
            return false;
    } while (isColumnHidden(column));
    setCurrentIndex(m_model->index(row, column));
    return true;
}

QModelIndex RecordGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action != MoveNext && action != MovePrevious)
        return QTableView::moveCursor(action, modifiers);
    return moveBy(action == MoveNext ? 1 : -1) ? currentIndex() : QModelIndex();
}

bool RecordGrid::focusNextPrevChild(bool next) {
    if (allowUpdate() && state() != EditingState && currentIndex().isValid() && moveBy(next ? 1 : -1))
        return true;
    return QTableView::focusNextPrevChild(next);
}

void RecordGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const bool entered = hint == QAbstractItemDelegate::SubmitModelCache;
    const bool moves =
        hint == QAbstractItemDelegate::EditNextItem || hint == QAbstractItemDelegate::EditPreviousItem;
    QTableView::closeEditor(editor, moves || entered ? QAbstractItemDelegate::NoHint : hint);
    if (moves)
        moveBy(hint == QAbstractItemDelegate::EditNextItem ? 1 : -1);
    if (entered && currentIndex().row() + 1 < m_model->rowCount())
        setCurrentIndex(currentIndex().siblingAtRow(currentIndex().row() + 1));
}

void RecordGrid::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || state() == EditingState) {
        QTableView::keyPressEvent(event);
        return;
    }
    if (!allowUpdate())
        event->ignore();
    else if (currentIndex().isValid() && currentIndex().row() + 1 < m_model->rowCount())
        setCurrentIndex(currentIndex().siblingAtRow(currentIndex().row() + 1));
}

}  // namespace platform
