// One function a report. Its records are looked up first, so that an unknown key is told as such.
#include "report/Papers.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/SpreadsheetExport.h"
#include "records/clsFormula.h"
#include "records/clsLog.h"
#include "reports/RecallTexts.h"
#include "reports/RecallWorkbook.h"
#include "reports/ReportRows.h"
#include "reports/rptChemicals.h"
#include "reports/rptFormula.h"
#include "reports/rptJarUsage.h"
#include "reports/rptLogAvery8160.h"
#include "reports/rptLogFormula.h"
#include "reports/rptLogReport.h"
#include "reports/rptPatient.h"
#include "reports/rptRX8160.h"
#include "reports/rptRecall.h"
#include "shared/Context.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::RecordsetPtr;
using platform::Report;

[[noreturn]] void failUnknown(const char* what, int key) {
    throw platform::RuntimeError(platform::error::itemNotFound,
                                 u"There is no %1 %2 in the database"_s.arg(QLatin1String(what)).arg(key));
}

bool isThere(Context& context, const QString& table, const QString& keyColumn, int key) {
    const auto rows = platform::Recordset::create();
    rows->open(u"SELECT %1 FROM %2 WHERE %1 = %3"_s.arg(keyColumn, table).arg(key), openDB(context),
               platform::LockType::ReadOnly);
    return rows->recordCount() > 0;
}

clsLogPtr batch(Context& context, std::int16_t key) {
    if (!isThere(context, u"Log"_s, u"LogID"_s, key))
        failUnknown("batch", key);
    const auto log = std::make_shared<clsLog>();
    log->openLog(key, QString());
    return log;
}

std::unique_ptr<Report> worksheet(Context& context, const Order& order) {
    if (!isThere(context, u"Formula"_s, u"FormulaID"_s, order.key))
        failUnknown("formula", order.key);
    const clsFormulaPtr formula = clsFormula().openFormula(order.key, QString());
    if (!formula)
        return nullptr;
    formula->makeQuantity(order.quantity);
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    return report;
}

std::unique_ptr<Report> formulaLog(Context& context, const Order& order) {
    const clsLogPtr log = batch(context, order.key);
    auto report = std::make_unique<rptLogFormula>(context);
    report->setLog(log);
    report->setFormula(clsFormula().openFormula(log->FormulaID, QString()));
    return report;
}

std::unique_ptr<Report> batchLabels(Context& context, const Order& order) {
    const clsLogPtr log = batch(context, order.key);
    auto report = std::make_unique<rptLogAvery8160>(context);
    report->setLog(log);
    return report;
}

// The batches of a formula outlive it.
std::unique_ptr<Report> logReport(Context& context, const Order& order) {
    if (!isThere(context, u"Formula"_s, u"FormulaID"_s, order.key) &&
        !isThere(context, u"Log"_s, u"FormulaID"_s, order.key))
        failUnknown("formula", order.key);
    auto report = std::make_unique<rptLogReport>(context);
    report->FormulaID(order.key);
    return report;
}

std::unique_ptr<Report> jarUsage(Context& context) {
    auto report = std::make_unique<rptJarUsage>(context);
    report->JarID(1);
    return report;
}

std::unique_ptr<Report> rxLabels(Context& context, const Order& order) {
    const RecordsetPtr rows = prescriptionRows(context, QString::number(order.key));
    if (rows->eof())
        failUnknown("prescription", order.key);
    auto report = std::make_unique<rptRX8160>(context);
    report->setRX(rows);
    return report;
}

std::unique_ptr<Report> patient(Context& context, const Order& order) {
    if (!isThere(context, u"Patient"_s, u"PatientID"_s, order.key))
        failUnknown("patient", order.key);
    auto report = std::make_unique<rptPatient>(context);
    report->PatientID(order.key);
    return report;
}

std::unique_ptr<Report> chemicals(Context& context) {
    auto report = std::make_unique<rptChemicals>(context);
    report->setChemicals(chemicalRows(context));
    return report;
}

RecallList recallOf(Context& context, const Order& order, const QStringList& folders) {
    const Tracer tracer(openDB(context), folders);
    tracer.lookForLackingLines();
    const TraceDays days{order.begin.date(), order.end.date()};
    if (order.key > 0) {
        const std::optional<TracedPatient> who = tracer.patientOf(order.key);
        if (!who)
            failUnknown("patient", order.key);
        return recallList(tracer, *who, days);
    }
    using By = TraceHits::By;
    for (const auto& [text, by] : {std::pair(order.lot, By::Lot), std::pair(order.ndc, By::Ndc),
                                   std::pair(order.name, By::Name), std::pair(order.batch, By::Batch)}) {
        if (!text.isEmpty())
            return recallList(tracer, text, tracer.find(text, by), days);
    }
    return {};
}

}  // namespace

QByteArray sheetOf(const platform::ReportRun& run) {
    const auto* recall = dynamic_cast<const rptRecall*>(&run.report());
    return recall ? recallWorkbook(recall->list()) : platform::spreadsheet(run.document());
}

QStringList remarksOn(const Report& report) {
    const auto* recall = dynamic_cast<const rptRecall*>(&report);
    return recall ? recallGaps(recall->list()) : QStringList();
}

std::unique_ptr<Report> makeReport(Context& context, const Order& order, const QStringList& folders) {
    switch (order.paper) {
    case Paper::Worksheet:
        return worksheet(context, order);
    case Paper::FormulaLog:
        return formulaLog(context, order);
    case Paper::BatchLabels:
        return batchLabels(context, order);
    case Paper::LogReport:
        return logReport(context, order);
    case Paper::JarUsage:
        return jarUsage(context);
    case Paper::RxLabels:
        return rxLabels(context, order);
    case Paper::Patient:
        return patient(context, order);
    case Paper::Chemicals:
        return chemicals(context);
    case Paper::Recall:
        return std::make_unique<rptRecall>(context, recallOf(context, order, folders));
    }
    return nullptr;
}

}  // namespace sorvanto
