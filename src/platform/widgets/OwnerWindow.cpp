// The window last in use is known by the focus that it had.
#include "platform/widgets/OwnerWindow.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <algorithm>

namespace platform {

namespace {

bool canOwn(const QWidget* window) {
    return window && !window->property("ownsNoQuestion").toBool() && window->isVisible() &&
           !window->isMinimized() && window->windowType() != Qt::Popup &&
           window->windowType() != Qt::ToolTip && window->windowType() != Qt::SplashScreen;
}

/// Follows the focus from its first use on.
class LastWindow : public QObject {
public:
    explicit LastWindow(QObject* application) : QObject(application) {
        connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) {
            if (!now || !canOwn(now->window()))
                return;
            m_windows.removeAll(now->window());
            m_windows.removeAll(nullptr);
            m_windows.prepend(now->window());
        });
    }
    QWidget* window() const {
        const auto found = std::find_if(m_windows.begin(), m_windows.end(),
                                        [](const QPointer<QWidget>& each) { return canOwn(each); });
        return found == m_windows.end() ? nullptr : found->data();
    }

private:
    QList<QPointer<QWidget>> m_windows;  ///< the last one first
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
