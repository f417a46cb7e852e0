// The way through the sample pharmacy, place by place.
#include "SampleTour.h"

#include "Batch.h"
#include "BatchCheck.h"
#include "RawDatabase.h"

#include "platform/widgets/RecordGrid.h"

#include <QAbstractButton>
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

const QString formulaName = u"Hydrocortisone 1% Cream"_s;
constexpr int quantity = 35;
constexpr int labels = 3;
constexpr int rowTwoColumnThree = 6;

QString tourFolder(const QString& programFolder) { return QDir(programFolder).filePath("tour"); }

QModelIndex rowWith(const platform::RecordGrid& grid, const QString& name) {
    for (int row = 0; row < grid.model()->rowCount(); ++row) {
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            const QModelIndex cell = grid.model()->index(row, column);
            if (!grid.isColumnHidden(column) && cell.data().toString() == name)
                return cell;
        }
    }
    stopTour(u"the list does not show %1."_s.arg(name));
}

}  // namespace

SampleTour::SampleTour(const QString& programFolder)
    : m_folder(programFolder), m_visitor(tourFolder(programFolder), QString()),
      m_program(m_visitor, programFolder), m_paper(m_visitor, tourFolder(programFolder), programFolder) {}

void SampleTour::run() {
    m_program.start();
    require(!m_program.ended(), "the program ended at its start.");
    chooseFormula();
    lookAtFormula();
    makeBatch();
    lookAtLog();
    lookAround();
    printFormulas();
    printLogs();
    printOthers();
    m_visitor.requireNoReport();
    m_program.leave();
}

QStringList SampleTour::files() const { return m_visitor.pictures() + m_paper.files(); }

void SampleTour::chooseFormula() {
    m_visitor.picture("start");
    // More than one is found by the first letters.
    m_visitor.robot().expectDialog("frmSearchRS", [this](QWidget& list) {
        auto& grid = Visitor::find<platform::RecordGrid>(list, "TDBList1");
        const QModelIndex row = rowWith(grid, formulaName);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(row).center());
        m_visitor.picture("search-list", &list);
        Visitor::click(Visitor::find<QAbstractButton>(list, "cmdOK"));
    });
    m_visitor.search("Hydro");
    m_visitor.requireText("txtfrm_Name", formulaName);
    m_visitor.requireNoReport();
}

void SampleTour::lookAtFormula() {
    for (const char* tab : {"formula-general", "formula-ingredients", "formula-mix-options"}) {
        m_visitor.openTab(tab == "formula-general"_L1 ? 0 : tab == "formula-ingredients"_L1 ? 1 : 2);
        m_visitor.picture(QLatin1String(tab));
    }
    m_visitor.openTab(0);
}

void SampleTour::makeBatch() {
    const QString database = QDir(m_folder).filePath("sorvanto.mdb");
    const int before = RawDatabase(database).number("SELECT count(*) FROM Log");
    const BatchCheck check(database, formulaName, quantity);
    Batch batch(m_visitor, formulaName, quantity);
    batch.announceQuantity();
    m_visitor.tool("cmdMake");
    batch.mix();
    batch.requireFormulas();
    m_visitor.requireNoReport();
    m_visitor.picture("back-on-the-formulas");
    check.requireLogged(Batch::compounder, Batch::verifier);
    requireSame("the number of batches in the log",
                QString::number(RawDatabase(database).number("SELECT count(*) FROM Log")),
                QString::number(before + 1));
}

void SampleTour::lookAtLog() {
    m_visitor.tool("cmdLogs");
    const RawDatabase file(QDir(m_folder).filePath("sorvanto.mdb"));
    m_visitor.requireText("txtlog_Name", formulaName);
    m_visitor.requireText("txtlog_Quantity", QString::number(quantity));
    m_visitor.requireText("txtlog_Lot", file.value("SELECT log_Lot FROM Log ORDER BY LogID DESC LIMIT 1"));
    m_visitor.requireText("txtlog_Initials", Batch::compounder);
    m_visitor.requireText("txtlog_Verified", Batch::verifier);
    const char* const tabs[] = {"log-general", "log-ingredients", "log-mix-options", "log-mix-results"};
    for (int tab = 0; tab < 4; ++tab) {
        m_visitor.openTab(tab);
        m_visitor.picture(QLatin1String(tabs[tab]));
    }
    m_visitor.openTab(0);
}

void SampleTour::lookAround() {
    m_visitor.tool("cmdChemicals");
    m_visitor.picture("chemicals-unlocked");
    m_visitor.tool("cmdCancel");
    m_visitor.tool("cmdNext");
    m_visitor.picture("chemicals");
    m_visitor.tool("cmdPatients");
    m_visitor.picture("patients");
    m_visitor.openTab(1);
    m_visitor.picture("patients-prescriptions");
    m_visitor.tool("cmdCurrent");
    m_visitor.picture("current-formula");
    const auto close = [this](const char* name, const char* button) {
        return [this, name, button](QWidget& dialog) {
            m_visitor.picture(QLatin1String(name), &dialog);
            Visitor::click(Visitor::find<QAbstractButton>(dialog, QLatin1String(button)));
        };
    };
    m_visitor.robot().expectDialog("frmOptions", close("options", "cmdCancel"));
    m_visitor.tool("cmdOptions");
    m_visitor.robot().expectDialog("frmAbout", [this](QWidget& about) {
        m_visitor.picture("about", &about);
        QTest::mouseClick(&about, Qt::LeftButton);
    });
    m_program.menuBar("mnuHelp", "mnuAbout");
    m_visitor.requireNoReport();
}

void SampleTour::printFormulas() {
    m_visitor.tool("cmdFormulas");
    m_paper.print("mnuWorksheet", "worksheet.pdf", m_paper.quantity(quantity));
    m_paper.exportTo("mnuWorksheetx", "Worksheet.xls", m_paper.quantity(quantity));
}

void SampleTour::printLogs() {
    m_visitor.tool("cmdLogs");
    m_paper.print("mnuFormulaLog", "formula-log.pdf");
    m_paper.exportTo("mnuFormulaLogx", "FormulaLog.xls");
    m_paper.print("mnuLabel", "batch-labels.pdf", m_paper.labels(labels, rowTwoColumnThree));
    m_paper.exportTo("mnuLabelx", "LogAvery8160.xls", m_paper.labels(labels, rowTwoColumnThree));
    m_paper.print("mnuReport", "log-report.pdf", m_paper.dates());
    m_paper.exportTo("mnuReportx", "LogReport.xls", m_paper.dates());
    m_paper.print("mnuJarReport", "jar-usage.pdf", m_paper.dates());
    m_paper.exportTo("mnuJarReportx", "JarUsage.xls", m_paper.dates());
}

void SampleTour::printOthers() {
    m_visitor.tool("cmdChemicals");
    m_paper.print("mnuReport", "chemicals.pdf");
    m_paper.exportTo("mnuReportx", "Chemicals.xls");
    m_visitor.tool("cmdPatients");
    m_paper.print("mnuLabel", "rx-labels.pdf", m_paper.labels(labels, rowTwoColumnThree));
    m_paper.exportTo("mnuLabelx", "RXLabel.xls", m_paper.labels(labels, rowTwoColumnThree));
    m_paper.print("mnuReport", "patient.pdf", m_paper.dates());
    m_paper.exportTo("mnuReportx", "RXReport.xls", m_paper.dates());
}

}  // namespace tour
