// The server chooses a free number itself and writes it to its standard output.
#include "Display.h"

#include "support/Waiting.h"

using namespace Qt::StringLiterals;

namespace e2e {

Display::~Display() {
    if (!m_name.isEmpty() && (m_server.waitForFinished(0) || m_server.state() == QProcess::NotRunning))
        qWarning("The display %s ended by itself, with %d (%s)", qPrintable(m_name), m_server.exitCode(),
                 m_server.exitStatus() == QProcess::CrashExit ? "a signal" : "its own exit code");
    m_server.terminate();
    if (!m_server.waitForFinished(5000))
        m_server.kill();
    m_server.waitForFinished();
}

bool Display::start() {
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(u"Xvfb"_s,
                   {"-displayfd", "1", "-screen", "0", "1366x768x24", "-nolisten", "tcp", "-noreset"});
    if (!m_server.waitForStarted() || !m_server.waitForReadyRead(support::patience))
        return false;
    m_name = ':'_L1 + QString::fromLatin1(m_server.readLine()).trimmed();
    return m_name.size() > 1;
}

}  // namespace e2e
