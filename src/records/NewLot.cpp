// The new record and the lines that take it, in one transaction.
#include "records/NewLot.h"

#include "history/HistoryBook.h"
#include "history/HistoryDeed.h"
#include "platform/basic/Values.h"
#include "platform/data/Overtaken.h"
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

/// Leaves the span: another one has been at that record meanwhile.
struct NotAsShown {
    HistoryRecord record;
    QString name;
};

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

namespace {

bool isAsShown(const clsChemical& shown) {
    const RecordsetPtr row = Recordset::create();
    row->open(
        u"SELECT chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Notes, chm_Form, chm_Supplier, chm_Cost, chm_AWP FROM "
        "Chemical WHERE ChemicalID = %1"_s.arg(shown.ChemicalID),
        openDB());
    if (row->eof())
        return false;
    int column = 0;
    for (const QString& text : {shown.chm_Name, shown.chm_Units, shown.chm_Lot, shown.chm_NDC,
                                shown.chm_Notes, shown.chm_Form, shown.chm_Supplier}) {
        if (nullText(row->value(column++)) != text)
            return false;
    }
    return nullCurrency(row->value(column)) == shown.chm_Cost &&
           nullCurrency(row->value(column + 1)) == shown.chm_AWP;
}

QString nameOfFormula(std::int16_t key) {
    const RecordsetPtr row = Recordset::create();
    row->open(u"SELECT frm_Name FROM Formula WHERE FormulaID = %1"_s.arg(key), openDB());
    return row->eof() ? QString() : nullText(row->value(0));
}

clsChemicalPtr addWhole(const clsChemical& shown, const NewLot& delivered,
                        const std::vector<std::int16_t>& formulas) {
    const ConnectionPtr connection = openDB();
    Transaction whole(connection->engine(), u"UPDATE FormChem"_s, Sees::OneMoment);
    if (!isAsShown(shown) || hasLot(lotsOf(shown.chm_Name), delivered.lot))
        throw NotAsShown{{u"Chemical"_s, shown.ChemicalID}, shown.chm_Name};
    const HistoryDeed deed(connection->engine(), Deed::NewLot, shown.chm_Name);
    const clsChemicalPtr added = addCopy(shown, delivered);
    for (const std::int16_t formula : formulas) {
        const auto lines = connection->execute(
            u"UPDATE FormChem SET ChemicalID = %1 WHERE ChemicalID = %2 AND FormulaID = %3"_s
                .arg(added->ChemicalID)
                .arg(shown.ChemicalID)
                .arg(formula));
        if (lines == 0)
            throw NotAsShown{{u"Formula"_s, formula}, nameOfFormula(formula)};
    }
    whole.commit();
    return added;
}

}  // namespace

AddedLot addNewLot(const clsChemical& shown, const NewLot& delivered,
                   const std::vector<std::int16_t>& formulas) {
    return guarded(u"NewLot:add"_s, AddedLot(), [&]() -> AddedLot {
        try {
            if (orReported(clsChemical().openChemical(shown.ChemicalID, QString()))->ChemicalID == 0)
                return {};  // the search has said so
            return {addWhole(shown, delivered, formulas)};
        } catch (const Reported&) {
            return {};
        } catch (const NotAsShown& changed) {
            return {nullptr,
                    ChangedMeanwhile{changed.name, lastChanger(openDB()->engine(), {changed.record})}};
        } catch (const Overtaken&) {
            return {nullptr, ChangedMeanwhile()};
        }
    });
}

}  // namespace sorvanto
