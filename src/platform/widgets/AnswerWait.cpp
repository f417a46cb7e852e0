// A statement is half done while this runs. So what could begin another one has no turn: before the window is there only
// what paints, with it what the user does to that window.
#include "platform/widgets/AnswerWait.h"

#include "platform/widgets/WorkWindow.h"

#include <QCoreApplication>
#include <QProgressBar>
#include <QTimer>
#include <utility>

namespace platform {

namespace {
int quietOnes = 0;
}

AnswerWait::Quietly::Quietly() { ++quietOnes; }

AnswerWait::Quietly::~Quietly() { --quietOnes; }

bool AnswerWait::isPatient() const { return quietOnes == 0; }

AnswerWait::AnswerWait(std::function<QString()> what, std::function<void()> saved)
    : m_what(std::move(what)), m_saved(std::move(saved)) {}

AnswerWait::~AnswerWait() = default;

bool AnswerWait::goesOn(int waited) {
    if (!m_underWay)
        m_underWay.emplace();
    const bool inTime = waited < windowlessMilliseconds;
    if (!m_window && (inTime || !isPatient())) {
        for (const QEvent::Type picture : {QEvent::LayoutRequest, QEvent::UpdateRequest})
            QCoreApplication::sendPostedEvents(nullptr, picture);
        return inTime;
    }
    if (!m_window) {
        m_window = workWindow(m_what());
        m_window->show();
    }
    // Its own timer, by which it would move, does not run.
    m_window->findChild<QProgressBar*>()->update();
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers | QEventLoop::X11ExcludeTimers);
    return !m_window->wasCanceled();
}

void AnswerWait::ended() {
    m_window.reset();  // what gets the focus back finds the wait still under way
    m_underWay.reset();
}

void AnswerWait::foundSaved() { QTimer::singleShot(0, qApp, m_saved); }

}  // namespace platform
