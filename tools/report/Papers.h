// Makes the report object of an order, fed with its records as the windows feed theirs.
#pragma once

#include "platform/report/ReportRun.h"
#include "report/CommandLine.h"

#include <QByteArray>
#include <QStringList>
#include <memory>

namespace sorvanto {

struct Context;

/// The report, ready to run; one that has nothing to show is unloaded. Nothing where a record can't be read,
/// which has been reported then. Throws RuntimeError where there is no record of the key.
/// folders: where archives may lie that a recall goes through.
std::unique_ptr<platform::Report> makeReport(Context& context, const Order& order,
                                             const QStringList& folders);

/// The spreadsheet of a report that is through.
QByteArray sheetOf(const platform::ReportRun& run);

/// What the reader of the list must know: a recall that isn't the last word says why.
QStringList remarksOn(const platform::Report& report);

}  // namespace sorvanto
