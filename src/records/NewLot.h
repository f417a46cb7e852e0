// A delivery: a chemical comes again with another lot. It becomes a record of its own, like the former one in all
// else, and the formulas take it from now on; the former lot stays, for recalls and for its history.
#pragma once

#include "records/ChangedMeanwhile.h"
#include "records/clsChemical.h"

#include <QStringList>
#include <cstdint>
#include <optional>
#include <vector>

namespace sorvanto {

struct UsingFormula {
    std::int16_t key = 0;
    QString name;
};
/// Those with a line of this chemical, by name.
std::vector<UsingFormula> formulasUsing(std::int16_t chemical);

struct NewLot {
    QString lot, supplier;
    platform::Currency cost, awp;  ///< of one of the chemical's units
};

/// The lots of the records of this name, whatever its case.
QStringList lotsOf(const QString& name);
/// Whether the lot is among them, whatever its case and the blanks around it.
bool hasLot(const QStringList& lots, const QString& lot);

struct AddedLot {
    clsChemicalPtr chemical;  ///< the new record; nothing after a failure, which is reported
    /// Why nothing was added: the former record, its lots or one of the formulas is not what was shown any more.
    std::optional<ChangedMeanwhile> changed = {};
};
/// Adds the lot as a copy of that chemical and puts it into the lines of these formulas, all of it or nothing. shown: as the
/// user has it before him.
AddedLot addNewLot(const clsChemical& shown, const NewLot& delivered,
                   const std::vector<std::int16_t>& formulas);

}  // namespace sorvanto
