// Laying out and filling of the block.
#include "mixing/MixSummaryCard.h"

#include "mixer/MixTables.h"
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int cardWidth = 320;
constexpr int innerWidth = cardWidth - 2 * 16;
constexpr int rowHeight = 24;
constexpr int numberWidth = 72;
constexpr int captionColumn = 0, plannedColumn = 1, doneColumn = 2;

const QString dash = u"\u2013"_s;

QString countText(const std::optional<int>& value) {
    return value ? platform::shownNumber(platform::format(double(*value), u"#,##0"_s)) : dash;
}

}  // namespace

MixSummaryCard::MixSummaryCard(QWidget* parent) : QFrame(parent), m_batch(new QLabel) {
    setObjectName(u"mixSummary"_s);
    platform::makeCard(*this);
    setFixedWidth(cardWidth);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(platform::grid);
    grid->setVerticalSpacing(0);
    grid->setColumnStretch(captionColumn, 1);
    m_batch->setObjectName(u"mixSummaryBatch"_s);
    m_batch->setTextFormat(Qt::PlainText);
    m_batch->setWordWrap(true);
    m_batch->setFixedWidth(innerWidth);
    m_batch->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(m_batch, 0, 0, 1, 3);
    for (const auto& [column, caption] :
         {std::pair(plannedColumn, translated(u"Planned"_s)), std::pair(doneColumn, translated(u"Done"_s))}) {
        QLabel* heading = cell(*grid, 1, column, u"mixSummaryHead%1"_s.arg(column));
        platform::setLook(*heading, "quiet");
        heading->setText(caption);
    }
    auto* rule = new QFrame;
    platform::makeRule(*rule);
    grid->addWidget(rule, 2, 0, 1, 3);
    addCaption(*grid, 3, translated(u"Steps"_s));
    addCaption(*grid, 4, translated(u"Time"_s));
    addCaption(*grid, 5, translated(u"Revolutions"_s));
    addCaption(*grid, 6, translated(u"Interrupted"_s));
    m_planned = {cell(*grid, 3, plannedColumn, u"plannedSteps"_s),
                 cell(*grid, 4, plannedColumn, u"plannedTime"_s),
                 cell(*grid, 5, plannedColumn, u"plannedRevolutions"_s)};
    m_done = {cell(*grid, 3, doneColumn, u"doneSteps"_s), cell(*grid, 4, doneColumn, u"doneTime"_s),
              cell(*grid, 5, doneColumn, u"doneRevolutions"_s)};
    m_interrupted = cell(*grid, 6, doneColumn, u"doneInterrupted"_s);
    setSummary({});
}

QLabel* MixSummaryCard::cell(QGridLayout& grid, int row, int column, const QString& name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setFixedHeight(rowHeight);
    label->setMinimumWidth(numberWidth);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid.addWidget(label, row, column);
    return label;
}

void MixSummaryCard::addCaption(QGridLayout& grid, int row, const QString& caption) {
    auto* label = new QLabel(caption);
    platform::setLook(*label, "quiet");
    label->setFixedHeight(rowHeight);
    grid.addWidget(label, row, captionColumn);
}

void MixSummaryCard::setBatch(const QString& line) {
    m_batch->setText(line);
    m_batch->setFixedHeight(qMax(rowHeight, m_batch->heightForWidth(innerWidth)));
    m_batch->setVisible(!line.isEmpty());
}

void MixSummaryCard::show(const Column& column, const MixSummary::Side& side) {
    column.steps->setText(countText(side.steps));
    column.time->setText(side.seconds ? shortTime(*side.seconds) : dash);
    column.revolutions->setText(countText(side.revolutions));
}

void MixSummaryCard::setSummary(const MixSummary& summary) {
    show(m_planned, summary.planned);
    show(m_done, summary.done);
    const bool stopped = summary.interrupted.value_or(false);
    m_interrupted->setText(!summary.interrupted ? dash : translated(stopped ? u"Yes"_s : u"No"_s));
    platform::setLook(*m_interrupted, "caution", stopped);
}

}  // namespace sorvanto
