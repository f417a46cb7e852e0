// The record screens' tables as they stand in the list beside them.
#pragma once

#include "shared/ListedScreen.h"

namespace sorvanto {

ListedTable listedFormulas();
ListedTable listedChemicals();
ListedTable listedLogs();
ListedTable listedPatients();

}  // namespace sorvanto
