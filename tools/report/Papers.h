// Makes the report object of an order, fed with its records as the windows feed theirs.
#pragma once

#include "platform/report/Report.h"
#include "report/CommandLine.h"

#include <memory>

namespace sorvanto {

/// The report, ready to run; one that has nothing to show is unloaded. Nothing where a record can't be read,
/// which has been reported then. Throws RuntimeError where there is no record of the key.
std::unique_ptr<platform::Report> makeReport(const Order& order);

}  // namespace sorvanto
