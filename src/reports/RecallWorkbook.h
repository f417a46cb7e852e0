// A recall list as a spreadsheet: batches with their lots on the first sheet, prescriptions with patients on the second.
#pragma once

#include "trace/RecallList.h"

#include <QByteArray>
#include <functional>

namespace sorvanto {

/// The bytes of the .xls file. goesOn, where there is one, is asked between rows with the part that is done, 0 to 1;
/// nothing comes once it says no. Throws overflow with a message for the user where the format has no room.
QByteArray recallWorkbook(const RecallList& list, const std::function<bool(double done)>& goesOn = {});

}  // namespace sorvanto
