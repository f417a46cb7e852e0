// A document as a spreadsheet file: every text of every page in a cell, in the order of the pages; numbers,
// money and dates as values with formats.
#pragma once

#include "platform/report/PageDocument.h"

#include <QByteArray>
#include <QString>
#include <memory>

namespace platform {

class Report;

/// The file's bytes. Throws overflow with a message for the user where the format has no room.
QByteArray spreadsheet(const PageDocument& document);

/// Runs the report without showing it and writes the file, whole or not at all, over an existing one.
/// The path may be written with "\". Throws what an event threw, and on a file that can't be written.
void exportReport(std::unique_ptr<Report> report, const QString& path);

}  // namespace platform
