// The accessible name is the tip without its mark, so that a button without a caption has a name too.
#include "platform/widgets/BarButton.h"

#include "platform/widgets/CommandBar.h"
#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"

#include <QActionEvent>
#include <QMenu>
#include <QPainter>

namespace platform {

namespace {

constexpr int dotRadius = 4;
constexpr int ringWidth = 2;
constexpr int dotFromEdge = 13;  // its middle, from the right and from the top

}  // namespace

QString plainTip(const QString& tip) {
    QString plain;
    for (int i = 0; i < tip.size(); ++i) {
        if (tip[i] == u'&' && ++i >= tip.size())
            break;
        plain += tip[i];
    }
    return plain;
}

BarButton::BarButton(Tool& tool, QSize size, int picture, QWidget* parent)
    : QToolButton(parent), m_tool(tool) {
    setObjectName(tool.name());
    setIconSize({picture, picture});
    setFixedSize(size);
    setFocusPolicy(Qt::NoFocus);
    setAutoRaise(true);
    if (tool.action().menu())
        showMenuOf(tool);
    setDefaultAction(&tool.action());
    followTool();
}

// A press shows the menu by itself; the action's keys alone trigger it.
void BarButton::showMenuOf(Tool& tool) {
    setMenu(tool.action().menu());
    setPopupMode(InstantPopup);
    connect(&tool.keysTool().action(), &QAction::triggered, this, &BarButton::openMenu);
}

// The first entry is chosen, so that Enter does at once what is most likely meant.
void BarButton::openMenu() {
    if (!isEnabled() || !menu() || menu()->isVisible())
        return;
    menu()->popup(mapToGlobal(rect().bottomLeft()));
    for (QAction* entry : menu()->actions()) {
        if (entry->isEnabled() && !entry->isSeparator())
            return menu()->setActiveAction(entry);
    }
}

// A press that has brought up a menu has done its work.
void BarButton::nextCheckState() {
    if (!menu())
        QToolButton::nextCheckState();
}

// Who changes the button itself, as screen readers do, means to press it.
void BarButton::checkStateSet() {
    QAction* action = defaultAction();
    if (!action || isChecked() == action->isChecked())
        return;
    action->trigger();
    setChecked(action->isChecked());
}

void BarButton::actionEvent(QActionEvent* event) {
    QToolButton::actionEvent(event);
    if (event->type() == QEvent::ActionChanged && event->action() == defaultAction())
        followTool();
}

void BarButton::followTool() {
    setText({});  // the caption is for menus
    setSpokenName(*this, plainTip(m_tool.toolTip().isEmpty() ? m_tool.caption() : m_tool.toolTip()));
    setAccessibleDescription(m_tool.mark());
    setVisible(m_tool.visible());
    update();
}

// The ring in the color around it keeps the dot apart from the picture.
void BarButton::paintEvent(QPaintEvent* event) {
    QToolButton::paintEvent(event);
    if (!defaultAction() || m_tool.mark().isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF middle(width() - dotFromEdge, dotFromEdge);
    painter.setBrush(isChecked() ? theme().softAccent : theme().surface);
    painter.drawEllipse(middle, dotRadius + ringWidth, dotRadius + ringWidth);
    painter.setBrush(theme().warning);
    painter.drawEllipse(middle, dotRadius, dotRadius);
}

}  // namespace platform
