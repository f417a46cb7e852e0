// A sheet with the outline and the number of every label of the stock, for plain paper.
#pragma once

#include "platform/report/Report.h"

#include <memory>

namespace platform {

/// The definition must name its stock.
std::unique_ptr<Report> labelTestSheet(const ReportDefinition& labels, const QString& caption);

}  // namespace platform
