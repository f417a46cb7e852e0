// The program's shared objects for one report: options, language, database, and the failures that its
// procedures report. They work in a folder of their own, so that nothing beside the program is changed.
#pragma once

#include "report/CommandLine.h"

#include <QStringList>
#include <QTemporaryDir>

namespace sorvanto {

struct Context;

class Pharmacy {
public:
    /// programFolder: where options and languages lie that the order doesn't name.
    explicit Pharmacy(const QString& programFolder);
    ~Pharmacy();
    Pharmacy(const Pharmacy&) = delete;
    Pharmacy& operator=(const Pharmacy&) = delete;

    /// Throws RuntimeError where the options, the language file or the database can't be read, or the records on a server
    /// are not of this program's version.
    void open(const Order& order);
    /// What it has opened, for the reports.
    Context& context() const { return m_context; }
    /// What went wrong inside procedures that hand nothing on.
    const QStringList& failures() const { return m_failures; }

private:
    void readOptions(const Order& order);
    void readLanguage(const Order& order);
    void copyHere(const QString& source) const;

    Context& m_context;
    QTemporaryDir m_folder;
    QString m_programFolder;
    QStringList m_failures;
};

}  // namespace sorvanto
