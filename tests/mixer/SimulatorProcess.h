// The real simulator as a process of its own, with its pseudo-terminal linked as ports/COM1.
#pragma once

#include "support/TempProgramFolder.h"

#include <QProcess>
#include <QStringList>

namespace sorvanto::test {

class SimulatorProcess {
public:
    explicit SimulatorProcess(const support::TempProgramFolder& folder);
    ~SimulatorProcess();

    /// Starts it and waits until it has announced its terminal.
    bool start(const QStringList& options);
    /// Ends it as a user would; its exit code.
    int end();
    QProcess& process() { return m_process; }
    QString link() const { return m_link; }
    /// First terminal it announced.
    QString terminal() const { return m_terminal; }
    static QString program();

private:
    QProcess m_process;
    QString m_link, m_terminal, m_state;
};

}  // namespace sorvanto::test
