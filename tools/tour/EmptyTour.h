// From an empty database file to a dispensed prescription through the windows alone.
#pragma once

#include "Program.h"
#include "Visitor.h"

namespace tour {

class EmptyTour {
public:
    /// The folder must not have a database yet; one is made with the tool beside this executable.
    EmptyTour(const QString& programFolder, const QString& pictureFolder);

    void run();
    QStringList files() const { return m_visitor.pictures(); }

private:
    void makeDatabase() const;
    void makeFromFormula();
    void makeFromPrescription();
    void requireRecords() const;
    QString database() const;

    QString m_folder;
    Visitor m_visitor;
    Program m_program;
};

}  // namespace tour
