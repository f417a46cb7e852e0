// Filling and marking of the steps.
#include "mixer/StepsTable.h"

#include "mixer/MixTables.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {
constexpr int fewestRows = 3;
constexpr int textSize = 12;  // pixels
/// What a column of numbers has beside a scroll bar, without its padding.
constexpr int headingRoom = 54;

/// The marked row colored to its edges.
class StepDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QVariant background = index.data(Qt::BackgroundRole);
        if (background.isValid())
            painter->fillRect(option.rect, background.value<QBrush>());
        QStyledItemDelegate::paint(painter, option, index);
    }
};

/// Opaque: a cell's background is painted twice.
QColor blended(const QColor& color, const QColor& under, float share) {
    const auto part = [share](float a, float b) { return b + (a - b) * share; };
    return QColor::fromRgbF(part(color.redF(), under.redF()), part(color.greenF(), under.greenF()),
                            part(color.blueF(), under.blueF()));
}

/// On two lines where one is too long for its column.
QString heading(const QString& text, const QFontMetrics& metrics) {
    QString lines = text;
    const auto blank = lines.indexOf(' '_L1);
    if (blank > 0 && metrics.horizontalAdvance(text) > headingRoom)
        lines[blank] = '\n'_L1;
    return lines;
}

}  // namespace

StepsTable::StepsTable(QWidget* parent) : QTableWidget(0, 4, parent) {
    setSelectionMode(QAbstractItemView::NoSelection);
    setFocusPolicy(Qt::NoFocus);  // for looking at only: the running step comes into sight by itself
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(platform::rowPitch);
    verticalHeader()->setMinimumSectionSize(platform::rowPitch);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Fixed);
    horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setColumnWidth(0, 36);
    QFont small = font();
    small.setPixelSize(textSize);
    setFont(small);
    horizontalHeader()->setFont(small);
    platform::setLook(*this, "dense");
    platform::setLook(*horizontalHeader(), "dense");
    setItemDelegate(new StepDelegate(this));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void StepsTable::show(const std::vector<protocol::Step>& steps, int current, bool stopped,
                      const PanelTexts& texts) {
    const bool sameSteps = m_steps == steps && m_current >= 0 && m_stopped == stopped;
    if (sameSteps && m_current == current)
        return;
    if (!sameSteps) {
        m_steps = steps;
        m_stopped = stopped;
        m_current = current;
        fill(texts);
    }
    m_current = current;
    mark();
}

void StepsTable::fill(const PanelTexts& texts) {
    const QFontMetrics metrics(horizontalHeader()->font());
    setHorizontalHeaderLabels({QString(), heading(texts(PanelText::LiftRpm), metrics),
                               heading(texts(PanelText::MixRpm), metrics),
                               heading(texts(PanelText::Time), metrics)});
    platform::setSpokenName(*this,
                            texts(PanelText::StepOf, {QString::number(1), QString::number(m_steps.size())}));
    setRowCount(static_cast<int>(m_steps.size()));
    int row = 0;
    for (const protocol::Step& step : m_steps) {
        const QString length = m_stopped && row + 1 > m_current ? texts(PanelText::NotRun)
                               : step.seconds > 0
                                   ? timeText(step.seconds)
                                   : texts(PanelText::CyclesCount, {QString::number(step.cycles)});
        const QStringList cells{QString::number(row + 1), QString::number(step.liftRpm),
                                QString::number(step.mixRpm), length};
        for (int column = 0; column < cells.size(); ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            item->setTextAlignment(Qt::AlignVCenter | (column == 0 ? Qt::AlignLeft : Qt::AlignRight));
            setItem(row, column, item);
        }
        ++row;
    }
    setMaximumHeight(sizeHint().height());
    updateGeometry();
}

void StepsTable::mark() {
    const platform::Theme& theme = platform::theme();
    const QColor soft = blended(theme.warning, theme.surface, theme.dark ? 0.16F : 0.09F);
    for (int row = 0; row < rowCount(); ++row) {
        const bool isCurrent = row + 1 == m_current;
        for (int column = 0; column < columnCount(); ++column) {
            QTableWidgetItem& cell = *item(row, column);
            QFont cellFont = font();
            cellFont.setPixelSize(12);
            cellFont.setWeight(isCurrent ? QFont::DemiBold : QFont::Normal);
            cell.setFont(cellFont);
            cell.setBackground(isCurrent ? QBrush(m_stopped ? soft : theme.softAccent) : QBrush());
            const bool quiet = row + 1 < m_current || (m_stopped && !isCurrent);
            cell.setForeground(quiet ? theme.secondaryText : theme.text);
        }
    }
    keepInSight();
}

/// The running step; the first one while none runs.
void StepsTable::keepInSight() {
    executeDelayedItemsLayout();  // what is to be scrolled is known from then on
    if (m_current > 0 && m_current <= rowCount())
        scrollToItem(item(m_current - 1, 0));
    else
        scrollToTop();
}

void StepsTable::resizeEvent(QResizeEvent* event) {
    QTableWidget::resizeEvent(event);
    keepInSight();
}

void StepsTable::changeEvent(QEvent* event) {
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        mark();
}

int StepsTable::heightForRows(int rows) const {
    return horizontalHeader()->sizeHint().height() + rows * platform::rowPitch + 2;
}

QSize StepsTable::sizeHint() const { return {260, heightForRows(rowCount())}; }

QSize StepsTable::minimumSizeHint() const { return {200, heightForRows(std::min(rowCount(), fewestRows))}; }

}  // namespace sorvanto
