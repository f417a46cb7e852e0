// A filter on all key presses of the window, since each area has widgets of its own kinds.
#include "platform/widgets/BarKeys.h"

#include "platform/widgets/BarButton.h"
#include "platform/widgets/HostArea.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QToolBar>
#include <algorithm>

namespace platform {

BarKeys::BarKeys(QMainWindow& window, HostArea& hosts) : QObject(&window), m_window(window), m_hosts(hosts) {
    qApp->installEventFilter(this);
}

std::vector<QWidget*> BarKeys::areas() const {
    std::vector<QWidget*> result;
    for (QToolBar* strip : m_window.findChildren<QToolBar*>(Qt::FindDirectChildrenOnly))
        result.push_back(strip);
    for (const char* name : {"sideBar", "hostPage", "rightHost"})
        for (QWidget* area : m_hosts.findChildren<QWidget*>(QLatin1String(name)))
            result.push_back(area);
    std::erase_if(result, [](const QWidget* area) { return !area->isVisible(); });
    return result;
}

void BarKeys::nextArea(bool backwards) {
    const auto all = areas();
    const auto count = static_cast<int>(all.size());
    const QWidget* focus = QApplication::focusWidget();
    int at = backwards ? 0 : -1;
    for (int i = 0; i < count; ++i)
        if (focus && all[i]->isAncestorOf(focus))
            at = i;
    for (int step = 1; step <= count; ++step) {
        const int next = ((at + (backwards ? -step : step)) % count + count) % count;
        for (QWidget* child : all[next]->findChildren<QWidget*>()) {
            const bool fits = qobject_cast<BarButton*>(child) || (child->focusPolicy() & Qt::TabFocus) ||
                              child->objectName() == textBoxName;
            if (fits && child->isEnabled() && child->isVisible()) {
                child->setFocus(Qt::TabFocusReason);
                return;
            }
        }
    }
}

void BarKeys::moveAlongBar(QWidget& from, int direction) {
    std::vector<BarButton*> buttons;
    for (auto* button : from.parentWidget()->findChildren<BarButton*>())
        if (button->isEnabled() && button->isVisible())
            buttons.push_back(button);
    const auto at = std::find(buttons.begin(), buttons.end(), &from) - buttons.begin();
    const auto next = at + direction;
    if (next >= 0 && next < static_cast<std::ptrdiff_t>(buttons.size()))
        buttons[next]->setFocus(Qt::TabFocusReason);
}

bool BarKeys::keyOnBar(QWidget& button, int key) {
    switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveAlongBar(button, 1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
        moveAlongBar(button, -1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        static_cast<BarButton&>(button).click();
        return true;
    default:
        return false;
    }
}

bool BarKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (widget->window() != &m_window)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F6 && widget == QApplication::focusWidget()) {
        nextArea(key->modifiers() & Qt::ShiftModifier);
        return true;
    }
    return qobject_cast<BarButton*>(widget) && keyOnBar(*widget, key->key());
}

}  // namespace platform
