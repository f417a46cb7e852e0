#include "platform/widgets/BarTextBox.h"

#include "platform/widgets/BarButton.h"
#include "platform/widgets/BarKeys.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/OneLine.h"
#include "platform/widgets/Theme.h"

#include <QKeyEvent>

namespace platform {

namespace {

constexpr int boxWidth = 210;
constexpr int enterKey = 13;

/// The code a text box tool reports for a key: 13 for both Enter keys, else the character typed.
int keyCode(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return enterKey;
    return event.text().isEmpty() ? event.key() : event.text().front().unicode();
}

}  // namespace

BarTextBox::BarTextBox(CommandBar& bar, Tool& tool, QWidget* parent)
    : QLineEdit(tool.text(), parent), m_bar(bar), m_tool(tool) {
    setObjectName(BarKeys::textBoxName);
    setLook(*this, "onBar");
    setFixedWidth(boxWidth);
    keepOneLine(*this);
    setFocusPolicy(Qt::ClickFocus);  // by mouse, its keys or F6; the Tab key stays in the screen
    connect(this, &QLineEdit::textChanged, &tool, &Tool::setText);
    connect(&tool, &Tool::textChanged, this, [this](const QString& text) {
        if (text != this->text())
            setText(text);
    });
    connect(&tool.action(), &QAction::triggered, this, &BarTextBox::takeFocus);
    connect(&tool.action(), &QAction::changed, this, &BarTextBox::followTool);
    followTool();
}

void BarTextBox::takeFocus() {
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

void BarTextBox::followTool() {
    setEnabled(m_tool.enabled());
    setToolTip(m_tool.action().toolTip());
    const QString name = plainTip(m_tool.toolTip().isEmpty() ? m_tool.caption() : m_tool.toolTip());
    setAccessibleName(name);
    setPlaceholderText(name);
}

void BarTextBox::keyPressEvent(QKeyEvent* event) {
    emit m_bar.toolKeyPress(m_tool, keyCode(*event));
    QLineEdit::keyPressEvent(event);
}

}  // namespace platform
