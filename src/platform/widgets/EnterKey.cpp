// A filter on all key presses: by itself a button takes Enter in dialogs alone, and there only as their default.
#include "platform/widgets/EnterKey.h"

#include "platform/widgets/BarButton.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace platform {

namespace {

bool isPlainEnter(const QKeyEvent& key) {
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    return enter && !(key.modifiers() & ~Qt::KeypadModifier);
}

}  // namespace

EnterKey::EnterKey(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool EnterKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !isPlainEnter(*static_cast<QKeyEvent*>(event)))
        return false;
    auto* button = qobject_cast<QAbstractButton*>(watched);
    if (!qobject_cast<QPushButton*>(button) && !qobject_cast<QToolButton*>(button))
        return false;
    if (!button->isEnabled() || static_cast<QKeyEvent*>(event)->isAutoRepeat())
        return true;
    if (auto* onBar = qobject_cast<BarButton*>(button); onBar && onBar->menu())
        onBar->openMenu();
    else
        button->click();
    return true;
}

}  // namespace platform
