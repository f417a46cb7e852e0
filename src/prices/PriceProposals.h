// What a price list would change: one proposal for each chemical that one of its rows finds, and one for each row that
// finds none or can't be read. Nothing is written here.
#pragma once

#include "prices/PackPrice.h"
#include "prices/PriceColumns.h"
#include "prices/PriceStock.h"

#include <array>
#include <optional>

namespace sorvanto {

enum class PriceState : std::uint8_t {
    change,
    unchanged,
    repeated,    ///< another row says the same of this chemical
    unknown,     ///< no chemical of that NDC, lot or name
    tooMany,     ///< more chemicals of that lot or name than anybody could mean
    noPrice,     ///< none, or 0
    unreadable,  ///< a price, AWP or pack that is no number
    noWay        ///< the pack's unit can't become the chemical's
};
inline constexpr int priceStates = 8;

struct PriceProposal {
    PriceState state = PriceState::unknown;
    int row = 0;            ///< in the table, from 0
    std::size_t place = 0;  ///< of the chemical; only where one was found
    bool found = false;
    FoundBy by = FoundBy::ndc;
    int alike = 1;              ///< chemicals that the row finds
    int sameAs = -1;            ///< row that says the same
    std::vector<int> rivals{};  ///< first rows of other prices for the chemical, the first 50
    bool otherNdc = false;      ///< the row's NDC isn't the chemical's
    bool hasSize = false, hasUnit = false;
    Pack pack{};              ///< as the row has it; without size 1, without unit the chemical's
    PackPrice cost{}, awp{};  ///< of one unit; no AWP where the list has none
    bool ticked = false;

    bool canBeTaken() const { return state == PriceState::change; }
};

/// Above twice or below half of what it was; false where that was 0.
bool isDoubtful(platform::Currency now, platform::Currency before);

class PriceProposals {
public:
    /// Marks of all columns that have one are known.
    PriceProposals(const PriceTable& table, const PriceColumns& columns, const PriceStock& stock,
                   const PriceProgress& goesOn = {});

    /// The changes first, in the order of the list, then what doesn't change, then what can't be taken.
    const std::vector<PriceProposal>& all() const { return m_all; }
    int count(PriceState state) const { return m_counts[static_cast<std::size_t>(state)]; }
    int ticked() const;
    /// Of the proposals for one chemical at most one is ticked: ticking another takes the tick from it. Nothing
    /// happens to one that can't be taken.
    void tick(std::size_t proposal, bool on);
    bool stopped() const { return m_stopped; }

private:
    void judgeRow(int row);
    bool readAmounts(const PriceRow& row, PriceProposal& proposal);
    void propose(PriceProposal proposal, std::size_t place);
    void findRivals();
    void judgeRivals(const std::vector<std::size_t>& proposals);
    void tickSafeOnes();
    std::optional<platform::Decimal> amount(const PriceRow& row, PriceField field) const;
    bool isDoubtful(const PriceProposal& proposal) const;

    const PriceTable& m_table;
    const PriceColumns& m_columns;
    const PriceStock& m_stock;
    std::vector<PriceProposal> m_all;
    QHash<std::size_t, std::vector<std::size_t>> m_ofChemical;  ///< places of its changes in m_all
    std::array<int, priceStates> m_counts{};
    bool m_stopped = false;
    std::optional<platform::Decimal> m_awp;  ///< of the row being judged
};

}  // namespace sorvanto
