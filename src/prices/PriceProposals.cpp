#include "prices/PriceProposals.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr std::size_t mostAlike = 50;
const QString oneUnit = u"EACH"_s;  // any that converts to itself

bool isBlank(const PriceRow& row) {
    return std::all_of(row.begin(), row.end(),
                       [](const PriceCell& cell) { return cell.text.trimmed().isEmpty(); });
}

const PriceCell* cellOf(const PriceRow& row, int column) {
    return column >= 0 && static_cast<std::size_t>(column) < row.size()
               ? &row[static_cast<std::size_t>(column)]
               : nullptr;
}

/// The price of one unit. A row that names no unit means the chemical's own.
PackPrice unitPrice(const PriceProposal& proposal, const platform::Decimal& price, const QString& units) {
    const Pack pack{price, proposal.pack.size,
                    proposal.hasUnit || units.trimmed().isEmpty() ? proposal.pack.unit : oneUnit};
    return packPrice(pack, proposal.hasUnit || units.trimmed().isEmpty() ? units : oneUnit);
}

/// Cost and AWP of one unit, in ten-thousandths.
using UnitPrices = std::array<std::optional<std::int64_t>, 2>;

UnitPrices pricesOf(const PriceProposal& proposal) {
    const auto parts = [](const PackPrice& price) {
        return price.price ? std::optional(price.price->tenThousandths()) : std::nullopt;
    };
    return {parts(proposal.cost), parts(proposal.awp)};
}

bool sharesKey(const QString& one, const QString& other) {
    const QStringList keys = ndcKeys(one);
    const QStringList others = ndcKeys(other);
    return std::any_of(keys.begin(), keys.end(), [&](const QString& key) { return others.contains(key); });
}

}  // namespace

bool isDoubtful(platform::Currency now, platform::Currency before) {
    const std::int64_t is = now.tenThousandths(), was = before.tenThousandths();
    if (was <= 0)
        return false;
    return is - was > was || is < was - is;
}

PriceProposals::PriceProposals(const PriceTable& table, const PriceColumns& columns, const PriceStock& stock,
                               const PriceProgress& goesOn)
    : m_table(table), m_columns(columns), m_stock(stock) {
    const auto rows = static_cast<int>(table.rows.size());
    for (int row = columns.firstRow; row < rows; ++row) {
        if (goesOn && row % rowsBetweenAsks == 0 && !goesOn(static_cast<double>(row) / rows)) {
            m_stopped = true;
            return;
        }
        judgeRow(row);
    }
    std::stable_sort(m_all.begin(), m_all.end(),
                     [](const auto& a, const auto& b) { return a.state < b.state; });
    findRivals();
    std::stable_sort(m_all.begin(), m_all.end(),
                     [](const auto& a, const auto& b) { return a.state < b.state; });
    m_ofChemical.clear();
    for (std::size_t place = 0; place < m_all.size(); ++place) {
        ++m_counts[static_cast<std::size_t>(m_all[place].state)];
        if (m_all[place].canBeTaken())
            m_ofChemical[m_all[place].place].push_back(place);
    }
    tickSafeOnes();
}

void PriceProposals::judgeRow(int number) {
    const PriceRow& row = m_table.rows[static_cast<std::size_t>(number)];
    if (isBlank(row))
        return;
    PriceProposal proposal;
    proposal.row = number;
    const auto text = [&](PriceField field) { return PriceTable::text(row, m_columns.of(field)); };
    const PriceStock::Found found =
        m_stock.find(text(PriceField::ndc), text(PriceField::lot), text(PriceField::name));
    proposal.found = !found.places.empty();
    proposal.by = found.by;
    proposal.alike = static_cast<int>(found.places.size());
    if (found.places.empty() || found.places.size() > mostAlike) {
        proposal.state = found.places.empty() ? PriceState::unknown : PriceState::tooMany;
        proposal.found = false;
        m_all.push_back(proposal);
        return;
    }
    const bool readable = readAmounts(row, proposal);
    for (const std::size_t place : found.places) {
        proposal.otherNdc = !text(PriceField::ndc).isEmpty() && !m_stock.at(place).ndc.trimmed().isEmpty() &&
                            !sharesKey(text(PriceField::ndc), m_stock.at(place).ndc);
        proposal.place = place;
        if (readable)
            propose(proposal, place);
        else
            m_all.push_back(proposal);
    }
}

std::optional<platform::Decimal> PriceProposals::amount(const PriceRow& row, PriceField field) const {
    const PriceCell* cell = cellOf(row, m_columns.of(field));
    if (!cell)
        return std::nullopt;
    if (cell->number)
        return amountIn(cell->text);
    const QString number = field == PriceField::packSize ? packText(cell->text).value_or(PackText{}).number
                                                         : priceText(cell->text);
    return amountIn(number, m_columns.markOf(field).value_or(DecimalMark::point));
}

/// False with the reason as its state.
bool PriceProposals::readAmounts(const PriceRow& row, PriceProposal& proposal) {
    const auto text = [&](PriceField field) { return PriceTable::text(row, m_columns.of(field)); };
    const auto price = amount(row, PriceField::price);
    if (text(PriceField::price).isEmpty() || (price && price->isZero())) {
        proposal.state = PriceState::noPrice;
        return false;
    }
    m_awp = amount(row, PriceField::awp);
    const auto pack = packText(text(PriceField::packSize));
    const auto size = amount(row, PriceField::packSize);
    proposal.hasSize = !text(PriceField::packSize).isEmpty() && (!pack || !pack->number.isEmpty());
    QString unit = text(PriceField::packUnit);
    const bool unitsDiffer = pack && !pack->unit.isEmpty() && !unit.isEmpty() &&
                             pack->unit.compare(unit, Qt::CaseInsensitive) != 0;
    if (unit.isEmpty() && pack)
        unit = pack->unit;
    proposal.hasUnit = !unit.isEmpty();
    proposal.pack = {price.value_or(platform::Decimal{}), size.value_or(*platform::Decimal::fromText("1")),
                     unit};
    const bool readable = price && (proposal.hasSize ? size.has_value() : true) && !unitsDiffer &&
                          (m_awp || text(PriceField::awp).isEmpty());
    if (!readable)
        proposal.state = PriceState::unreadable;
    if (m_awp && m_awp->isZero())
        m_awp.reset();  // a list that has none says 0
    return readable;
}

void PriceProposals::propose(PriceProposal proposal, std::size_t place) {
    const StockedChemical& chemical = m_stock.at(place);
    proposal.cost = unitPrice(proposal, proposal.pack.price, chemical.units);
    if (m_awp)
        proposal.awp = unitPrice(proposal, *m_awp, chemical.units);
    const PackTrouble trouble =
        proposal.cost.trouble != PackTrouble::none ? proposal.cost.trouble : proposal.awp.trouble;
    if (!proposal.hasUnit)
        proposal.pack.unit = chemical.units;
    if (trouble != PackTrouble::none) {
        proposal.cost.trouble = trouble;
        proposal.state = PriceState::noWay;
    } else {
        const bool same = *proposal.cost.price == chemical.cost &&
                          proposal.awp.price.value_or(chemical.awp) == chemical.awp;
        proposal.state = same ? PriceState::unchanged : PriceState::change;
    }
    m_all.push_back(std::move(proposal));
}

// Rows that found the chemical by less than another row did have no say about that one.
void PriceProposals::findRivals() {
    QHash<std::size_t, std::vector<std::size_t>> ofChemical;
    for (std::size_t place = 0; place < m_all.size(); ++place) {
        const PriceState state = m_all[place].state;
        if (state == PriceState::change || state == PriceState::unchanged)
            ofChemical[m_all[place].place].push_back(place);
    }
    for (std::vector<std::size_t>& proposals : ofChemical) {
        FoundBy best = FoundBy::name;
        for (const std::size_t each : proposals)
            best = std::min(best, m_all[each].by);
        std::erase_if(proposals, [&](std::size_t each) { return m_all[each].by != best; });
        std::sort(proposals.begin(), proposals.end(),
                  [&](std::size_t a, std::size_t b) { return m_all[a].row < m_all[b].row; });
        judgeRivals(proposals);
    }
}

// One row stands for each price: thousands of rows may name the same chemical, and any of them may disagree.
void PriceProposals::judgeRivals(const std::vector<std::size_t>& proposals) {
    std::map<UnitPrices, int> firstRows;
    std::vector<std::pair<UnitPrices, int>> different;
    for (const std::size_t each : proposals) {
        PriceProposal& one = m_all[each];
        const auto [first, isNew] = firstRows.try_emplace(pricesOf(one), one.row);
        if (isNew) {
            different.emplace_back(*first);
        } else {
            one.sameAs = first->second;
            one.state = PriceState::repeated;
        }
    }
    for (const std::size_t each : proposals) {
        PriceProposal& one = m_all[each];
        const UnitPrices prices = pricesOf(one);
        for (const auto& [others, row] : different) {
            if (one.rivals.size() == mostAlike)
                break;
            if (others != prices)
                one.rivals.push_back(row);
        }
    }
}

bool PriceProposals::isDoubtful(const PriceProposal& proposal) const {
    const StockedChemical& chemical = m_stock.at(proposal.place);
    return sorvanto::isDoubtful(*proposal.cost.price, chemical.cost) ||
           sorvanto::isDoubtful(proposal.awp.price.value_or(chemical.awp), chemical.awp);
}

void PriceProposals::tickSafeOnes() {
    for (PriceProposal& each : m_all)
        each.ticked = each.canBeTaken() && each.by == FoundBy::ndc && each.hasSize && each.hasUnit &&
                      each.rivals.empty() && !isDoubtful(each);
}

int PriceProposals::ticked() const {
    return static_cast<int>(
        std::count_if(m_all.begin(), m_all.end(), [](const auto& each) { return each.ticked; }));
}

void PriceProposals::tick(std::size_t proposal, bool on) {
    PriceProposal& wanted = m_all.at(proposal);
    if (!wanted.canBeTaken())
        return;
    for (const std::size_t other : m_ofChemical.value(wanted.place))
        m_all[other].ticked = m_all[other].ticked && !on;
    wanted.ticked = on;
}

}  // namespace sorvanto
