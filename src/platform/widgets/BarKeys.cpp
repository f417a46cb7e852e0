// A filter on all key presses of the window, since each area has widgets of its own kinds.
#include "platform/widgets/BarKeys.h"

#include "platform/widgets/BarButton.h"
#include "platform/widgets/HostArea.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

namespace platform {

namespace {

/// The bar's own buttons, and one that stands at its end.
bool isOnBar(const QToolButton& button) {
    return qobject_cast<const BarButton*>(&button) || qobject_cast<const QToolBar*>(button.parentWidget());
}

bool canStop(const QWidget& widget) { return widget.isEnabled() && widget.isVisible(); }

/// Where F6 stops in an area; nullptr where it passes it over.
QWidget* stopIn(QWidget& area) {
    if (area.objectName() == BarKeys::textBoxName)
        return canStop(area) ? &area : nullptr;
    QWidget* first = nullptr;
    for (QWidget* child : area.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<QToolButton*>(child);
        const bool takes = (child->focusPolicy() & Qt::TabFocus) || (button && isOnBar(*button));
        if (!takes || !canStop(*child) || child->objectName() == BarKeys::textBoxName)
            continue;
        if (child->property(BarKeys::firstStop).toBool())
            return child;
        if (!first)
            first = child;
    }
    return first;
}

}  // namespace

BarKeys::BarKeys(QMainWindow& window, HostArea& hosts) : QObject(&window), m_window(window), m_hosts(hosts) {
    qApp->installEventFilter(this);
}

std::vector<QWidget*> BarKeys::areas() const {
    std::vector<QWidget*> top, bottom;
    for (QToolBar* strip : m_window.findChildren<QToolBar*>(Qt::FindDirectChildrenOnly)) {
        auto& side = m_window.toolBarArea(strip) == Qt::BottomToolBarArea ? bottom : top;
        side.push_back(strip);
        for (QWidget* box : strip->findChildren<QWidget*>(textBoxName))
            side.push_back(box);
    }
    for (QWidget* area : m_hosts.areas())
        top.push_back(area);
    top.insert(top.end(), bottom.begin(), bottom.end());
    if (auto* status = m_window.findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly))
        top.push_back(status);
    std::erase_if(top, [](const QWidget* area) { return !area->isVisible(); });
    return top;
}

void BarKeys::nextArea(bool backwards) {
    const auto all = areas();
    const auto count = static_cast<int>(all.size());
    const QWidget* focus = QApplication::focusWidget();
    int at = backwards ? 0 : -1;
    for (int i = 0; i < count; ++i)
        if (focus && (all[i] == focus || all[i]->isAncestorOf(focus)))
            at = i;
    for (int step = 1; step <= count; ++step) {
        const int next = ((at + (backwards ? -step : step)) % count + count) % count;
        if (QWidget* stop = stopIn(*all[next])) {
            stop->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

// The buttons of a tool bar don't take the focus by Tab, so it is their place that tells them.
void BarKeys::moveAlongBar(QToolButton& from, int direction) {
    std::vector<QToolButton*> buttons;
    for (auto* button : from.parentWidget()->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly))
        if (isOnBar(*button) && button->isEnabled() && button->isVisible())
            buttons.push_back(button);
    const auto at = std::find(buttons.begin(), buttons.end(), &from) - buttons.begin();
    const auto next = at + direction;
    if (next >= 0 && next < static_cast<std::ptrdiff_t>(buttons.size()))
        buttons[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
}

bool BarKeys::keyOnBar(QToolButton& button, int key) {
    switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveAlongBar(button, 1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
        moveAlongBar(button, -1);
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
    const QWidget* focus = QApplication::focusWidget();  // none: keys go to the window
    if (key->key() == Qt::Key_F6 && widget == (focus ? focus : &m_window)) {
        nextArea(key->modifiers() & Qt::ShiftModifier);
        return true;
    }
    auto* button = qobject_cast<QToolButton*>(widget);
    return button && isOnBar(*button) && keyOnBar(*button, key->key());
}

}  // namespace platform
