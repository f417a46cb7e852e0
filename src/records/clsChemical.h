// One row of the table Chemical: an ingredient with its lot, prices and supplier.
// add and open give a fresh object; the object to work on is passed as an argument.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/data/Recordset.h"

#include <QString>
#include <cstdint>
#include <memory>

namespace sorvanto {

class clsChemical;
using clsChemicalPtr = std::shared_ptr<clsChemical>;

class clsChemical {
public:
    clsChemical();

    std::int16_t ChemicalID = 0;
    QString chm_Name;
    QString chm_Units;  ///< a new object holds the translation of "Select Units"
    QString chm_Lot;
    QString chm_NDC;
    platform::Currency chm_Cost;  ///< price of one unit
    platform::Currency chm_AWP;   ///< average wholesale price of one unit
    QString chm_Notes;
    QString chm_Form;  ///< a new object holds the translation of "Select Form"
    QString chm_Supplier;
    QString chm_GUID;

    /// Asks first unless Silent. False when declined, or refused since a formula uses it (told to the user).
    bool deleteChemical(const clsChemicalPtr& Chemical, bool Silent);
    /// Updates all columns but the GUID; the argument, or nothing if no row changed.
    clsChemicalPtr saveChemical(const clsChemicalPtr& Chemical);
    clsChemicalPtr addChemical();
    /// By key (empty search), NDC ("#" anywhere), lot ("$" anywhere) or name. A blank object when not found.
    clsChemicalPtr openChemical(std::int16_t key, const QString& Search);

private:
    QString strSQL;
    platform::RecordsetPtr rs;
};

}  // namespace sorvanto
