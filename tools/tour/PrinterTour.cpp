// The print dialog is Qt's own, so that its list of queues can be read.
#include "PrinterTour.h"

#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "shared/ErrorReporter.h"
#include "shared/basMain.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

constexpr int quantity = 35;
constexpr int labels = 3;
constexpr int rowTwoColumnThree = 6;

QStringList entries(const QComboBox& box) {
    QStringList result;
    for (int row = 0; row < box.count(); ++row)
        result << box.itemText(row);
    return result;
}

void press(const QWidget& dialog, QDialogButtonBox::StandardButton which) {
    for (const auto* box : dialog.findChildren<QDialogButtonBox*>()) {
        if (auto* button = box->button(which))
            return Visitor::click(*button);
    }
    stopTour("the print dialog lacks a button.");
}

}  // namespace

PrinterTour::PrinterTour(const QString& programFolder)
    : m_visitor(QDir(programFolder).filePath("tour"), "printer-"), m_program(m_visitor, programFolder),
      m_paper(m_visitor, QDir(programFolder).filePath("tour"), programFolder) {}

void PrinterTour::choosePrinter(const QString& printer, const QStringList& offered) {
    m_visitor.robot().expectDialog("frmOptions", [printer, offered, this](QWidget& dialog) {
        auto& box = Visitor::find<platform::ChoiceBox>(dialog, "cboPrinter");
        requireSame("the list of printers", entries(box).join(','), offered.join(','));
        Visitor::choose(box, printer);
        m_visitor.picture("options", &dialog);
        Visitor::click(Visitor::find<QAbstractButton>(dialog, "cmdSave"));
    });
    m_visitor.tool("cmdOptions");
    m_visitor.requireNoReport();
}

platform::PreviewWindow& PrinterTour::worksheet() {
    m_visitor.search("Hydrocortisone 1");
    return m_paper.preview("mnuWorksheet", m_paper.quantity(quantity));
}

void PrinterTour::expectPrintDialog(const QString& printer) {
    m_visitor.robot().expectDialog("printDialog", [printer, this](QWidget& dialog) {
        requireSame("the printer", Visitor::find<QComboBox>(dialog, "printers").currentText(), printer);
        m_visitor.picture("dialog", &dialog);
        press(dialog, QDialogButtonBox::Ok);
    });
}

void PrinterTour::pressPrint(const QWidget& preview) {
    Visitor::click(Visitor::find<QWidget>(preview, "printButton"));
    m_visitor.settle();
}

void PrinterTour::saveAndPrint(platform::PreviewWindow& preview, const QString& pdf, const QString& printer) {
    m_paper.savePdf(preview, pdf);
    expectPrintDialog(printer);
    pressPrint(preview);
    m_visitor.requireNoReport();
    m_paper.close(preview);
}

void PrinterTour::printOn(const QString& printer, const QStringList& offered) {
    m_program.start();
    choosePrinter(printer, offered);
    saveAndPrint(worksheet(), "worksheet.pdf", printer);
    m_visitor.tool("cmdLogs");
    saveAndPrint(m_paper.preview("mnuLabel", m_paper.labels(labels, rowTwoColumnThree)), "batch-labels.pdf",
                 printer);
    m_program.leave();
}

void PrinterTour::printOnMissing(const QString& printer) {
    m_program.start();
    platform::PreviewWindow& sheet = worksheet();
    m_visitor.robot().expectBox(u"The printer \"%1\" is not on this computer."_s.arg(printer), "OK",
                                [this](QWidget& box) { m_visitor.picture("missing", &box); });
    m_visitor.robot().expectDialog("printDialog",
                                   [](QWidget& dialog) { press(dialog, QDialogButtonBox::Cancel); });
    pressPrint(sheet);
    m_paper.close(sheet);
    m_program.leave();
}

void PrinterTour::printWithoutPrinter() {
    m_program.start();
    platform::PreviewWindow& sheet = worksheet();
    m_visitor.robot().expectBox("There is no printer on this computer.", "No",
                                [this](QWidget& box) { m_visitor.picture("none", &box); });
    pressPrint(sheet);
    m_paper.close(sheet);
    m_program.leave();
}

void PrinterTour::printOnRefusing(const QString& printer) {
    m_program.start();
    platform::PreviewWindow& sheet = worksheet();
    expectPrintDialog(printer);
    pressPrint(sheet);
    const QString report = m_visitor.find<QLabel>("lblReport").text();
    require(report.contains("The printer does not take the job"),
            u"the refused sheet is told as \"%1\"."_s.arg(report));
    const QString details = sorvanto::basMain::ErrorReporter->reports().back().description;
    require(details.contains(printer), u"the refused sheet is reported as \"%1\"."_s.arg(details));
    m_visitor.picture("refused", &sheet);
    requireSame("the notice in the preview",
                Visitor::find<QLabel>(sheet, "noticeLine").text().section(':', 0, 0),
                u"Printer %1 did not take the document"_s.arg(printer));
    m_paper.close(sheet);
    m_program.leave();
}

}  // namespace tour
