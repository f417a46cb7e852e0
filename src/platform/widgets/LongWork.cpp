#include "platform/widgets/LongWork.h"

#include "platform/widgets/WorkLine.h"
#include "platform/widgets/WorkWindow.h"

#include <QCoreApplication>

namespace platform {

namespace {
constexpr int sliceMilliseconds = 20;
constexpr int steps = 1000;
}  // namespace

LongWork::LongWork(const QString& what) : m_what(what) {
    m_sinceStart.start();
    m_sinceTurn.start();
}

LongWork::LongWork(const QString& what, WorkLine& line) : LongWork(what) {
    m_line = &line;
    line.start(what);
}

LongWork::~LongWork() {
    if (m_line)
        m_line->end();
}

bool LongWork::isDue() const { return m_sinceTurn.hasExpired(sliceMilliseconds); }

bool LongWork::goesOn(double done) {
    if (isDue()) {
        if (m_sinceStart.hasExpired(windowlessMilliseconds))
            show(done);
        const bool heard = m_window || m_line;
        QCoreApplication::processEvents(heard ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
        m_sinceTurn.restart();
    }
    return !wasStopped();
}

void LongWork::show(double done) {
    if (m_line) {
        m_line->setDone(done);
        return m_line->show();
    }
    if (!m_window) {
        m_window = workWindow(m_what);
        m_window->show();
    }
    if (done >= 0) {
        m_window->setMaximum(steps);
        m_window->setValue(static_cast<int>(done * (steps - 1)));  // at the maximum the window would go
    }
}

bool LongWork::wasStopped() const {
    return (m_window && m_window->wasCanceled()) || (m_line && m_line->wasStopped());
}

}  // namespace platform
