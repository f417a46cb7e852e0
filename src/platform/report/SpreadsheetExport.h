// A document as a spreadsheet file: every text of every page in a cell, in the order of the pages; numbers,
// money and dates as values with formats.
#pragma once

#include "platform/report/PageDocument.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

namespace platform {

class Report;

/// Told between pieces of the work how much is done, 0 to 1, below 0 where nobody knows; false stops it.
using ExportProgress = std::function<bool(double done)>;

/// The file's bytes, none where it was stopped. Throws overflow with a message for the user where the format has no room.
QByteArray spreadsheet(const PageDocument& document, const ExportProgress& progress = {});

/// Runs the report without showing it and writes the file, whole or not at all, over an existing one; false where it
/// was stopped, and nothing was written. The path may be written with "\". Throws what an event threw, and on a file that can't be written.
bool exportReport(std::unique_ptr<Report> report, const QString& path, const ExportProgress& progress = {});

}  // namespace platform
