#include "prices/PriceStock.h"

#include "platform/basic/Folding.h"
#include "platform/basic/Values.h"
#include "platform/data/TableReader.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int chunk = 200;

QString word(const QString& text) { return platform::folded(text).simplified(); }

void append(std::vector<std::size_t>& places, std::size_t place) {
    if (places.empty() || places.back() != place)
        places.push_back(place);
}

}  // namespace

std::vector<StockedChemical> stockedChemicals(const platform::ConnectionPtr& connection,
                                              const PriceProgress& goesOn) {
    using namespace platform;
    TableReader reader(
        connection, u"Chemical"_s, u"ChemicalID"_s,
        {u"chm_Name"_s, u"chm_NDC"_s, u"chm_Lot"_s, u"chm_Units"_s, u"chm_Cost"_s, u"chm_AWP"_s});
    std::vector<StockedChemical> chemicals;
    for (auto rows = reader.next(chunk); !rows.empty(); rows = reader.next(chunk)) {
        for (const KeyedRow& row : rows)
            chemicals.push_back({row.key, nullText(row.values[0]), nullText(row.values[1]),
                                 nullText(row.values[2]), nullText(row.values[3]),
                                 nullCurrency(row.values[4]), nullCurrency(row.values[5])});
        if (goesOn && !goesOn(-1))
            break;
    }
    return chemicals;
}

QStringList ndcKeys(const QString& ndc) {
    constexpr qsizetype labeler = 5, product = 4, package = 2, digitsOfLabel = 10;
    QString plain = platform::folded(ndc);
    plain.removeIf([](QChar c) { return c == u'-' || c.isSpace(); });
    if (plain.isEmpty())
        return {};
    QStringList keys{plain};
    const QStringList parts = platform::folded(ndc).simplified().split(u'-');
    const bool isLabel = parts.size() == 3 && plain.size() == digitsOfLabel &&
                         parts[0].size() >= labeler - 1 && parts[0].size() <= labeler &&
                         parts[1].size() >= product - 1 && parts[1].size() <= product &&
                         parts[2].size() >= package - 1 && parts[2].size() <= package &&
                         std::all_of(plain.begin(), plain.end(), [](QChar c) { return c.isDigit(); });
    if (isLabel)
        keys << parts[0].rightJustified(labeler, u'0') + parts[1].rightJustified(product, u'0') +
                    parts[2].rightJustified(package, u'0');
    return keys;
}

PriceStock::PriceStock(std::vector<StockedChemical> chemicals) : m_chemicals(std::move(chemicals)) {
    for (std::size_t place = 0; place < m_chemicals.size(); ++place) {
        const StockedChemical& chemical = m_chemicals[place];
        for (const QString& key : ndcKeys(chemical.ndc))
            append(m_byNdc[key], place);
        if (const QString lot = word(chemical.lot); !lot.isEmpty())
            append(m_byLot[lot], place);
        if (const QString name = word(chemical.name); !name.isEmpty())
            append(m_byName[name], place);
    }
}

PriceStock::Found PriceStock::find(const QString& ndc, const QString& lot, const QString& name) const {
    std::vector<std::size_t> places;
    for (const QString& key : ndcKeys(ndc)) {
        for (const std::size_t place : m_byNdc.value(key))
            places.push_back(place);
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    const QString wanted = word(lot);
    if (!places.empty()) {
        std::vector<std::size_t> ofLot;
        for (const std::size_t place : places) {
            if (!wanted.isEmpty() && word(m_chemicals[place].lot) == wanted)
                ofLot.push_back(place);
        }
        return {ofLot.empty() ? places : ofLot, FoundBy::ndc};
    }
    if (const auto byLot = m_byLot.constFind(wanted); byLot != m_byLot.constEnd())
        return {*byLot, FoundBy::lot};
    return {m_byName.value(word(name)), FoundBy::name};
}

}  // namespace sorvanto
