// The window last in use is known by the focus that it had.
#include "platform/widgets/OwnerWindow.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace platform {

namespace {

bool canOwn(const QWidget* window) {
    return window && window->isVisible() && !window->isMinimized() && window->windowType() != Qt::Popup &&
           window->windowType() != Qt::ToolTip && window->windowType() != Qt::SplashScreen;
}

/// Follows the focus from its first use on.
class LastWindow : public QObject {
public:
    explicit LastWindow(QObject* application) : QObject(application) {
        connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) {
            if (now && canOwn(now->window()))
                m_window = now->window();
        });
    }
    QWidget* window() const { return canOwn(m_window) ? m_window.data() : nullptr; }

private:
    QPointer<QWidget> m_window;
};

QWidget* lastWindow() {
    static QPointer<LastWindow> last;
    if (!last)
        last = new LastWindow(qApp);
    return last->window();
}

}  // namespace

QWidget* ownerWindow() {
    QWidget* const last = lastWindow();
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget* active = QApplication::activeWindow(); canOwn(active))
        return active;
    return last;
}

}  // namespace platform
