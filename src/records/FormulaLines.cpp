// Ingredient lists and cost sum.
#include "records/FormulaLines.h"

#include "platform/basic/Values.h"
#include "records/RecordStatements.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

QString columnList(LineColumns columns) {
    switch (columns) {
    case LineColumns::Full:
        return u"Chemical.chm_Name, Chemical.chm_Units,FormChem.fch_Qty, FormChem.fch_Active, "
               "FormChem.fch_QS, FormChem.FormChemID, Chemical.chm_Form, Chemical.chm_Supplier, "
               "Chemical.chm_Notes, Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_NDC, "
               "Chemical.chm_Lot, Chemical.chm_GUID, FormChem.ChemicalID "_s;
    case LineColumns::AfterAdd:
        return u"Chemical.chm_Name, Chemical.chm_Units,FormChem.fch_Qty, FormChem.fch_Active, "
               "FormChem.fch_QS, FormChem.FormChemID, Chemical.chm_Form, Chemical.chm_Supplier, "
               "Chemical.chm_Notes, Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_NDC, "
               "FormChem.ChemicalID "_s;
    case LineColumns::Short:
        break;
    }
    return u"Chemical.chm_Name, Chemical.chm_Units, FormChem.fch_Qty, FormChem.fch_Active, "
           "FormChem.fch_QS, FormChem.FormChemID, Chemical.chm_Form, Chemical.chm_Supplier, "
           "Chemical.chm_Notes, Chemical.chm_Cost "_s;
}

}  // namespace

QString totalsStatement(std::int16_t formula) {
    QString statement = u"SELECT "_s;
    statement += u" SUM(CostTable.ChemicalCost) AS TotalCost, SUM(CostTable.ChemicalAWP) AS TotalAWP "_s;
    statement += u"FROM "_s;
    statement += u"[SELECT (Chemical.chm_Cost * FormChem.fch_Qty) AS ChemicalCost, "
                 "(Chemical.chm_AWP * FormChem.fch_Qty) AS ChemicalAWP "_s;
    statement += u"FROM "_s;
    statement += u" Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID "_s;
    statement += u"WHERE "_s;
    statement += u"(((FormChem.FormulaID)="_s + QString::number(formula) + u"))]. AS CostTable"_s;
    return statement;
}

QString linesStatement(LineColumns columns, std::int16_t formula) {
    QString statement = u"SELECT "_s;
    statement += columnList(columns);
    statement += u"FROM "_s;
    statement += u"Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID "_s;
    statement += u"WHERE "_s;
    statement += u"FormChem.FormulaID = "_s;
    statement += QString::number(formula);
    return statement;
}

platform::RecordsetPtr openLines(LineColumns columns, std::int16_t formula) {
    return openEditableList(linesStatement(columns, formula));
}

std::map<std::int16_t, FormulaTotals> readTotals(std::int16_t first, std::int16_t last) {
    const platform::RecordsetPtr sums =
        openEditableList(u"SELECT CostTable.FormulaID, SUM(CostTable.ChemicalCost) AS TotalCost, "
                         "SUM(CostTable.ChemicalAWP) AS TotalAWP FROM [SELECT FormChem.FormulaID, "
                         "(Chemical.chm_Cost * FormChem.fch_Qty) AS ChemicalCost, "
                         "(Chemical.chm_AWP * FormChem.fch_Qty) AS ChemicalAWP FROM "
                         "Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID "
                         "WHERE (FormChem.FormulaID >= %1 AND FormChem.FormulaID <= %2)]. AS CostTable "
                         "GROUP BY CostTable.FormulaID"_s.arg(first)
                             .arg(last));
    std::map<std::int16_t, FormulaTotals> totals;
    for (; !sums->eof(); sums->moveNext())
        totals[platform::nullInt16(sums->value(0))] = {platform::nullCurrency(sums->value(1)),
                                                       platform::nullCurrency(sums->value(2))};
    return totals;
}

FormulaTotals readTotals(std::int16_t formula) {
    const platform::RecordsetPtr sums = openEditableList(totalsStatement(formula));
    return {platform::nullCurrency(sums->value(u"TotalCost"_s)),
            platform::nullCurrency(sums->value(u"TotalAWP"_s))};
}

QString lineInsert(std::int16_t formula, const QString& chemical, const QString& quantity, const QString& qs,
                   const QString& active) {
    QString statement = u"INSERT INTO "_s;
    statement += u" FormChem ("_s;
    statement += u" [FormulaID], "_s;
    statement += u" [ChemicalID], "_s;
    statement += u" [fch_Qty], "_s;
    statement += u" [fch_QS], "_s;
    statement += u" [fch_Active]"_s;
    statement += u" ) "_s;
    statement += u" VALUES ("_s;
    statement += u" "_s + QString::number(formula);
    for (const QString& value : {chemical, quantity, qs, active})
        statement += u", "_s + value;
    statement += u") "_s;
    return statement;
}

}  // namespace sorvanto
