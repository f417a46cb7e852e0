#include "platform/widgets/PaintWait.h"

#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

namespace platform {

namespace {
constexpr int longestWait = 250;  // milliseconds
}

PaintWait::PaintWait(QWidget& window) : m_window(window) { window.installEventFilter(this); }

void PaintWait::wait() {
    if (m_painted || !m_window.isVisible() || m_window.isMinimized())
        return;
    QEventLoop loop;
    m_loop = &loop;
    QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    m_loop = nullptr;
}

// The loop ends with the event that paints the whole window and puts it on the screen.
bool PaintWait::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        m_painted = true;
        if (m_loop)
            m_loop->quit();
    }
    return false;
}

}  // namespace platform
