// The row of the table Chemical: its statements and the rules by which it is found.
#include "records/clsChemical.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "records/GUIDFactory.h"
#include "records/RecordStatements.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QScopeGuard>

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
        return "WHERE ([ChemicalID] = " + QString::number(key) + ")";
    case SearchBy::Code:
        return likeFilter("chm_NDC", search);
    case SearchBy::Lot:
        return likeFilter("chm_Lot", search);
    case SearchBy::Name:
        break;
    }
    return likeFilter("chm_Name", search);
}

}  // namespace

clsChemical::clsChemical() : chm_Units(translated("Select Units")), chm_Form(translated("Select Form")) {}

bool clsChemical::deleteChemical(const clsChemicalPtr& Chemical, bool Silent) {
    return guarded("clsChemical:deleteChemical", false, [&] {
        const clsChemicalPtr held =
            Chemical;  // the screen may show another one when the question is answered
        const clsChemical& chemical = deref(held);
        if (!Silent && !confirmedDeletion(translated("%1 %2?"), chemical.chm_Name))
            return false;
        strSQL = "DELETE FROM ";
        strSQL += "[Chemical] WHERE ";
        strSQL += "(ChemicalID = " + QString::number(chemical.ChemicalID) + ");";
        try {
            openDB()->execute(strSQL);
        } catch (const RuntimeError& failure) {
            if (!isRefusedRelation(failure))
                throw;
            tellRefusal(chemical.chm_Name, "is currently used in a formula,\rit can not be deleted.");
            return false;
        }
        return true;
    });
}

clsChemicalPtr clsChemical::saveChemical(const clsChemicalPtr& Chemical) {
    return guarded("clsChemical:saveChemical", clsChemicalPtr(), [&] {
        const clsChemical& chemical = deref(Chemical);
        strSQL = "UPDATE Chemical SET ";
        strSQL += "[chm_Name] = '" + userText(chemical.chm_Name) + "', ";
        strSQL += "[chm_Units] = '" + userText(chemical.chm_Units) + "', ";
        strSQL += "[chm_Lot] = '" + userText(chemical.chm_Lot) + "', ";
        strSQL += "[chm_NDC] = '" + userText(chemical.chm_NDC) + "', ";
        strSQL += "[chm_Cost] = '" + chemical.chm_Cost.toText() + "', ";
        strSQL += "[chm_AWP] = '" + chemical.chm_AWP.toText() + "', ";
        strSQL += "[chm_Notes] = '" + userText(chemical.chm_Notes) + "', ";
        strSQL += "[chm_Form] = '" + userText(chemical.chm_Form) + "', ";
        strSQL += "[chm_Supplier] = '" + userText(chemical.chm_Supplier) + "' ";
        strSQL += "WHERE [ChemicalID] = " + QString::number(chemical.ChemicalID);
        return openDB()->execute(strSQL) > 0 ? Chemical : nullptr;
    });
}

clsChemicalPtr clsChemical::addChemical() {
    return guarded("clsChemical:chemicalAdd", clsChemicalPtr(), [&] {
        strSQL = "INSERT INTO ";
        strSQL += " Chemical (";
        strSQL += " [chm_Name], ";
        strSQL += " [chm_Units], ";
        strSQL += " [chm_Lot], ";
        strSQL += " [chm_NDC], ";
        strSQL += " [chm_Cost], ";
        strSQL += " [chm_AWP], ";
        strSQL += " [chm_Notes], ";
        strSQL += " [chm_Form], ";
        strSQL += " [chm_GUID], ";
        strSQL += " [chm_Supplier]";
        strSQL += " ) ";
        strSQL += " VALUES (";
        strSQL += "'', '', '', '', ";
        strSQL += "0, 0, ";
        strSQL += "'', '', ";
        strSQL += "'" + GUIDFactory().CreateGUID() + "', ";
        strSQL += "''); ";
        openDB()->execute(strSQL);
        auto chemical = std::make_shared<clsChemical>();
        chemical->ChemicalID = toInt16(lastIdentity());
        return chemical->openChemical(chemical->ChemicalID, {});
    });
}

clsChemicalPtr clsChemical::openChemical(std::int16_t key, const QString& Search) {
    return guarded("clsChemical:chemicalOpen", clsChemicalPtr(), [&] {
        strSQL = "SELECT";
        strSQL += " [ChemicalID]";
        strSQL += aliasedColumns(",[%1] AS [%2]", {{"chm_Name", "Name"},
                                                   {"chm_Units", "Units"},
                                                   {"chm_Lot", "Lot"},
                                                   {"chm_NDC", "NDC"},
                                                   {"chm_Cost", "Cost"},
                                                   {"chm_AWP", "AWP"},
                                                   {"chm_Notes", "Notes"},
                                                   {"chm_Form", "Form"},
                                                   {"chm_GUID", "UniqueID"},
                                                   {"chm_Supplier", "Supplier"}});
        strSQL += " FROM [Chemical] ";
        strSQL += chemicalFilter(key, Search);
        rs = Recordset::create();
        const auto release = qScopeGuard([this] { rs.reset(); });
        rs->open(strSQL, openDB());
        chooseRow(rs, "ChemicalID");
        const auto chemical = rs->eof() ? std::make_shared<clsChemical>() : readChemical(*rs);
        rs->close();
        return chemical;
    });
}

}  // namespace sorvanto
