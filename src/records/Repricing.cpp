// The sums are those that the formula record itself is opened and saved with.
#include "records/Repricing.h"

#include "history/HistoryBook.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Overtaken.h"
#include "platform/data/Recordset.h"
#include "platform/data/Transaction.h"
#include "records/FormulaLines.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

constexpr int keysAtOnce = 4'096;
constexpr std::size_t rowsAtOnce = 256;
constexpr double shareOfTotals = 0.5;  // of the time

/// As they are now, by their keys.
std::map<std::int16_t, Currency> storedAWPs() {
    const RecordsetPtr rows = Recordset::create();
    rows->open(u"SELECT FormulaID, frm_AWP FROM Formula"_s, openDB());
    std::map<std::int16_t, Currency> stored;
    for (; !rows->eof(); rows->moveNext())
        stored.emplace(nullInt16(rows->value(0)), nullCurrency(rows->value(1)));
    rows->close();
    return stored;
}

/// False, and nothing stored, where one is not as shown.
bool storeWhole(const std::vector<RepricedFormula>& shown) {
    const ConnectionPtr connection = openDB();
    Transaction whole(connection->engine(), u"UPDATE Formula"_s, Sees::OneMoment);
    const std::map<std::int16_t, Currency> stored = storedAWPs();
    for (const RepricedFormula& formula : shown) {
        const FormulaTotals totals = readTotals(formula.key);
        const auto known = stored.find(formula.key);
        if (known == stored.end() || known->second != formula.storedAWP || totals.awp != formula.awp ||
            totals.cost != formula.cost)
            return false;
        connection->execute(
            u"UPDATE Formula SET [frm_AWP] = '%1' WHERE [FormulaID] = %2"_s.arg(totals.awp.toText())
                .arg(formula.key));
    }
    whole.commit();
    return true;
}

QString changerOf(std::int16_t formula) {
    std::vector<HistoryRecord> records{{u"Formula"_s, formula}};
    const RecordsetPtr lines = Recordset::create();
    lines->open(u"SELECT ChemicalID FROM FormChem WHERE FormulaID = %1"_s.arg(formula), openDB());
    for (; !lines->eof(); lines->moveNext())
        records.push_back({u"Chemical"_s, nullInt16(lines->value(0))});
    lines->close();
    return lastChanger(openDB()->engine(), records);
}

}  // namespace

std::vector<RepricedFormula> formulaPrices(const std::function<bool(double)>& goesOn) {
    const auto look = openDB()->engine().beginLook();
    const RecordsetPtr rows = Recordset::create();
    rows->open(u"SELECT FormulaID, frm_Name, frm_AWP FROM Formula ORDER BY frm_Name, FormulaID"_s, openDB());
    constexpr int lowest = std::numeric_limits<std::int16_t>::min(),
                  highest = std::numeric_limits<std::int16_t>::max();
    std::map<std::int16_t, FormulaTotals> totals;
    for (int first = lowest; first <= highest; first += keysAtOnce) {
        totals.merge(
            readTotals(static_cast<std::int16_t>(first), static_cast<std::int16_t>(first + keysAtOnce - 1)));
        if (goesOn && !goesOn(shareOfTotals * (first - lowest) / (highest - lowest)))
            return {};
    }
    std::vector<RepricedFormula> formulas;
    for (; !rows->eof(); rows->moveNext()) {
        const std::int16_t key = nullInt16(rows->value(0));
        const FormulaTotals total = totals[key];
        formulas.push_back(
            {key, nullText(rows->value(1)), total.cost, nullCurrency(rows->value(2)), total.awp});
        const double done = static_cast<double>(formulas.size()) / static_cast<double>(rows->recordCount());
        if (goesOn && formulas.size() % rowsAtOnce == 0 &&
            !goesOn(shareOfTotals + (1 - shareOfTotals) * done))
            return {};
    }
    rows->close();
    return formulas;
}

FormulaCosts repriced(const std::vector<RepricedFormula>& before, const std::vector<RepricedFormula>& now) {
    std::map<std::int16_t, const RepricedFormula*> former;
    for (const RepricedFormula& formula : before)
        former.emplace(formula.key, &formula);
    FormulaCosts costs;
    for (const RepricedFormula& formula : now) {
        const auto known = former.find(formula.key);
        if (known != former.end() &&
            (known->second->cost != formula.cost || known->second->awp != formula.awp))
            costs.emplace(formula.key, known->second->cost);
    }
    return costs;
}

PricesStored storePrices(const std::vector<RepricedFormula>& shown) {
    return guarded(u"Repricing:store"_s, PricesStored::Failed, [&] {
        try {
            return storeWhole(shown) ? PricesStored::All : PricesStored::ChangedMeanwhile;
        } catch (const Overtaken&) {
            return PricesStored::ChangedMeanwhile;
        }
    });
}

ChangedMeanwhile firstChanged(const std::vector<RepricedFormula>& shown) {
    const std::vector<RepricedFormula> now = formulaPrices();
    for (const RepricedFormula& formula : shown) {
        const auto same = std::find_if(now.begin(), now.end(),
                                       [&](const RepricedFormula& one) { return one.key == formula.key; });
        if (same == now.end() || !(*same == formula))
            return {formula.name, changerOf(formula.key)};
    }
    return {};
}

}  // namespace sorvanto
