// A recall list as a spreadsheet: batches with their lots on the first sheet, prescriptions with patients on the second.
#pragma once

#include "trace/RecallList.h"

#include <QByteArray>

namespace sorvanto {

/// The bytes of the .xls file. Throws overflow with a message for the user where the format has no room.
QByteArray recallWorkbook(const RecallList& list);

}  // namespace sorvanto
