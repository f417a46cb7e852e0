// The row of the table Formula with its lines: its statements and the rules by which it is found.
// The scaling to a batch stands in clsFormula_make.cpp.
#include "records/clsFormula.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ReadAhead.h"
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
    formula.FormulaID = nullInt16(row.value(u"FormulaID"_s));
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
        return u"WHERE ([FormulaID] = "_s + QString::number(key) + u")"_s;
    case SearchBy::Code:
        return likeFilter(u"frm_NDC"_s, search);
    default:
        return likeFilter(u"frm_Name"_s, search);
    }
}

/// What is read of a formula behind its row.
std::vector<ReadAhead::Set> setsOf(std::int16_t key) {
    return {{totalsStatement(key)}, {linesStatement(LineColumns::Full, key)}};
}

/// The unit of a chemical, for which the search has no column; empty when it can't be read, since it is only
/// shown.
QString unitsOf(const QString& chemical) {
    try {
        const RecordsetPtr rows = Recordset::create();
        rows->open(u"SELECT [chm_Units] FROM [Chemical] WHERE [ChemicalID] = "_s + chemical, openDB());
        return rows->eof() ? QString() : nullText(rows->value(0));
    } catch (const RuntimeError&) {
        return {};
    }
}

QString chemicalFilter(QString& search) {
    switch (searchByFirst(search, {u'#', u'?'})) {
    case SearchBy::Key:
        return u"WHERE ([ChemicalID] = "_s + numberText(leadingNumber(search)) + u")"_s;
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

clsFormula::clsFormula() : frm_Mix(XmlDocument::create()) {}

bool clsFormula::deleteFormula(const clsFormulaPtr& Formula, bool Silent) {
    return guarded(u"clsFormula:deleteFormula"_s, false, [&] {
        const clsFormulaPtr held = Formula;  // the screen may show another one when the question is answered
        const clsFormula& formula = deref(held);
        if (!Silent && !confirmedDeletion(translated(u"%1 %2?"_s), formula.frm_Name))
            return false;
        for (const QString& table : {u"[FormChem] WHERE "_s, u"[Formula] WHERE "_s}) {  // the lines go first
            strSQL = u"DELETE FROM "_s;
            strSQL += table;
            strSQL += u"(FormulaID = "_s + QString::number(formula.FormulaID) + u");"_s;
            openDB()->execute(strSQL);
        }
        return true;
    });
}

clsFormulaPtr clsFormula::addFormula() {
    return guarded(u"clsFormula:addFormula"_s, clsFormulaPtr(), [&] {
        strSQL = u"INSERT INTO "_s;
        strSQL += u" Formula ("_s;
        strSQL += u" [frm_Name], "_s;
        strSQL += u" [frm_Desc], "_s;
        strSQL += u" [frm_Strength], "_s;
        strSQL += u" [frm_Units], "_s;
        strSQL += u" [frm_Instructions], "_s;
        strSQL += u" [frm_Quantity], "_s;
        strSQL += u" [frm_JarSize], "_s;
        strSQL += u" [frm_FormType], "_s;
        strSQL += u" [frm_AWP], "_s;
        strSQL += u" [frm_NDC], "_s;
        strSQL += u" [frm_GUID], "_s;
        strSQL += u" [frm_Mix] "_s;
        strSQL += u" ) "_s;
        strSQL += u" VALUES ("_s;
        strSQL += u"'', '', '', "_s;
        strSQL += u"'MLS', "_s;
        strSQL += u"'', "_s;
        strSQL += u"0, 3, 3, 0, "_s;
        strSQL += u"'', "_s;
        strSQL += u"'"_s + GUIDFactory().CreateGUID() + u"', "_s;
        strSQL += u"'') "_s;
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
    return guarded(u"clsFormula:openFormula"_s, clsFormulaPtr(), [&] {
        strSQL = u"SELECT"_s;
        strSQL += u" [FormulaID]"_s;
        strSQL += aliasedColumns(u",[%1] AS [%2]"_s, {{"frm_Name", "Name"},
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
        strSQL += u" FROM [Formula] "_s;
        const bool byKey = Search.isEmpty();
        strSQL += formulaFilter(key, Search);
        const ReadAhead rest(basMain::gConnection, byKey ? setsOf(key) : std::vector<ReadAhead::Set>());
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB());
        if (rows->recordCount() > 0)  // nothing found gives no message here
            chooseRow(rows, u"FormulaID"_s);
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
    return guarded(u"clsFormula:saveFormula"_s, clsFormulaPtr(), [&] {
        clsFormula& formula = deref(Formula);
        setTotals(formula, readTotals(formula.FormulaID));
        strSQL = u"UPDATE Formula SET "_s;
        strSQL += u"[frm_Name] = '"_s + userText(formula.frm_Name) + u"', "_s;
        strSQL += u"[frm_Desc] = '"_s + userText(formula.frm_Desc) + u"', "_s;
        strSQL += u"[frm_Strength] = '"_s + userText(formula.frm_Strength) + u"', "_s;
        strSQL += u"[frm_Units] = '"_s + userText(formula.frm_Units) + u"', "_s;
        strSQL += u"[frm_Instructions] = '"_s + userText(formula.frm_Instructions) + u"', "_s;
        strSQL += u"[frm_NDC] = '"_s + userText(formula.frm_NDC) + u"', "_s;
        strSQL += u"[frm_Quantity] = "_s + QString::number(formula.frm_Quantity) + u", "_s;
        strSQL += u"[frm_JarSize] = "_s + QString::number(formula.frm_JarSize) + u", "_s;
        strSQL += u"[frm_FormType] = "_s + QString::number(formula.frm_FormType) + u", "_s;
        strSQL += u"[frm_AWP] = '"_s + formula.frm_AWP.toText() + u"', "_s;
        strSQL += u"[frm_Mix] = '"_s + deref(formula.frm_Mix).xml() + u"'"_s;
        strSQL += u"WHERE [FormulaID] = "_s + QString::number(formula.FormulaID);
        return openDB()->execute(strSQL) > 0 ? Formula : nullptr;
    });
}

void clsFormula::openIngredients() {
    setTotals(*this, readTotals(FormulaID));
    Chemical = openLines(LineColumns::Short, FormulaID);
}

bool clsFormula::deleteChemical(std::int16_t FormChemID) {
    return guarded(u"clsFormula:deleteChemical"_s, false, [&] {
        strSQL = u"DELETE "_s;
        strSQL += u"FROM [FormChem] "_s;
        strSQL += u"WHERE "_s;
        strSQL += u"FormChemID = "_s + QString::number(FormChemID);
        const auto count = openDB()->execute(strSQL);
        setTotals(*this, readTotals(FormulaID));
        Chemical = openLines(LineColumns::Short, FormulaID);
        return count > 0;
    });
}

bool clsFormula::addChemical(QString& Search) {
    return guarded(u"clsFormula:addChemical"_s, false, [&] {
        strSQL = u"SELECT "_s;
        strSQL += u"[ChemicalID],[chm_Name] AS "_s;
        strSQL += u"Name"_s;
        strSQL += u", [chm_NDC] AS "_s;
        strSQL += u"NDC"_s;
        strSQL += u" FROM [Chemical] "_s;
        strSQL += chemicalFilter(Search);
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB());
        chooseRow(rows, u"ChemicalID"_s);
        if (rows->eof())
            return false;
        const QString key = nullText(rows->value(0));
        const QString quantity =
            InputBox(translated(u"Input desired quantity for chemical"_s), u""_s, {},
                     quantityGuide(nullText(rows->value(1)), [key] { return unitsOf(key); }));
        strSQL = lineInsert(FormulaID, key, quantity, u"0"_s, u"1"_s);
        const auto count = openDB()->execute(strSQL);
        setTotals(*this, readTotals(FormulaID));
        Chemical = openLines(LineColumns::Short, FormulaID);
        return count > 0;
    });
}

clsFormulaPtr clsFormula::copyFormula(const clsFormulaPtr& Formula) {
    return guarded(u"clsFormula:copyFormula"_s, clsFormulaPtr(), [&] {
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
        copy->frm_Name = u"Copy of "_s + original.frm_Name;
        saveFormula(copy);
        Recordset& lines = deref(original.Chemical);
        if (!lines.bof())
            lines.moveFirst();
        for (; !lines.eof(); lines.moveNext()) {
            strSQL = lineInsert(copy->FormulaID, nullText(lines.value(u"ChemicalID"_s)),
                                nullText(lines.value(u"fch_Qty"_s)), nullText(lines.value(u"fch_QS"_s)),
                                nullText(lines.value(u"fch_Active"_s)));
            openDB()->execute(strSQL);
        }
        return copy->openFormula(copy->FormulaID, QString());
    });
}

}  // namespace sorvanto
