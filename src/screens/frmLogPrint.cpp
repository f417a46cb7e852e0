// The four print commands of the log screen, each as preview or as a spreadsheet.
#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/rptJarUsage.h"
#include "reports/rptLogAvery8160.h"
#include "reports/rptLogFormula.h"
#include "reports/rptLogReport.h"
#include "screens/frmLog.h"
#include "shared/Guard.h"
#include "shared/basMain.h"
#include "ui_frmLog.h"

namespace sorvanto {
namespace {

QString defaultPrinter() { return platform::deref(basMain::Options).DefPrinter(); }

}  // namespace

void frmLog::printLog(bool exportIt) {
    guarded("frmLog:printLog", [&] {
        auto report = std::make_unique<rptLogFormula>();
        report->printerName = defaultPrinter();
        const clsFormulaPtr formula = clsFormula().openFormula(platform::deref(m_log).FormulaID, QString());
        report->setLog(platform::deref(m_log).copy());
        report->setFormula(formula);
        runReport(std::move(report), exportIt, "\\FormulaLog.xls");
        refreshForm();
    });
}

void frmLog::printLabels(bool exportIt) {
    guarded("frmLog:printLabels", [&] {
        auto report = std::make_unique<rptLogAvery8160>();
        report->printerName = defaultPrinter();
        report->setLog(platform::deref(m_log).copy());
        if (!basMain::labelsCancelled)
            runReport(std::move(report), exportIt, "\\LogAvery8160.xls");
        refreshForm();
    });
}

void frmLog::printReport(bool exportIt) {
    guarded("frmLog:printReport", [&] {
        auto report = std::make_unique<rptLogReport>();
        report->printerName = defaultPrinter();
        report->FormulaID(platform::deref(m_log).FormulaID);
        if (!basMain::reportCancelled)
            runReport(std::move(report), exportIt, "\\LogReport.xls");
        refreshForm();
    });
}

void frmLog::printJarReport(bool exportIt) {
    guarded("frmLog:printJarReport", [&] {
        auto report = std::make_unique<rptJarUsage>();
        report->printerName = defaultPrinter();
        report->JarID(1);
        if (!basMain::reportCancelled)
            runReport(std::move(report), exportIt, "\\JarUsage.xls");
        refreshForm();
    });
}

}  // namespace sorvanto
