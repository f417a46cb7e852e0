// Keys arrive as shortcut question, as press and, from input methods, as text; each way is closed alike.
#include "platform/widgets/FreshKeys.h"

#include <QApplication>
#include <QKeyEvent>

namespace platform {

namespace {
std::chrono::milliseconds rest{1000};
}  // namespace

std::chrono::milliseconds typingRest() { return rest; }

void setTypingRest(std::chrono::milliseconds newRest) { rest = newRest; }

FreshKeys::FreshKeys(QWidget& window) : QObject(&window), m_window(window) { qApp->installEventFilter(this); }

void FreshKeys::beginRest() { m_rest.setRemainingTime(rest); }

bool FreshKeys::concernsWindow(const QObject* watched) const {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget && widget->window() == &m_window;
}

bool FreshKeys::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
        if (watched == &m_window) {
            m_shown = true;
            beginRest();
        }
        return false;
    case QEvent::WindowActivate:
        // A slow desktop shows the window before it gives it the keyboard.
        if (watched == &m_window && !m_activated) {
            m_activated = true;
            beginRest();
        }
        return false;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!concernsWindow(watched) || (isOpen() && !key->isAutoRepeat()))
            return false;
        event->accept();  // else it would be offered to the window around, or become an access key
        return true;
    }
    case QEvent::InputMethod:
        return concernsWindow(watched) && !isOpen();
    default:
        return false;
    }
}

}  // namespace platform
