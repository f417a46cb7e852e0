// Ingredient lists and cost sum.
#include "records/FormulaLines.h"

#include "platform/basic/Values.h"
#include "records/RecordStatements.h"

namespace sorvanto {

namespace {

QString columnList(LineColumns columns) {
    switch (columns) {
    case LineColumns::Full:
        return "Chemical.chm_Name, Chemical.chm_Units,FormChem.fch_Qty, FormChem.fch_Active, "
               "FormChem.fch_QS, FormChem.FormChemID, Chemical.chm_Form, Chemical.chm_Supplier, "
               "Chemical.chm_Notes, Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_NDC, "
               "Chemical.chm_Lot, Chemical.chm_GUID, FormChem.ChemicalID ";
    case LineColumns::AfterAdd:
        return "Chemical.chm_Name, Chemical.chm_Units,FormChem.fch_Qty, FormChem.fch_Active, "
               "FormChem.fch_QS, FormChem.FormChemID, Chemical.chm_Form, Chemical.chm_Supplier, "
               "Chemical.chm_Notes, Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_NDC, "
               "FormChem.ChemicalID ";
    case LineColumns::Short:
        break;
    }
    return "Chemical.chm_Name, Chemical.chm_Units, FormChem.fch_Qty, FormChem.fch_Active, "
           "FormChem.fch_QS, FormChem.FormChemID, Chemical.chm_Form, Chemical.chm_Supplier, "
           "Chemical.chm_Notes, Chemical.chm_Cost ";
}

QString costSum(std::int16_t formula) {
    QString statement = "SELECT ";
    statement += " SUM(CostTable.ChemicalCost) AS TotalCost, SUM(CostTable.ChemicalAWP) AS TotalAWP ";
    statement += "FROM ";
    statement += "[SELECT (Chemical.chm_Cost * FormChem.fch_Qty) AS ChemicalCost, "
                 "(Chemical.chm_AWP * FormChem.fch_Qty) AS ChemicalAWP ";
    statement += "FROM ";
    statement += " Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID ";
    statement += "WHERE ";
    statement += "(((FormChem.FormulaID)=" + QString::number(formula) + "))]. AS CostTable";
    return statement;
}

}  // namespace

platform::RecordsetPtr openLines(LineColumns columns, std::int16_t formula) {
    QString statement = "SELECT ";
    statement += columnList(columns);
    statement += "FROM ";
    statement += "Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID ";
    statement += "WHERE ";
    statement += "FormChem.FormulaID = ";
    statement += QString::number(formula);
    return openEditableList(statement);
}

FormulaTotals readTotals(std::int16_t formula) {
    const platform::RecordsetPtr sums = openEditableList(costSum(formula));
    return {platform::nullCurrency(sums->value("TotalCost")),
            platform::nullCurrency(sums->value("TotalAWP"))};
}

QString lineInsert(std::int16_t formula, const QString& chemical, const QString& quantity, const QString& qs,
                   const QString& active) {
    QString statement = "INSERT INTO ";
    statement += " FormChem (";
    statement += " [FormulaID], ";
    statement += " [ChemicalID], ";
    statement += " [fch_Qty], ";
    statement += " [fch_QS], ";
    statement += " [fch_Active]";
    statement += " ) ";
    statement += " VALUES (";
    statement += " " + QString::number(formula);
    for (const QString& value : {chemical, quantity, qs, active})
        statement += ", " + value;
    statement += ") ";
    return statement;
}

}  // namespace sorvanto
