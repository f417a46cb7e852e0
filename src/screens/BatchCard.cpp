#include "screens/BatchCard.h"

#include "platform/basic/RuntimeError.h"
#include "records/clsFormula.h"
#include "reports/ReportFlow.h"
#include "reports/rptLogAvery8160.h"
#include "reports/rptLogFormula.h"
#include "shared/BatchLog.h"
#include "shared/Context.h"
#include "shared/Dispensary.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// Reads the batch anew: much may have been done since it was logged.
void withBatch(Context& context, std::int16_t key, const QString& lot,
               void (*print)(Context&, const clsLogPtr&, bool)) {
    guarded(u"BatchCard:print"_s, [&] {
        const auto log = std::make_shared<clsLog>();
        const bool there = platform::deref(context.window).batchLog().isLogged(lot);
        if (there)
            log->openLog(key, QString());
        if (log->LogID != key)
            return announce(translated(u"Batch %1 has been deleted"_s).replace(u"%1"_s, lot));
        print(context, log, false);
    });
}

}  // namespace

void printBatchLabels(Context& context, const clsLogPtr& log, bool exportIt) {
    auto report = std::make_unique<rptLogAvery8160>(context);
    report->printerName = defaultPrinter(context);
    report->setLog(log);
    if (!context.labelsCancelled)
        runReport(std::move(report), exportIt, u"\\LogAvery8160.xls"_s);
}

void printFormulaLog(Context& context, const clsLogPtr& log, bool exportIt) {
    auto report = std::make_unique<rptLogFormula>(context);
    report->printerName = defaultPrinter(context);
    const clsFormulaPtr formula = clsFormula().openFormula(log->FormulaID, QString());
    report->setLog(log);
    report->setFormula(formula);
    runReport(std::move(report), exportIt, u"\\FormulaLog.xls"_s);
}

void announceLogged(Context& context, const clsLog& log) {
    guarded(u"BatchCard:announceLogged"_s, [&] {
        const std::int16_t key = log.LogID;
        const QString lot = log.log_Lot;
        Happening logged{translated(u"Batch %1 logged"_s).replace(u"%1"_s, lot), {}, true};
        logged.actions.push_back(
            {translated(u"Labels"_s), [=, &context] { withBatch(context, key, lot, printBatchLabels); }});
        logged.actions.push_back(
            {translated(u"Formula log"_s), [=, &context] { withBatch(context, key, lot, printFormulaLog); }});
        if (platform::deref(context.window).dispensary())
            logged.actions.push_back({translated(u"Dispense to a patient"_s), [&context, lot] {
                                          if (Dispensary* patients =
                                                  platform::deref(context.window).dispensary())
                                              patients->offerBatch(lot);
                                      }});
        announce(logged);
    });
}

}  // namespace sorvanto
