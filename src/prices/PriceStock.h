// The chemicals as a price list meets them, and how one of its rows finds them.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/data/Connection.h"
#include "prices/PriceTable.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace sorvanto {

struct StockedChemical {
    std::int64_t key = 0;
    QString name, ndc, lot, units;
    platform::Currency cost, awp;  ///< of one unit

    bool operator==(const StockedChemical&) const = default;
};

/// In the order of their keys; the first ones where goesOn stops it. Throws as Connection::execute.
std::vector<StockedChemical> stockedChemicals(const platform::ConnectionPtr& connection,
                                              const PriceProgress& goesOn = {});

/// What an NDC is the same as another by: without dashes and blanks, and the ten digits that a label shows in three
/// parts (4-4-2, 5-3-2, 5-4-1) as the eleven of a bill (5-4-2) too. None for an empty one.
QStringList ndcKeys(const QString& ndc);

enum class FoundBy : std::uint8_t { ndc, lot, name };

class PriceStock {
public:
    explicit PriceStock(std::vector<StockedChemical> chemicals);

    const StockedChemical& at(std::size_t place) const { return m_chemicals.at(place); }
    const std::vector<StockedChemical>& chemicals() const { return m_chemicals; }

    struct Found {
        std::vector<std::size_t> places;  ///< empty: unknown
        FoundBy by = FoundBy::ndc;
    };
    /// By NDC, else by lot, else by name, without regard to case. Where several have the NDC and one of them the lot as
    /// well, that one is meant.
    Found find(const QString& ndc, const QString& lot, const QString& name) const;

private:
    using Places = QHash<QString, std::vector<std::size_t>>;

    std::vector<StockedChemical> m_chemicals;
    Places m_byNdc, m_byLot, m_byName;
};

}  // namespace sorvanto
