// The new record and the lines that take it, in one transaction.
#include "records/NewLot.h"

#include "history/HistoryDeed.h"
#include "platform/basic/Values.h"
#include "platform/data/Recordset.h"
#include "platform/data/Transaction.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

bool isSame(const QString& one, const QString& other) {
    return one.trimmed().compare(other.trimmed(), Qt::CaseInsensitive) == 0;
}

/// What a failure that was reported on the way is passed on with.
struct Reported {};

clsChemicalPtr orReported(clsChemicalPtr chemical) {
    if (!chemical)
        throw Reported();
    return chemical;
}

/// As the chemical screen adds and saves a record: the copy has a key and an identity of its own.
clsChemicalPtr addCopy(const clsChemical& former, const NewLot& delivered) {
    const clsChemicalPtr copy = orReported(clsChemical().addChemical());
    copy->chm_Name = former.chm_Name;
    copy->chm_Units = former.chm_Units;
    copy->chm_NDC = former.chm_NDC;
    copy->chm_Notes = former.chm_Notes;
    copy->chm_Form = former.chm_Form;
    copy->chm_Lot = delivered.lot.trimmed();
    copy->chm_Supplier = delivered.supplier;
    copy->chm_Cost = delivered.cost;
    copy->chm_AWP = delivered.awp;
    return orReported(clsChemical().saveChemical(copy));
}

}  // namespace

std::vector<UsingFormula> formulasUsing(std::int16_t chemical) {
    const RecordsetPtr rows = Recordset::create();
    rows->open(u"SELECT DISTINCT Formula.FormulaID, Formula.frm_Name FROM Formula INNER JOIN FormChem ON "
               "Formula.FormulaID = FormChem.FormulaID WHERE FormChem.ChemicalID = %1 "
               "ORDER BY Formula.frm_Name, Formula.FormulaID"_s.arg(chemical),
               openDB());
    std::vector<UsingFormula> formulas;
    for (; !rows->eof(); rows->moveNext())
        formulas.push_back({nullInt16(rows->value(0)), nullText(rows->value(1))});
    rows->close();
    return formulas;
}

QStringList lotsOf(const QString& name) {
    const RecordsetPtr rows = Recordset::create();
    rows->open(u"SELECT chm_Name, chm_Lot FROM Chemical"_s, openDB());
    QStringList lots;
    for (; !rows->eof(); rows->moveNext()) {
        if (isSame(nullText(rows->value(0)), name))
            lots << nullText(rows->value(1));
    }
    return lots;
}

bool hasLot(const QStringList& lots, const QString& lot) {
    return std::any_of(lots.begin(), lots.end(), [&](const QString& one) { return isSame(one, lot); });
}

clsChemicalPtr addNewLot(std::int16_t chemical, const NewLot& delivered,
                         const std::vector<std::int16_t>& formulas) {
    return guarded(u"NewLot:add"_s, clsChemicalPtr(), [&]() -> clsChemicalPtr {
        try {
            const clsChemicalPtr former = orReported(clsChemical().openChemical(chemical, QString()));
            if (former->ChemicalID == 0)
                return nullptr;  // the search has said so
            const ConnectionPtr connection = openDB();
            Transaction whole(connection->engine());
            const HistoryDeed deed(connection->engine(), Deed::NewLot, former->chm_Name);
            const clsChemicalPtr added = addCopy(*former, delivered);
            for (const std::int16_t formula : formulas)
                connection->execute(
                    u"UPDATE FormChem SET ChemicalID = %1 WHERE ChemicalID = %2 AND FormulaID = %3"_s
                        .arg(added->ChemicalID)
                        .arg(chemical)
                        .arg(formula));
            whole.commit();
            return added;
        } catch (const Reported&) {
            return nullptr;
        }
    });
}

}  // namespace sorvanto
