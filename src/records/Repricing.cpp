// The sums are those that the formula record itself is opened and saved with.
#include "records/Repricing.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Recordset.h"
#include "platform/data/Transaction.h"
#include "records/FormulaLines.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

constexpr int keysAtOnce = 4'096;
constexpr std::size_t rowsAtOnce = 256;
constexpr double shareOfTotals = 0.5;  // of the time

}  // namespace

std::vector<RepricedFormula> formulaPrices(const std::function<bool(double)>& goesOn) {
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

bool storePrices(const std::vector<std::int16_t>& formulas) {
    return guarded(u"Repricing:store"_s, false, [&] {
        const ConnectionPtr connection = openDB();
        Transaction whole(connection->engine());
        for (const std::int16_t formula : formulas)
            connection->execute(u"UPDATE Formula SET [frm_AWP] = '%1' WHERE [FormulaID] = %2"_s
                                    .arg(readTotals(formula).awp.toText())
                                    .arg(formula));
        whole.commit();
        return true;
    });
}

}  // namespace sorvanto
