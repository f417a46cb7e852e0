// The accessible name is the tip without its mark, so that a button without a caption has a name too.
#include "platform/widgets/BarButton.h"

#include "platform/widgets/CommandBar.h"
#include "platform/widgets/Theme.h"

#include <QKeySequence>
#include <QPainter>

using namespace Qt::StringLiterals;

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
    setIcon(platform::icon(tool.icon()));
    setIconSize({picture, picture});
    setFixedSize(size);
    setFocusPolicy(Qt::NoFocus);
    setAutoRaise(true);
    refresh();
}

void BarButton::refresh() {
    const QString tip = m_tool.toolTip();
    const auto keys = QKeySequence::listFromString(m_tool.shortcut());
    const QString key = keys.isEmpty() ? QString() : keys.first().toString(QKeySequence::NativeText);
    setToolTip(tip.isEmpty() || key.isEmpty() ? tip : u"%1 (%2)"_s.arg(tip, key));
    setAccessibleName(plainTip(tip.isEmpty() ? m_tool.caption() : tip));
    setEnabled(m_tool.enabled());
    setVisible(m_tool.visible());
    setAccessibleDescription(m_tool.mark());
    update();
}

// The ring in the color around it keeps the dot apart from the picture.
void BarButton::paintEvent(QPaintEvent* event) {
    QToolButton::paintEvent(event);
    if (m_tool.mark().isEmpty())
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
