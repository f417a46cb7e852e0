// The rows of the two reports that are fed with a recordset of their caller's.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>

namespace sorvanto {

struct Context;

/// All chemicals by name, for the price list.
platform::RecordsetPtr chemicalRows(Context& context);

/// The one row of a prescription label; the key goes into the statement as it stands.
platform::RecordsetPtr prescriptionRows(Context& context, const QString& key);

}  // namespace sorvanto
