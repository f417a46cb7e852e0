// The database that the program works on, as a path that can be compared.
#pragma once

#include <QString>

namespace sorvanto {

/// With "/" and without links; empty when the options name none. Never throws.
QString databaseInUse();

}  // namespace sorvanto
