// The record screens' tables as they stand in the list beside them.
#pragma once

#include "shared/ListedScreen.h"

namespace sorvanto {

struct Context;

/// The context: for the names of jars and types.
ListedTable listedFormulas(const Context& context);
ListedTable listedChemicals();
ListedTable listedLogs();
ListedTable listedPatients();

}  // namespace sorvanto
