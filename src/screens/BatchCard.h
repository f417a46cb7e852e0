// What is at hand for a batch that has just been logged: its labels, its formula log, and a patient to dispense it to.
#pragma once

#include "records/clsLog.h"

namespace sorvanto {

struct Context;

void announceLogged(Context& context, const clsLog& log);

/// Each as a preview, or as a spreadsheet beside the program. Throws what the report throws.
void printBatchLabels(Context& context, const clsLogPtr& log, bool exportIt);
void printFormulaLog(Context& context, const clsLogPtr& log, bool exportIt);

}  // namespace sorvanto
