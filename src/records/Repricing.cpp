// The sums are those that the formula record itself is opened and saved with.
#include "records/Repricing.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/Recordset.h"
#include "platform/data/Transaction.h"
#include "records/FormulaLines.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

std::vector<RepricedFormula> formulaPrices() {
    const RecordsetPtr rows = Recordset::create();
    rows->open(u"SELECT FormulaID, frm_Name, frm_AWP FROM Formula ORDER BY frm_Name, FormulaID"_s, openDB());
    std::vector<RepricedFormula> formulas;
    for (; !rows->eof(); rows->moveNext()) {
        const std::int16_t key = nullInt16(rows->value(0));
        const FormulaTotals totals = readTotals(key);
        formulas.push_back(
            {key, nullText(rows->value(1)), totals.cost, nullCurrency(rows->value(2)), totals.awp});
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
