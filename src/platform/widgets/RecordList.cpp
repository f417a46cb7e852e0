#include "platform/widgets/RecordList.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/ColumnRoom.h"
#include "platform/widgets/OneLine.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/SearchBox.h"
#include "platform/widgets/StyleParts.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/WidestText.h"

#include <QAction>
#include <QFrame>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int filterHeight = 32;
constexpr int textSize = 12;  // pixels
constexpr int dayWidth = 128;
constexpr int roomForDays = 520;  // in a narrower list they stand below the filter
constexpr int cellMargin = 10;
constexpr int leastWidth = 132;  // of the column that takes what is left
constexpr int enoughForNames = 196;
constexpr int slack = 4;  // of a heading or a text

/// The record on show is filled and half bold; the row that the keys stand on has a frame.
class RowPainter : public QStyledItemDelegate {
public:
    RowPainter(const RecordList& list, QTableView& view)
        : QStyledItemDelegate(&view), m_list(list), m_view(view) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const bool current = m_list.model().keyAt(index.row()) == m_list.currentKey();
        const Theme& colors = theme();
        painter->fillRect(option.rect, current                ? colors.softAccent
                                       : index.row() % 2 != 0 ? colors.alternateRow
                                                              : colors.surface);
        QFont font = option.font;
        if (current)
            font.setWeight(QFont::DemiBold);
        painter->setFont(font);
        painter->setPen(option.state & QStyle::State_Enabled ? colors.text : colors.disabledText);
        const QRect room = option.rect.adjusted(cellMargin, 0, -cellMargin, 0);
        const auto alignment = index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        painter->drawText(
            room, static_cast<int>(alignment) | Qt::TextSingleLine,
            QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideRight, room.width()));
        if (current && m_list.marksDeletion())
            drawDeletion(*painter, option.rect, index.column());
        if (m_view.hasFocus() && m_view.currentIndex().row() == index.row())
            drawRowMark(*painter, option.rect, index.column() == 0,
                        index.column() == m_list.model().columnCount() - 1);
    }

    /// A text that is cut off shows whole under the mouse.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        const QString text = index.data().toString();
        const bool cut =
            QFontMetrics(m_view.font()).horizontalAdvance(text) > option.rect.width() - 2 * cellMargin;
        if (event->type() != QEvent::ToolTip || !cut)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        QToolTip::showText(event->globalPos(), text.toHtmlEscaped(), view);
        return true;
    }

private:
    /// A line through the texts as well: never by color alone.
    void drawDeletion(QPainter& painter, const QRect& cell, int column) const {
        painter.setPen(QPen(theme().danger, 1));
        painter.drawLine(cell.left() + cellMargin, cell.center().y(), cell.right() - cellMargin,
                         cell.center().y());
        if (column == 0)
            painter.fillRect(QRect(cell.topLeft(), QSize(4, cell.height())), theme().danger);
    }

    const RecordList& m_list;
    QTableView& m_view;
};

/// A heading that is cut off says so; the whole one is its tip.
class Headings : public QHeaderView {
public:
    explicit Headings(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) { setProperty("elided", true); }

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        option->text =
            fontMetrics().elidedText(textOf(section), Qt::ElideRight, sectionSize(section) - around(section));
    }
    /// Only the heading with the arrow needs room for one.
    QSize sectionSizeFromContents(int section) const override {
        return {fontMetrics().horizontalAdvance(textOf(section)) + around(section) + slack, headPitch};
    }

private:
    QString textOf(int section) const {
        return model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    int around(int section) const {
        return 2 * cellMargin + (section == sortIndicatorSection() ? arrowRoom : 0);
    }
};

}  // namespace

RecordList::RecordList(QWidget* parent)
    : QWidget(parent), m_model(new RecordListModel(this)), m_filter(new QLineEdit(this)),
      m_from(new DateBox(this)), m_to(new DateBox(this)), m_days(new QWidget(this)),
      m_head(new QBoxLayout(QBoxLayout::LeftToRight)), m_rows(new QTableView(this)),
      m_count(new QLabel(this)) {
    setObjectName(u"recordList"_s);
    buildHead();
    buildRows();
    auto* card = new QFrame(this);
    makeCard(*card);
    auto* inside = new QVBoxLayout(card);
    inside->setContentsMargins(grid, grid, grid, grid);
    inside->addWidget(m_rows);
    m_count->setObjectName(u"lblListCount"_s);
    m_count->setContentsMargins(2 * grid, 0, 0, 0);
    setLook(*m_count, "quiet");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * grid);
    column->addLayout(m_head);
    column->addWidget(card, 1);
    column->addWidget(m_count);
}

void RecordList::buildHead() {
    m_filter->setObjectName(u"txtListFilter"_s);
    m_filter->setFixedHeight(filterHeight);
    m_magnifier = addMagnifier(*m_filter);
    addClearButton(*m_filter);
    m_filter->installEventFilter(this);
    keepOneLine(*m_filter);
    connect(m_filter, &QLineEdit::textChanged, this, &RecordList::applyFilter);
    m_from->setObjectName(u"txtListFrom"_s);
    m_to->setObjectName(u"txtListTo"_s);
    auto* days = new QHBoxLayout(m_days);
    days->setContentsMargins(0, 0, 0, 0);
    days->setSpacing(grid);
    for (DateBox* box : {m_from, m_to}) {
        box->setFixedSize(dayWidth, filterHeight);
        days->addWidget(box);
        connect(box, &DateBox::valueEdited, this, &RecordList::applyDays);
    }
    m_days->hide();
    m_head->setSpacing(grid);
    m_head->addWidget(m_filter, 1);
    m_head->addWidget(m_days, 0, Qt::AlignLeft);
}

void RecordList::buildRows() {
    m_rows->setObjectName(u"grdRecordList"_s);
    m_rows->setHorizontalHeader(new Headings(m_rows));
    m_rows->setModel(m_model);
    setUpRows(*m_rows);
    m_rows->setItemDelegate(new RowPainter(*this, *m_rows));
    m_rows->setSelectionMode(QAbstractItemView::NoSelection);
    m_rows->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_rows->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_rows->horizontalHeader()->setSectionsClickable(true);
    m_rows->setSortingEnabled(true);
    QFont small = font();
    small.setPixelSize(textSize);
    m_rows->setFont(small);
    m_rows->horizontalHeader()->setFont(small);
    m_rows->installEventFilter(this);
    m_rows->viewport()->installEventFilter(this);
    connect(m_rows->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &RecordList::layOutColumns);
    connect(m_rows, &QTableView::clicked, this, [this](const QModelIndex& index) { chooseRow(index.row()); });
}

void RecordList::setColumns(std::vector<ListColumn> columns, int sortColumn, Qt::SortOrder order) {
    m_filter->clear();
    m_from->clear();
    m_to->clear();
    m_days->hide();
    m_dayColumn = -1;
    m_model->setColumns(std::move(columns), sortColumn, order);
    {
        const QSignalBlocker quiet(m_rows->horizontalHeader());  // the model knows already
        m_rows->horizontalHeader()->setSortIndicator(sortColumn, order);
    }
    layOutColumns();
    m_current = 0;
    showCount();
}

void RecordList::layOutColumns() {
    QHeaderView& head = *m_rows->horizontalHeader();
    QFont bold = m_rows->font();  // the record on show
    bold.setWeight(QFont::DemiBold);
    const QFontMetrics measure(bold);
    std::vector<ColumnWish> wishes;
    for (int i = 0; i < m_model->columnCount(); ++i) {
        WidestText widest(measure);
        for (const QString& text : m_model->sample(i, rowsLookedAt))
            widest.add(text);
        wishes.push_back({m_model->columns()[static_cast<std::size_t>(i)].width, head.sectionSizeHint(i),
                          widest.width() + 2 * cellMargin + slack});
    }
    const std::vector<int> widths =
        sharedWidths(wishes, m_rows->viewport()->width(), leastWidth, enoughForNames);
    for (std::size_t i = 0; i < widths.size(); ++i)
        head.resizeSection(static_cast<int>(i), widths[i]);
}

void RecordList::markDeletion(bool on) {
    if (on == m_marksDeletion)
        return;
    m_marksDeletion = on;
    if (const int row = m_model->rowOf(m_current); on && row >= 0)
        m_rows->scrollTo(m_model->index(row, 0));
    m_rows->viewport()->update();
}

void RecordList::setTexts(const QString& placeholder, const QString& name) {
    m_filter->setPlaceholderText(placeholder);
    m_filter->setAccessibleName(placeholder);
    m_magnifier->setText(placeholder);
    m_rows->setAccessibleName(name);
}

void RecordList::setDayRange(int column, const QString& from, const QString& to) {
    m_dayColumn = column;
    for (const auto& [box, text] : {std::pair{m_from, from}, std::pair{m_to, to}}) {
        auto* line = box->findChild<QLineEdit*>();
        line->setPlaceholderText(text);
        line->setAccessibleName(text);
        box->setToolTip(text);
    }
    m_days->show();
}

void RecordList::applyDays() {
    const auto day = [](const DateBox& box) {
        return box.value() == zeroDate() ? QDate() : box.value().date();
    };
    m_model->setDays(m_dayColumn, day(*m_from), day(*m_to));
    placeCursor();
    showCount();
}

void RecordList::resizeEvent(QResizeEvent* event) {
    m_head->setDirection(width() < roomForDays ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QWidget::resizeEvent(event);
}

void RecordList::setCountText(std::function<QString(int, int)> text) {
    m_countText = std::move(text);
    showCount();
}

void RecordList::showCollected() {
    const int top = m_rows->verticalScrollBar()->value();
    m_model->showCollected();
    layOutColumns();
    placeCursor();
    m_rows->verticalScrollBar()->setValue(top);
    showCount();
}

void RecordList::applyFilter() {
    m_model->setFilter(m_filter->text());
    placeCursor();
    showCount();
}

// The keys start at the record on show, or at the first row where the filter hides it.
void RecordList::placeCursor() {
    const int row = std::max(0, m_model->rowOf(m_current));
    m_rows->setCurrentIndex(m_model->index(row, 0));
}

void RecordList::showCount() {
    m_count->setText(m_countText ? m_countText(m_model->rowCount(), m_model->total()) : QString());
}

void RecordList::setCurrentKey(std::int64_t key) {
    if (key == m_current)
        return;
    m_current = key;
    placeCursor();
    m_rows->viewport()->update();
}

void RecordList::startFiltering() {
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

QString RecordList::filter() const { return m_filter->text(); }

void RecordList::chooseRow(int row) {
    if (row >= 0 && row < m_model->rowCount())
        emit chosen(m_model->keyAt(row));
}

bool RecordList::takeKey(QObject* watched, int key) {
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        chooseRow(m_rows->currentIndex().row());
        return true;
    case Qt::Key_Escape:
        if (m_filter->text().isEmpty())
            emit left();
        m_filter->clear();
        return true;
    case Qt::Key_Down:
        if (watched != m_filter || m_model->rowCount() == 0)
            return false;
        m_rows->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        return false;
    }
}

bool RecordList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        m_rows->viewport()->update();
    if (event->type() == QEvent::Resize && watched == m_rows->viewport())
        layOutColumns();
    if (event->type() == QEvent::KeyPress)
        return takeKey(watched, static_cast<QKeyEvent*>(event)->key());
    return false;
}

void RecordList::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        m_rows->viewport()->update();
}

}  // namespace platform
