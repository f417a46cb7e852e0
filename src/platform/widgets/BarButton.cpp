// The accessible name is the tip without its mark, so that a button without a caption has a name too.
#include "platform/widgets/BarButton.h"

#include "platform/widgets/CommandBar.h"
#include "platform/widgets/Theme.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace platform {

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
}

}  // namespace platform
