#include "platform/widgets/LongWork.h"

#include "platform/widgets/OwnerWindow.h"
#include "platform/widgets/Texts.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
constexpr int sliceMilliseconds = 20;
constexpr int waitMilliseconds = 300;  // what is over by then needs no window
constexpr int steps = 1000;
constexpr int windowWidth = 380;
}  // namespace

LongWork::LongWork(const QString& what) : m_what(what) {
    m_sinceStart.start();
    m_sinceTurn.start();
}

bool LongWork::goesOn(double done) {
    if (m_sinceTurn.hasExpired(sliceMilliseconds)) {
        if (!m_window && m_sinceStart.hasExpired(waitMilliseconds))
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
    m_window = std::make_unique<QProgressDialog>(ownerWindow());
    m_window->setObjectName(u"longWork"_s);
    m_window->setWindowTitle(m_what);
    m_window->setLabelText(m_what);
    m_window->setCancelButtonText(widgetText(u"Cancel"_s));
    m_window->setRange(0, 0);
    m_window->setMinimumWidth(windowWidth);
    m_window->setMinimumDuration(0);
    m_window->setAutoClose(false);
    m_window->setAutoReset(false);
    m_window->setWindowModality(Qt::ApplicationModal);
    m_window->show();
}

}  // namespace platform
