// How reports read their rows, and the rows of the two that are fed with a recordset of their caller's.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>

namespace sorvanto {

struct Context;

/// All rows of the statement at once: what others change while pages are made shows in none of them. Windows are painted
/// meanwhile, and what takes long can be stopped: nothing then. orderWithin: see Recordset.
platform::RecordsetPtr allRows(Context& context, const QString& statement, const QString& orderWithin = {});

/// All chemicals by name, for the price list; nothing when the reading was stopped.
platform::RecordsetPtr chemicalRows(Context& context);

/// The one row of a prescription label; the key goes into the statement as it stands.
platform::RecordsetPtr prescriptionRows(Context& context, const QString& key);

}  // namespace sorvanto
