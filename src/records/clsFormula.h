// One recipe: the row of the table Formula, its ingredient lines and running totals, and its scaling
// to a batch. Nearly every method gives a fresh object instead of changing the one it runs on.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/data/Recordset.h"
#include "platform/xml/XmlDocument.h"

#include <QString>
#include <cstdint>
#include <memory>

namespace sorvanto {

class clsFormula;
using clsFormulaPtr = std::shared_ptr<clsFormula>;

class clsFormula {
public:
    clsFormula();

    std::int16_t FormulaID = 0;  ///< 0 means no row
    QString frm_Name;
    QString frm_Desc;
    QString frm_Strength;
    QString frm_Units;
    QString frm_Instructions;
    std::int16_t frm_Quantity = 0;  ///< base batch that the ingredient quantities refer to
    std::int16_t frm_JarSize = 3;
    std::int16_t frm_FormType = 3;
    QString frm_NDC;
    platform::Currency frm_AWP;   ///< sum of the ingredients
    platform::Currency frm_Cost;  ///< sum of the ingredients; no column
    platform::XmlDocumentPtr frm_Mix;
    QString frm_GUID;
    /// The ingredient list; only the form that openFormula gives can be made or copied.
    platform::RecordsetPtr Chemical;

    bool deleteFormula(const clsFormulaPtr& Formula, bool Silent);
    clsFormulaPtr addFormula();
    /// By key (empty search), NDC ("#" first, taken out of the caller's text) or name. Key 0 when not found.
    clsFormulaPtr openFormula(std::int16_t key, QString& Search);
    clsFormulaPtr openFormula(std::int16_t key, const QString& Search);
    clsFormulaPtr saveFormula(const clsFormulaPtr& Formula);
    bool deleteChemical(std::int16_t FormChemID);
    /// Reads the ingredients and their totals anew.
    void openIngredients();
    bool addChemical(QString& Search);
    clsFormulaPtr copyFormula(const clsFormulaPtr& Formula);

    /// Quantity to make; setting it scales this object in memory, once. Throws divisionByZero for a base
    /// batch of 0, with the quantity already stored.
    std::int16_t makeQuantity() const { return m_makeQuantity; }
    void makeQuantity(std::int16_t quantity);
    /// The document for the mixer, or nothing when the mix programme has no root.
    platform::XmlDocumentPtr getFormulaXML();

private:
    QString strSQL;
    std::int16_t m_makeQuantity = 0;
};

}  // namespace sorvanto
