// The ingredient lines of a formula and their sums: statements that several methods of the formula share.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/data/Recordset.h"

#include <QString>
#include <cstdint>
#include <map>

namespace sorvanto {

/// Which columns a list of lines has. Only the full one can be scaled, copied or logged.
enum class LineColumns { Full, AfterAdd, Short };

/// The statements of the two below.
QString linesStatement(LineColumns columns, std::int16_t formula);
QString totalsStatement(std::int16_t formula);

/// The list of a formula, client-side and live: an edit of it goes to the tables.
platform::RecordsetPtr openLines(LineColumns columns, std::int16_t formula);

/// Sums over the lines of unit price times quantity; 0 for a formula without lines.
struct FormulaTotals {
    platform::Currency cost;
    platform::Currency awp;
};
FormulaTotals readTotals(std::int16_t formula);
/// The same of all formulas with keys from first to last, by one statement; of one without lines there is none.
std::map<std::int16_t, FormulaTotals> readTotals(std::int16_t first, std::int16_t last);

/// The statement that adds a line. The values stand in it as they come; a quantity that is no number
/// breaks it.
QString lineInsert(std::int16_t formula, const QString& chemical, const QString& quantity, const QString& qs,
                   const QString& active);

}  // namespace sorvanto
