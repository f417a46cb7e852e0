#include "reports/ReportFlow.h"

#include "config/clsOptions.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportHooks.h"
#include "platform/report/SpreadsheetExport.h"
#include "platform/widgets/LongWork.h"
#include "reports/RecallWorkbook.h"
#include "reports/rptFormula.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// Files beside the program are its user's alone; one under a name of his own choice is what his customs make it.
QString noteOfSaved(const QString& report) {
    const bool namesPatients = report == "rptPatient"_L1 || report == "rptRX8160"_L1 ||
                               report == "rptRecall"_L1 || report == "rptHistory"_L1;
    return namesPatients ? translated(u"The saved file names patients. Keep it where nobody else reads it."_s)
                         : QString();
}

/// Said in the status line, and offered in the preview as well, which may lie over it.
std::vector<platform::SavedFileAction> announceSaved(const QString& path) {
    const Happening saved = fileHappening(translated(u"Saved as %1"_s), path);
    announce(saved);
    std::vector<platform::SavedFileAction> actions;
    for (const HappeningAction& action : saved.actions)
        actions.push_back({action.text, [run = action.run] { guarded(u"ReportFlow:saved"_s, run); }});
    return actions;
}

// What fails while pages are made after the print command has ended goes the one failure path.
void preview(std::unique_ptr<platform::Report> report) {
    platform::setReportFailureHandler([] { reportCurrentError(u"ReportFlow:preview"_s); });
    platform::setSavedNote(noteOfSaved);
    platform::setSavedFileHandler(announceSaved);
    platform::PreviewWindow::open(std::move(report));
}

}  // namespace

QString defaultPrinter(const Context& context) { return platform::deref(context.options).DefPrinter(); }

void runReport(std::unique_ptr<platform::Report> report, bool exportIt, const QString& exportName) {
    if (!exportIt)
        return preview(std::move(report));
    const QString path = platform::programFolder() + exportName;
    platform::LongWork work(translated(u"Exporting %1"_s).arg(exportName));
    if (platform::exportReport(std::move(report), path, [&](double done) { return work.goesOn(done); }))
        announceFile(translated(u"Exported %1"_s), path);
    else
        announce(translated(u"Stopped: %1 was not written."_s).arg(exportName));
}

QString exportRecall(const RecallList& list) {
    const QString name = u"Recall.xls"_s;
    const QString path = platform::programFolder() + u'/' + name;
    platform::LongWork work(translated(u"Exporting %1"_s).arg(name));
    const QByteArray bytes = recallWorkbook(list, [&](double done) { return work.goesOn(done); });
    if (bytes.isEmpty()) {
        const QString stopped = translated(u"Stopped: %1 was not written."_s).arg(name);
        announce(stopped);
        return stopped;
    }
    platform::writeFile(path, bytes);
    announceFile(translated(u"Exported %1"_s), path);
    return translated(u"Exported %1"_s).replace(u"%1"_s, name);
}

void showWorksheet(Context& context, const clsFormulaPtr& formula) {
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    runReport(std::move(report), false, QString());
}

}  // namespace sorvanto
