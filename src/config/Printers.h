// The names of the system's printers, in the system's order.
#pragma once

#include <QStringList>
#include <functional>

namespace sorvanto {

QStringList printerNames();

/// Puts another list in the system's place, for tests; an empty function restores the system's.
void setPrinterNames(std::function<QStringList()> names);

}  // namespace sorvanto
