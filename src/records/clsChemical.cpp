// The row of the table Chemical: its statements and the rules by which it is found.
#include "records/clsChemical.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ReadAhead.h"
#include "records/GUIDFactory.h"
#include "records/RecordStatements.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// Reads the row the set stands on; the fields have translated names and are taken by position.
clsChemicalPtr readChemical(const Recordset& row) {
    auto chemical = std::make_shared<clsChemical>();
    chemical->ChemicalID = nullInt16(row.value(0));
    chemical->chm_Name = nullText(row.value(1));
    chemical->chm_Units = nullText(row.value(2));
    chemical->chm_Lot = nullText(row.value(3));
    chemical->chm_NDC = nullText(row.value(4));
    chemical->chm_Cost = nullCurrency(row.value(5));
    chemical->chm_AWP = nullCurrency(row.value(6));
    chemical->chm_Notes = nullText(row.value(7));
    chemical->chm_Form = nullText(row.value(8));
    chemical->chm_GUID = nullText(row.value(9));
    chemical->chm_Supplier = nullText(row.value(10));
    return chemical;
}

QString chemicalFilter(std::int16_t key, QString search) {
    switch (searchByAny(search, {u'#', u'$'})) {
    case SearchBy::Key:
        return u"WHERE ([ChemicalID] = "_s + QString::number(key) + u")"_s;
    case SearchBy::Code:
        return likeFilter(u"chm_NDC"_s, search);
    case SearchBy::Lot:
        return likeFilter(u"chm_Lot"_s, search);
    case SearchBy::Name:
        break;
    }
    return likeFilter(u"chm_Name"_s, search);
}

}  // namespace

clsChemical::clsChemical()
    : chm_Units(translated(u"Select Units"_s)), chm_Form(translated(u"Select Form"_s)) {}

bool clsChemical::deleteChemical(const clsChemicalPtr& Chemical, bool Silent) {
    return guarded(u"clsChemical:deleteChemical"_s, false, [&] {
        const clsChemicalPtr held =
            Chemical;  // the screen may show another one when the question is answered
        const clsChemical& chemical = deref(held);
        if (!Silent && !confirmedDeletion(translated(u"%1 %2?"_s), chemical.chm_Name))
            return false;
        strSQL = u"DELETE FROM "_s;
        strSQL += u"[Chemical] WHERE "_s;
        strSQL += u"(ChemicalID = "_s + QString::number(chemical.ChemicalID) + u");"_s;
        try {
            openDB()->execute(strSQL);
        } catch (const RuntimeError& failure) {
            if (!isRefusedRelation(failure))
                throw;
            tellRefusal(chemical.chm_Name, u"is currently used in a formula,\rit can not be deleted."_s);
            return false;
        }
        return true;
    });
}

clsChemicalPtr clsChemical::saveChemical(const clsChemicalPtr& Chemical) {
    return guarded(u"clsChemical:saveChemical"_s, clsChemicalPtr(), [&] {
        const clsChemical& chemical = deref(Chemical);
        strSQL = u"UPDATE Chemical SET "_s;
        strSQL += u"[chm_Name] = '"_s + userText(chemical.chm_Name) + u"', "_s;
        strSQL += u"[chm_Units] = '"_s + userText(chemical.chm_Units) + u"', "_s;
        strSQL += u"[chm_Lot] = '"_s + userText(chemical.chm_Lot) + u"', "_s;
        strSQL += u"[chm_NDC] = '"_s + userText(chemical.chm_NDC) + u"', "_s;
        strSQL += u"[chm_Cost] = '"_s + chemical.chm_Cost.toText() + u"', "_s;
        strSQL += u"[chm_AWP] = '"_s + chemical.chm_AWP.toText() + u"', "_s;
        strSQL += u"[chm_Notes] = '"_s + userText(chemical.chm_Notes) + u"', "_s;
        strSQL += u"[chm_Form] = '"_s + userText(chemical.chm_Form) + u"', "_s;
        strSQL += u"[chm_Supplier] = '"_s + userText(chemical.chm_Supplier) + u"' "_s;
        strSQL += u"WHERE [ChemicalID] = "_s + QString::number(chemical.ChemicalID);
        return openDB()->execute(strSQL) > 0 ? Chemical : nullptr;
    });
}

clsChemicalPtr clsChemical::addChemical() {
    return guarded(u"clsChemical:chemicalAdd"_s, clsChemicalPtr(), [&] {
        strSQL = u"INSERT INTO "_s;
        strSQL += u" Chemical ("_s;
        strSQL += u" [chm_Name], "_s;
        strSQL += u" [chm_Units], "_s;
        strSQL += u" [chm_Lot], "_s;
        strSQL += u" [chm_NDC], "_s;
        strSQL += u" [chm_Cost], "_s;
        strSQL += u" [chm_AWP], "_s;
        strSQL += u" [chm_Notes], "_s;
        strSQL += u" [chm_Form], "_s;
        strSQL += u" [chm_GUID], "_s;
        strSQL += u" [chm_Supplier]"_s;
        strSQL += u" ) "_s;
        strSQL += u" VALUES ("_s;
        strSQL += u"'', '', '', '', "_s;
        strSQL += u"0, 0, "_s;
        strSQL += u"'', '', "_s;
        strSQL += u"'"_s + GUIDFactory().CreateGUID() + u"', "_s;
        strSQL += u"''); "_s;
        openDB()->execute(strSQL);
        auto chemical = std::make_shared<clsChemical>();
        chemical->ChemicalID = toInt16(lastIdentity());
        return chemical->openChemical(chemical->ChemicalID, {});
    });
}

clsChemicalPtr clsChemical::openChemical(std::int16_t key, const QString& Search) {
    return guarded(u"clsChemical:chemicalOpen"_s, clsChemicalPtr(), [&] {
        strSQL = u"SELECT"_s;
        strSQL += u" [ChemicalID]"_s;
        strSQL += aliasedColumns(u",[%1] AS [%2]"_s, {{"chm_Name", "Name"},
                                                      {"chm_Units", "Units"},
                                                      {"chm_Lot", "Lot"},
                                                      {"chm_NDC", "NDC"},
                                                      {"chm_Cost", "Cost"},
                                                      {"chm_AWP", "AWP"},
                                                      {"chm_Notes", "Notes"},
                                                      {"chm_Form", "Form"},
                                                      {"chm_GUID", "UniqueID"},
                                                      {"chm_Supplier", "Supplier"}});
        strSQL += u" FROM [Chemical] "_s;
        strSQL += chemicalFilter(key, Search);
        rs = Recordset::create();
        const auto release = qScopeGuard([this] { rs.reset(); });
        const ReadAhead rows(basMain::gConnection, {});
        rs->open(strSQL, openDB());
        chooseRow(rs, u"ChemicalID"_s);
        const auto chemical = rs->eof() ? std::make_shared<clsChemical>() : readChemical(*rs);
        rs->close();
        return chemical;
    });
}

}  // namespace sorvanto
