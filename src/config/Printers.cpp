// The list of printers comes from the system's print service.
#include "config/Printers.h"

#include <QPrinterInfo>

namespace sorvanto {
namespace {

std::function<QStringList()>& replacement() {
    static std::function<QStringList()> names;
    return names;
}

}  // namespace

QStringList printerNames() { return replacement() ? replacement()() : QPrinterInfo::availablePrinterNames(); }

void setPrinterNames(std::function<QStringList()> names) { replacement() = std::move(names); }

}  // namespace sorvanto
