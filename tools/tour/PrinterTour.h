// What a pharmacist sees of the print service: the list of queues in the options, paper on the chosen one,
// and what is said when a queue is missing, refuses the sheet, or when there is none at all.
#pragma once

#include "Paper.h"
#include "Program.h"
#include "Visitor.h"

namespace tour {

class PrinterTour {
public:
    explicit PrinterTour(const QString& programFolder);

    /// Requires the options to offer these queues, chooses one, prints a worksheet and batch labels on it, and
    /// saves both as PDF for comparison.
    void printOn(const QString& printer, const QStringList& offered);
    /// The printer of the options is not there: it is said, and the print dialog given up.
    void printOnMissing(const QString& printer);
    /// There is no printer at all: PDF is offered, and declined.
    void printWithoutPrinter();
    /// The queue takes no jobs: it is reported.
    void printOnRefusing(const QString& printer);

private:
    void choosePrinter(const QString& printer, const QStringList& offered);
    void expectPrintDialog(const QString& printer);
    void pressPrint(const QWidget& preview);
    void saveAndPrint(platform::PreviewWindow& preview, const QString& pdf, const QString& printer);
    platform::PreviewWindow& worksheet();

    Visitor m_visitor;
    Program m_program;
    Paper m_paper;
};

}  // namespace tour
