#include "core/TraceList.h"

#include "platform/widgets/ColumnRoom.h"
#include "platform/widgets/StyleShapes.h"
#include "platform/widgets/Theme.h"

#include <QAbstractTableModel>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace sorvanto {

class TraceRowsModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setColumns(std::vector<TraceColumn> columns) {
        beginResetModel();
        m_columns = std::move(columns);
        m_count = 0;
        m_rows.clear();
        m_texts = {};
        endResetModel();
    }
    void setRows(std::vector<QStringList> rows, int quiet) {
        const std::size_t count = rows.size();
        setRows(count, {}, quiet, std::move(rows));
    }
    /// texts: none where the rows are given.
    void setRows(std::size_t count, TraceList::RowTexts texts, int quiet,
                 std::vector<QStringList> rows = {}) {
        beginResetModel();
        m_count = static_cast<int>(count);
        m_rows = std::move(rows);
        m_texts = std::move(texts);
        m_lastRow = -1;
        m_quiet = quiet;
        m_ticks.clear();
        endResetModel();
    }
    void addRows(std::vector<QStringList> rows) {
        const int first = m_count;
        beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
        m_count += static_cast<int>(rows.size());
        std::move(rows.begin(), rows.end(), std::back_inserter(m_rows));
        endInsertRows();
    }
    /// A box for each row; there are none at first.
    void setTicks(std::vector<bool> ticks) {
        beginResetModel();
        m_ticks = std::move(ticks);
        endResetModel();
    }
    const std::vector<bool>& ticks() const { return m_ticks; }
    bool isTicked(int row) const { return m_ticks.at(static_cast<std::size_t>(row)); }
    void tick(int row, bool on) {
        m_ticks.at(static_cast<std::size_t>(row)) = on;
        emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
    }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_count; }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || section >= columnCount())
            return {};
        const TraceColumn& column = m_columns[static_cast<std::size_t>(section)];
        if (role == Qt::TextAlignmentRole)
            return alignment(column);
        return role == Qt::DisplayRole ? column.heading : QVariant();
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
            return textsOf(index.row()).value(index.column());
        if (role == Qt::TextAlignmentRole)
            return alignment(m_columns[static_cast<std::size_t>(index.column())]);
        if (role == Qt::CheckStateRole && index.column() == 0 && !m_ticks.empty())
            return m_ticks[static_cast<std::size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
        if (role == Qt::ForegroundRole && index.row() >= rowCount() - m_quiet)
            return QBrush(platform::theme().warning);
        return {};
    }

private:
    static QVariant alignment(const TraceColumn& column) {
        return QVariant::fromValue(
            Qt::Alignment(Qt::AlignVCenter | (column.right ? Qt::AlignRight : Qt::AlignLeft)));
    }

    const QStringList& textsOf(int row) const {
        if (!m_texts)
            return m_rows[static_cast<std::size_t>(row)];
        if (m_lastRow != row)
            m_last = m_texts(static_cast<std::size_t>(row));
        m_lastRow = row;
        return m_last;
    }

    std::vector<TraceColumn> m_columns;
    int m_count = 0;
    std::vector<QStringList> m_rows;
    TraceList::RowTexts m_texts;
    mutable int m_lastRow = -1;  ///< the cells of a row are looked at one after the other
    mutable QStringList m_last;
    std::vector<bool> m_ticks;
    int m_quiet = 0;
};

namespace {

constexpr int leastOpen = 90, enoughOpen = 240;  // of a column without a width
constexpr int cellMargin = 10;                   // as the headings have

/// Texts stand below their headings; what doesn't fit ends in a sign and shows whole under the mouse. The row that the keys
/// stand on has a frame.
class CellPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem cell(option);
        initStyleOption(&cell, index);
        const QStyle* style = cell.widget->style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
        QRect room = cell.rect.adjusted(cellMargin, 0, -cellMargin, 0);
        if (cell.features.testFlag(QStyleOptionViewItem::HasCheckIndicator))
            room.setLeft(drawBox(cell, room, *painter) + cellMargin);
        painter->setFont(cell.font);
        style->drawItemText(painter, room, static_cast<int>(cell.displayAlignment) | Qt::TextSingleLine,
                            cell.palette, cell.state.testFlag(QStyle::State_Enabled),
                            cell.fontMetrics.elidedText(cell.text, Qt::ElideRight, room.width()),
                            QPalette::Text);
        const auto* rows = qobject_cast<const QTableView*>(cell.widget);
        if (rows && rows->hasFocus() && rows->currentIndex().row() == index.row())
            platform::drawRowMark(*painter, cell.rect, index.column() == 0,
                                  index.column() == index.model()->columnCount() - 1);
    }

private:
    /// The box of a row that can be ticked; gives its right edge.
    static int drawBox(const QStyleOptionViewItem& cell, const QRect& room, QPainter& painter) {
        const QStyle* style = cell.widget->style();
        const int side = style->pixelMetric(QStyle::PM_IndicatorWidth, &cell, cell.widget);
        QStyleOptionViewItem box(cell);
        box.rect = QStyle::alignedRect(cell.direction, Qt::AlignLeft | Qt::AlignVCenter, {side, side}, room);
        box.state.setFlag(QStyle::State_HasFocus, false);
        box.state |= cell.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
        style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, &painter, cell.widget);
        return box.rect.right();
    }
};

}  // namespace

TraceList::TraceList(const QString& name, QWidget* parent)
    : ListCard(name, 1, parent), m_model(new TraceRowsModel(this)) {
    setModel(*m_model);
    setFocusProxy(&view());
    view().setItemDelegate(new CellPainter(&view()));
    connect(&view(), &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { emit opened(index.row()); });
    connect(&view(), &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == 0)
            toggle({index.row()});
    });
    connect(view().selectionModel(), &QItemSelectionModel::selectionChanged, this, &TraceList::choiceChanged);
}

void TraceList::setColumns(std::vector<TraceColumn> columns) {
    m_columns = columns;
    m_model->setColumns(std::move(columns));
    layOutColumns();
}

void TraceList::setRows(std::vector<QStringList> rows, int quiet) {
    m_model->setRows(std::move(rows), quiet);
    layOutColumns();
    emit choiceChanged();
}

void TraceList::setRows(std::size_t count, RowTexts texts, int quiet) {
    m_model->setRows(count, std::move(texts), quiet);
    layOutColumns();
    emit choiceChanged();
}

void TraceList::addRows(std::vector<QStringList> rows) {
    if (rows.empty())
        return;
    const bool shapesColumns = rowCount() < platform::rowsLookedAt;
    m_model->addRows(std::move(rows));
    if (shapesColumns)
        layOutColumns();
}

void TraceList::choose(int row) { view().selectRow(row); }

int TraceList::rowCount() const { return m_model->rowCount(); }

std::vector<int> TraceList::chosen() const {
    std::vector<int> rows;
    for (const QModelIndex& index : view().selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void TraceList::setTicked() {
    m_model->setTicks(std::vector<bool>(static_cast<std::size_t>(rowCount()), true));
    view().selectRow(0);  // the space bar has a row to start with
    emit tickChanged();
}

std::vector<int> TraceList::ticked() const {
    std::vector<int> rows;
    for (std::size_t row = 0; row < m_model->ticks().size(); ++row) {
        if (m_model->ticks()[row])
            rows.push_back(static_cast<int>(row));
    }
    return rows;
}

/// All of them get the tick that the first has not.
void TraceList::toggle(const std::vector<int>& rows) {
    if (m_model->ticks().empty() || rows.empty())
        return;
    const bool on = !m_model->isTicked(rows.front());
    for (const int row : rows)
        m_model->tick(row, on);
    emit tickChanged();
}

bool TraceList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        const bool moves = key->key() == Qt::Key_Down || key->key() == Qt::Key_Up;
        if (moves && view().currentIndex().isValid() && chosen().empty()) {
            choose(view().currentIndex().row());  // the framed one first
            return true;
        }
        if (enter && view().currentIndex().isValid()) {
            emit opened(view().currentIndex().row());
            return true;
        }
        if (key->key() == Qt::Key_Space && !m_model->ticks().empty()) {
            toggle(chosen());
            return true;
        }
    }
    return ListCard::eventFilter(watched, event);
}

// The last of the columns without a width stretches, so that nothing is left over.
void TraceList::layOutColumns() {
    QHeaderView& header = *view().horizontalHeader();
    std::vector<platform::ColumnWish> wishes;
    int lastOpen = -1;
    for (int i = 0; i < static_cast<int>(m_columns.size()); ++i) {
        const int designed = m_columns[static_cast<std::size_t>(i)].width;
        lastOpen = designed == 0 ? i : lastOpen;
        const int text = platform::widestText(*m_model, i, view().fontMetrics());
        wishes.push_back({designed, header.sectionSizeHint(i), text + 2 * cellMargin + 2});
    }
    const std::vector<int> widths =
        platform::sharedWidths(wishes, view().viewport()->width(), leastOpen, enoughOpen);
    for (int i = 0; i < static_cast<int>(widths.size()); ++i) {
        header.setSectionResizeMode(i, i == lastOpen ? QHeaderView::Stretch : QHeaderView::Interactive);
        if (i != lastOpen)
            header.resizeSection(i, widths[static_cast<std::size_t>(i)]);
    }
}

}  // namespace sorvanto
