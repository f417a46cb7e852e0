// The four print commands of the log screen, each as preview or as a spreadsheet.
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/rptJarUsage.h"
#include "reports/rptLogReport.h"
#include "screens/BatchCard.h"
#include "screens/frmLog.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "ui_frmLog.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
void frmLog::printLog(bool exportIt) {
    guarded(u"frmLog:printLog"_s, [&] {
        printFormulaLog(m_context, platform::deref(m_log).copy(), exportIt);
        refreshForm();
    });
}

void frmLog::printLabels(bool exportIt) {
    guarded(u"frmLog:printLabels"_s, [&] {
        printBatchLabels(m_context, platform::deref(m_log).copy(), exportIt);
        refreshForm();
    });
}

void frmLog::printReport(bool exportIt) {
    guarded(u"frmLog:printReport"_s, [&] {
        auto report = std::make_unique<rptLogReport>(m_context);
        report->printerName = defaultPrinter(m_context);
        report->FormulaID(platform::deref(m_log).FormulaID);
        if (!m_context.reportCancelled)
            runReport(std::move(report), exportIt, u"\\LogReport.xls"_s);
        refreshForm();
    });
}

void frmLog::printJarReport(bool exportIt) {
    guarded(u"frmLog:printJarReport"_s, [&] {
        auto report = std::make_unique<rptJarUsage>(m_context);
        report->printerName = defaultPrinter(m_context);
        report->JarID(1);
        if (!m_context.reportCancelled)
            runReport(std::move(report), exportIt, u"\\JarUsage.xls"_s);
        refreshForm();
    });
}

}  // namespace sorvanto
