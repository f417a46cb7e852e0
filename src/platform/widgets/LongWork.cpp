#include "platform/widgets/LongWork.h"

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

bool LongWork::goesOn(double done) {
    if (m_sinceTurn.hasExpired(sliceMilliseconds)) {
        if (!m_window && m_sinceStart.hasExpired(windowlessMilliseconds))
            show();
        if (m_window && done >= 0) {
            m_window->setMaximum(steps);
            m_window->setValue(static_cast<int>(done * (steps - 1)));  // at the maximum the window would go
        }
        QCoreApplication::processEvents(m_window ? QEventLoop::AllEvents
                                                 : QEventLoop::ExcludeUserInputEvents);
        m_sinceTurn.restart();
    }
    return !m_window || !m_window->wasCanceled();
}

void LongWork::show() {
    m_window = workWindow(m_what);
    m_window->show();
}

}  // namespace platform
