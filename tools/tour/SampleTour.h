// The tour through the sample pharmacy: one batch from the search to the log, every screen and dialog, and
// everything that goes on paper.
#pragma once

#include "Paper.h"
#include "Program.h"
#include "Visitor.h"

namespace tour {

class SampleTour {
public:
    /// Pictures and PDF files go to the folder "tour" of the program's folder.
    explicit SampleTour(const QString& programFolder);

    void run();
    /// All files made.
    QStringList files() const;

private:
    void chooseFormula();
    void lookAtFormula();
    void makeBatch();
    void lookAtLog();
    void lookAround();
    void printFormulas();
    void printLogs();
    void printOthers();

    QString m_folder;
    Visitor m_visitor;
    Program m_program;
    Paper m_paper;
};

}  // namespace tour
