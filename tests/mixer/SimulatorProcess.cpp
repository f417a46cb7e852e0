// Starting and ending the simulator.
#include "SimulatorProcess.h"

#include <QCoreApplication>

namespace sorvanto::test {

SimulatorProcess::SimulatorProcess(const support::TempProgramFolder& folder)
    : m_link(folder.path("ports/COM1")), m_state(folder.path("simulator.state")) {
    QDir().mkpath(folder.path("ports"));
}

SimulatorProcess::~SimulatorProcess() { end(); }

QString SimulatorProcess::program() { return QString::fromUtf8(SORVANTO_BIN_DIR "/sorvanto-mixersim"); }

bool SimulatorProcess::start(const QStringList& options) {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(program(), QStringList{"--link", m_link, "--state", m_state, "--parent-pid",
                                           QString::number(QCoreApplication::applicationPid())} +
                                   options);
    if (!m_process.waitForStarted() || !m_process.waitForReadyRead())
        return false;
    m_terminal = QString::fromLatin1(m_process.readLine()).trimmed();
    return true;
}

int SimulatorProcess::end() {
    if (m_process.state() == QProcess::NotRunning)
        return m_process.exitCode();
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) {
        m_process.kill();
        m_process.waitForFinished();
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

}  // namespace sorvanto::test
