#include "screens/PriceList.h"

#include "platform/basic/LocalMarks.h"
#include "platform/widgets/ColumnRoom.h"
#include "platform/widgets/StyleShapes.h"
#include "platform/widgets/Theme.h"
#include "screens/PriceTexts.h"
#include "shared/Translator.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

// Pixels at 100 %; the remark takes what is left.
constexpr std::array<int, PriceRowsModel::columns> widths{44, 48, 176, 64, 264, 72, 72, 56, 72, 72, 0};

constexpr int leastRemark = 220;
constexpr int fewestRows = 4;
constexpr int leastCalculation = 160;  // the designed one is the most: what it leaves is the remark's

bool isNumberColumn(int column) {
    return column == PriceRowsModel::row ||
           (column >= PriceRowsModel::oldCost && column <= PriceRowsModel::newAwp);
}

QString money(const std::optional<platform::Currency>& amount) {
    return amount ? platform::shownNumber(amount->toText()) : QString();
}

QString heading(int column) {
    switch (column) {
    case PriceRowsModel::tick:
        return translated(u"Take"_s);
    case PriceRowsModel::row:
        return translated(u"Row"_s);
    case PriceRowsModel::chemical:
        return translated(u"Chemical"_s);
    case PriceRowsModel::foundBy:
        return translated(u"Found by"_s);
    case PriceRowsModel::calculation:
        return translated(u"Calculation"_s);
    case PriceRowsModel::oldCost:
        return translated(u"Old cost"_s);
    case PriceRowsModel::newCost:
        return translated(u"New cost"_s);
    case PriceRowsModel::factor:
        return translated(u"Factor"_s);
    case PriceRowsModel::oldAwp:
        return translated(u"Old AWP"_s);
    case PriceRowsModel::newAwp:
        return translated(u"New AWP"_s);
    default:
        return translated(u"Remark"_s);
    }
}

/// The frame is around the whole row that the keys stand on: of the box alone it would look like a second box.
class RowPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem cell(option);
        cell.state.setFlag(QStyle::State_HasFocus, false);
        QStyledItemDelegate::paint(painter, cell, index);
        const auto* rows = qobject_cast<const QTableView*>(option.widget);
        if (rows && rows->hasFocus() && rows->currentIndex().row() == index.row())
            platform::drawRowMark(*painter, option.rect, index.column() == 0,
                                  index.column() == PriceRowsModel::columns - 1);
    }
};

}  // namespace

void PriceRowsModel::show(WeighedPrices* weighed) {
    beginResetModel();
    m_weighed = weighed;
    endResetModel();
    emit ticksChanged();
}

int PriceRowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !m_weighed ? 0 : static_cast<int>(m_weighed->proposals.all().size());
}

const PriceProposal& PriceRowsModel::at(const QModelIndex& index) const {
    return m_weighed->proposals.all().at(static_cast<std::size_t>(index.row()));
}

QVariant PriceRowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (isNumberColumn(section) ? Qt::AlignRight : Qt::AlignLeft));
    return role == Qt::DisplayRole ? heading(section) : QVariant();
}

Qt::ItemFlags PriceRowsModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() == tick && at(index).canBeTaken())
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QString PriceRowsModel::chemicalText(const PriceProposal& proposal) const {
    if (proposal.found) {
        const StockedChemical& known = m_weighed->stock.at(proposal.place);
        return known.lot.isEmpty() ? known.name : known.name + u" · "_s + known.lot;
    }
    const PriceRow& cells = m_weighed->table.rows.at(static_cast<std::size_t>(proposal.row));
    QStringList texts;
    for (const PriceField field : {PriceField::name, PriceField::ndc, PriceField::lot})
        texts << PriceTable::text(cells, m_weighed->columns.of(field));
    texts.removeAll(QString());
    return texts.join(u" · "_s);
}

QString PriceRowsModel::textOf(const PriceProposal& proposal, int column) const {
    const auto before = [&](platform::Currency StockedChemical::*price) {
        return proposal.found ? std::optional(m_weighed->stock.at(proposal.place).*price) : std::nullopt;
    };
    switch (column) {
    case row:
        return QString::number(proposal.row + 1);
    case chemical:
        return chemicalText(proposal);
    case foundBy:
        return proposal.found ? foundByText(proposal.by) : QString();
    case calculation:
        return calculationText(proposal, m_weighed->stock);
    case oldCost:
        return money(before(&StockedChemical::cost));
    case newCost:
        return money(proposal.cost.price);
    case factor:
        return proposal.cost.price ? factorText(*proposal.cost.price, *before(&StockedChemical::cost))
                                   : QString();
    case oldAwp:
        return money(before(&StockedChemical::awp));
    case newAwp:
        return money(proposal.awp.price);
    case remark:
        return remarksOn(proposal, m_weighed->table, m_weighed->columns, m_weighed->stock).join(u"; "_s);
    default:
        return {};
    }
}

bool PriceRowsModel::isDoubtfulCell(const PriceProposal& proposal, int column) const {
    if (!proposal.canBeTaken())
        return false;
    const StockedChemical& known = m_weighed->stock.at(proposal.place);
    const bool cost = isDoubtful(*proposal.cost.price, known.cost);
    const bool awp = proposal.awp.price && isDoubtful(*proposal.awp.price, known.awp);
    return (cost && (column == factor || column == newCost)) || (awp && column == newAwp) ||
           ((cost || awp) && column == remark);
}

QVariant PriceRowsModel::data(const QModelIndex& index, int role) const {
    if (!m_weighed || !index.isValid())
        return {};
    const PriceProposal& proposal = at(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return textOf(proposal, index.column());
    case Qt::CheckStateRole:
        return index.column() == tick && proposal.canBeTaken()
                   ? QVariant(proposal.ticked ? Qt::Checked : Qt::Unchecked)
                   : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (isNumberColumn(index.column()) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::FontRole: {  // the color alone would be lost in a chosen row
        QFont font;
        font.setWeight(QFont::DemiBold);
        return isDoubtfulCell(proposal, index.column()) ? QVariant(font) : QVariant();
    }
    case Qt::ForegroundRole:
        if (isDoubtfulCell(proposal, index.column()))
            return QBrush(platform::theme().warning);
        return proposal.canBeTaken() ? QVariant() : QBrush(platform::theme().secondaryText);
    default:
        return {};
    }
}

bool PriceRowsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !flags(index).testFlag(Qt::ItemIsUserCheckable))
        return false;
    tickRows({index}, value.toInt() == Qt::Checked);
    return true;
}

void PriceRowsModel::tickRows(const QModelIndexList& wanted, bool on) {
    for (const QModelIndex& each : wanted)
        m_weighed->proposals.tick(static_cast<std::size_t>(each.row()), on);
    emit dataChanged(index(0, tick), index(rowCount() - 1, tick), {Qt::CheckStateRole});
    emit ticksChanged();
}

PriceList::PriceList(QWidget* parent)
    : ListCard(u"grdPrices"_s, fewestRows, parent), m_model(new PriceRowsModel(this)) {
    setTitle(translated(u"What would change"_s));
    remarkLabel().setObjectName(u"lblCounts"_s);
    setModel(*m_model);
    view().setItemDelegate(new RowPainter(&view()));
    setFocusProxy(&view());
    // The space bar has a row to start with.
    connect(m_model, &QAbstractItemModel::modelReset, &view(), [this] {
        layOutColumns();
        view().selectRow(0);
    });
    PriceList::layOutColumns();
}

int PriceList::calculationWidth() const {
    int widest = 0;
    for (int row = 0; row < std::min(m_model->rowCount(), platform::rowsLookedAt); ++row)
        widest = std::max(widest,
                          view().sizeHintForIndex(m_model->index(row, PriceRowsModel::calculation)).width());
    return widest + platform::grid;
}

void PriceList::layOutColumns() {
    QHeaderView& header = *view().horizontalHeader();
    int left = view().viewport()->width();
    for (int column = 0; column < PriceRowsModel::columns; ++column) {
        int wanted = widths[static_cast<std::size_t>(column)];
        if (column == PriceRowsModel::remark)
            wanted = std::max(left, leastRemark);
        else if (column == PriceRowsModel::calculation)
            wanted = std::clamp(calculationWidth(), leastCalculation, wanted);
        header.resizeSection(column, std::max(wanted, header.sectionSizeHint(column)));
        left -= header.sectionSize(column);
    }
}

/// All chosen rows get the tick that the current one has not.
void PriceList::tickChosen() {
    const auto current = view().currentIndex().siblingAtColumn(PriceRowsModel::tick);
    if (!current.isValid())
        return;
    m_model->tickRows(view().selectionModel()->selectedRows(PriceRowsModel::tick),
                      current.data(Qt::CheckStateRole).toInt() != Qt::Checked);
}

bool PriceList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        tickChosen();
        return true;
    }
    return ListCard::eventFilter(watched, event);
}

}  // namespace sorvanto
