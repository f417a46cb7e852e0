// A window that comes up by itself must not take keys that were meant for another one: repeats of a key held
// down, and presses within the first moment of its being on show, are swallowed. The mouse is not touched.
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <chrono>

namespace platform {

/// How long after a key press the user counts as typing: one second, unless a test says otherwise.
std::chrono::milliseconds typingRest();
void setTypingRest(std::chrono::milliseconds rest);

class FreshKeys : public QObject {
public:
    /// Listens as long as the window lives, which owns it.
    explicit FreshKeys(QWidget& window);
    /// Whether a key pressed now counts.
    bool isOpen() const { return m_shown && m_rest.hasExpired(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool concernsWindow(const QObject* watched) const;
    void beginRest();

    QWidget& m_window;
    QDeadlineTimer m_rest;  ///< also where no timer runs
    bool m_shown = false, m_activated = false;
};

}  // namespace platform
