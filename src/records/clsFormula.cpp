// The row of the table Formula with its lines: its statements and the rules by which it is found.
// The scaling to a batch stands in clsFormula_make.cpp.
#include "records/clsFormula.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "records/FormulaLines.h"
#include "records/GUIDFactory.h"
#include "records/QuantityNote.h"
#include "records/RecordStatements.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// Reads the row the set stands on; the fields have translated names and are taken by position, except
/// the key. A NULL mix programme is a failure.
void readFormula(clsFormula& formula, const Recordset& row) {
    formula.FormulaID = nullInt16(row.value("FormulaID"));
    formula.frm_Name = nullText(row.value(1));
    formula.frm_Desc = nullText(row.value(2));
    formula.frm_Strength = nullText(row.value(3));
    formula.frm_Units = nullText(row.value(4));
    formula.frm_Instructions = nullText(row.value(5));
    formula.frm_Quantity = nullInt16(row.value(6));
    formula.frm_JarSize = nullInt16(row.value(7));
    formula.frm_FormType = nullInt16(row.value(8));
    formula.frm_NDC = nullText(row.value(9));
    formula.frm_AWP = nullCurrency(row.value(10));
    formula.frm_GUID = nullText(row.value(11));
    formula.frm_Mix->loadXML(valueText(row.value(12)));
}

void setTotals(clsFormula& formula, const FormulaTotals& totals) {
    formula.frm_Cost = totals.cost;
    formula.frm_AWP = totals.awp;
}

QString formulaFilter(std::int16_t key, QString& search) {
    switch (searchByFirst(search, {u'#', {}})) {
    case SearchBy::Key:
        return "WHERE ([FormulaID] = " + QString::number(key) + ")";
    case SearchBy::Code:
        return likeFilter("frm_NDC", search);
    default:
        return likeFilter("frm_Name", search);
    }
}

/// The unit of a chemical, for which the search has no column; empty when it can't be read, since it is only
/// shown.
QString unitsOf(const QString& chemical) {
    try {
        const RecordsetPtr rows = Recordset::create();
        rows->open("SELECT [chm_Units] FROM [Chemical] WHERE [ChemicalID] = " + chemical, openDB());
        return rows->eof() ? QString() : nullText(rows->value(0));
    } catch (const RuntimeError&) {
        return {};
    }
}

QString chemicalFilter(QString& search) {
    switch (searchByFirst(search, {u'#', u'?'})) {
    case SearchBy::Key:
        return "WHERE ([ChemicalID] = " + numberText(leadingNumber(search)) + ")";
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

clsFormula::clsFormula() : frm_Mix(XmlDocument::create()) {}

bool clsFormula::deleteFormula(const clsFormulaPtr& Formula, bool Silent) {
    return guarded("clsFormula:deleteFormula", false, [&] {
        const clsFormulaPtr held = Formula;  // the screen may show another one when the question is answered
        const clsFormula& formula = deref(held);
        if (!Silent && !confirmedDeletion(translated("%1 %2?"), formula.frm_Name))
            return false;
        for (const char* table : {"[FormChem] WHERE ", "[Formula] WHERE "}) {  // the lines go first
            strSQL = "DELETE FROM ";
            strSQL += table;
            strSQL += "(FormulaID = " + QString::number(formula.FormulaID) + ");";
            openDB()->execute(strSQL);
        }
        return true;
    });
}

clsFormulaPtr clsFormula::addFormula() {
    return guarded("clsFormula:addFormula", clsFormulaPtr(), [&] {
        strSQL = "INSERT INTO ";
        strSQL += " Formula (";
        strSQL += " [frm_Name], ";
        strSQL += " [frm_Desc], ";
        strSQL += " [frm_Strength], ";
        strSQL += " [frm_Units], ";
        strSQL += " [frm_Instructions], ";
        strSQL += " [frm_Quantity], ";
        strSQL += " [frm_JarSize], ";
        strSQL += " [frm_FormType], ";
        strSQL += " [frm_AWP], ";
        strSQL += " [frm_NDC], ";
        strSQL += " [frm_GUID], ";
        strSQL += " [frm_Mix] ";
        strSQL += " ) ";
        strSQL += " VALUES (";
        strSQL += "'', '', '', ";
        strSQL += "'MLS', ";
        strSQL += "'', ";
        strSQL += "0, 3, 3, 0, ";
        strSQL += "'', ";
        strSQL += "'" + GUIDFactory().CreateGUID() + "', ";
        strSQL += "'') ";
        openDB()->execute(strSQL);
        auto formula = std::make_shared<clsFormula>();
        formula->FormulaID = toInt16(lastIdentity());
        formula->Chemical = openLines(LineColumns::AfterAdd, formula->FormulaID);
        return formula->openFormula(formula->FormulaID, QString());
    });
}

clsFormulaPtr clsFormula::openFormula(std::int16_t key, const QString& Search) {
    QString search = Search;
    return openFormula(key, search);
}

clsFormulaPtr clsFormula::openFormula(std::int16_t key, QString& Search) {
    return guarded("clsFormula:openFormula", clsFormulaPtr(), [&] {
        strSQL = "SELECT";
        strSQL += " [FormulaID]";
        strSQL += aliasedColumns(",[%1] AS [%2]", {{"frm_Name", "Name"},
                                                   {"frm_Desc", "Description"},
                                                   {"frm_Strength", "Strength"},
                                                   {"frm_Units", "Units"},
                                                   {"frm_Instructions", "Instructions"},
                                                   {"frm_Quantity", "Quantity"},
                                                   {"frm_JarSize", "Jar"},
                                                   {"frm_FormType", "Form"},
                                                   {"frm_NDC", "NDC"},
                                                   {"frm_AWP", "AWP"},
                                                   {"frm_GUID", "UniqueID"},
                                                   {"frm_Mix", "Mix"}});
        strSQL += " FROM [Formula] ";
        strSQL += formulaFilter(key, Search);
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB());
        if (rows->recordCount() > 0)  // nothing found gives no message here
            chooseRow(rows, "FormulaID");
        auto formula = std::make_shared<clsFormula>();
        if (!rows->eof())
            readFormula(*formula, *rows);
        setTotals(*formula, readTotals(formula->FormulaID));
        formula->Chemical = openLines(LineColumns::Full, formula->FormulaID);
        rows->close();
        return formula;
    });
}

clsFormulaPtr clsFormula::saveFormula(const clsFormulaPtr& Formula) {
    return guarded("clsFormula:saveFormula", clsFormulaPtr(), [&] {
        clsFormula& formula = deref(Formula);
        setTotals(formula, readTotals(formula.FormulaID));
        strSQL = "UPDATE Formula SET ";
        strSQL += "[frm_Name] = '" + userText(formula.frm_Name) + "', ";
        strSQL += "[frm_Desc] = '" + userText(formula.frm_Desc) + "', ";
        strSQL += "[frm_Strength] = '" + userText(formula.frm_Strength) + "', ";
        strSQL += "[frm_Units] = '" + userText(formula.frm_Units) + "', ";
        strSQL += "[frm_Instructions] = '" + userText(formula.frm_Instructions) + "', ";
        strSQL += "[frm_NDC] = '" + userText(formula.frm_NDC) + "', ";
        strSQL += "[frm_Quantity] = " + QString::number(formula.frm_Quantity) + ", ";
        strSQL += "[frm_JarSize] = " + QString::number(formula.frm_JarSize) + ", ";
        strSQL += "[frm_FormType] = " + QString::number(formula.frm_FormType) + ", ";
        strSQL += "[frm_AWP] = '" + formula.frm_AWP.toText() + "', ";
        strSQL += "[frm_Mix] = '" + deref(formula.frm_Mix).xml() + "'";
        strSQL += "WHERE [FormulaID] = " + QString::number(formula.FormulaID);
        return openDB()->execute(strSQL) > 0 ? Formula : nullptr;
    });
}

bool clsFormula::deleteChemical(std::int16_t FormChemID) {
    return guarded("clsFormula:deleteChemical", false, [&] {
        strSQL = "DELETE ";
        strSQL += "FROM [FormChem] ";
        strSQL += "WHERE ";
        strSQL += "FormChemID = " + QString::number(FormChemID);
        const auto count = openDB()->execute(strSQL);
        setTotals(*this, readTotals(FormulaID));
        Chemical = openLines(LineColumns::Short, FormulaID);
        return count > 0;
    });
}

bool clsFormula::addChemical(QString& Search) {
    return guarded("clsFormula:addChemical", false, [&] {
        strSQL = "SELECT ";
        strSQL += "[ChemicalID],[chm_Name] AS ";
        strSQL += "Name";
        strSQL += ", [chm_NDC] AS ";
        strSQL += "NDC";
        strSQL += " FROM [Chemical] ";
        strSQL += chemicalFilter(Search);
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB());
        chooseRow(rows, "ChemicalID");
        if (rows->eof())
            return false;
        const QString key = nullText(rows->value(0));
        const QString quantity =
            InputBox(translated("Input desired quantity for chemical"), u""_s, {},
                     quantityGuide(nullText(rows->value(1)), [key] { return unitsOf(key); }));
        strSQL = lineInsert(FormulaID, key, quantity, "0", "1");
        const auto count = openDB()->execute(strSQL);
        setTotals(*this, readTotals(FormulaID));
        Chemical = openLines(LineColumns::Short, FormulaID);
        return count > 0;
    });
}

clsFormulaPtr clsFormula::copyFormula(const clsFormulaPtr& Formula) {
    return guarded("clsFormula:copyFormula", clsFormulaPtr(), [&] {
        const clsFormula& original = deref(Formula);
        auto copy = std::make_shared<clsFormula>();
        const clsFormulaPtr added = copy->addFormula();
        copy->FormulaID = deref(added).FormulaID;
        copy->frm_GUID = added->frm_GUID;
        copy->frm_AWP = original.frm_AWP;
        copy->frm_Cost = original.frm_Cost;
        copy->frm_Desc = original.frm_Desc;
        copy->frm_FormType = original.frm_FormType;
        copy->frm_Instructions = original.frm_Instructions;
        copy->frm_JarSize = original.frm_JarSize;
        copy->frm_Mix = original.frm_Mix;  // the same document, not a clone
        copy->frm_NDC = original.frm_NDC;
        copy->frm_Quantity = original.frm_Quantity;
        copy->frm_Strength = original.frm_Strength;
        copy->frm_Units = original.frm_Units;
        copy->frm_Name = "Copy of " + original.frm_Name;
        saveFormula(copy);
        Recordset& lines = deref(original.Chemical);
        if (!lines.bof())
            lines.moveFirst();
        for (; !lines.eof(); lines.moveNext()) {
            strSQL = lineInsert(copy->FormulaID, nullText(lines.value("ChemicalID")),
                                nullText(lines.value("fch_Qty")), nullText(lines.value("fch_QS")),
                                nullText(lines.value("fch_Active")));
            openDB()->execute(strSQL);
        }
        return copy->openFormula(copy->FormulaID, QString());
    });
}

}  // namespace sorvanto
