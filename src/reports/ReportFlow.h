// The common end of every print command: the preview window, or the spreadsheet beside the program.
#pragma once

#include "platform/report/Report.h"
#include "records/clsFormula.h"
#include "trace/RecallList.h"

#include <QString>
#include <memory>

namespace sorvanto {

struct Context;

/// The printer that the options name.
QString defaultPrinter(const Context& context);

/// Shows the report in the preview, or with exportIt runs it without showing and writes the spreadsheet
/// named by the literal ("\Worksheet.xls") beside the program, over an existing one, without a word.
/// Throws when the export fails.
void runReport(std::unique_ptr<platform::Report> report, bool exportIt, const QString& exportName);

/// Writes a recall list as spreadsheet "\\Recall.xls" beside the program, over an existing one, unless the user stops it
/// on the way; gives what is said about it, in the user's language. Throws when that fails.
QString exportRecall(const RecallList& list);

/// Previews the worksheet of a scaled formula; no printer is named.
void showWorksheet(Context& context, const clsFormulaPtr& formula);

}  // namespace sorvanto
