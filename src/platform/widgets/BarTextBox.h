// The box of a text box tool on a tool bar. Text, states and tip are the tool's; its keys go to the bar.
#pragma once

#include <QLineEdit>

namespace platform {

class CommandBar;
class Tool;

class BarTextBox : public QLineEdit {
    Q_OBJECT
public:
    BarTextBox(CommandBar& bar, Tool& tool, QWidget* parent);

protected:
    /// The bar hears of a key before the box takes it.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void takeFocus();
    void followTool();

    CommandBar& m_bar;
    Tool& m_tool;
};

}  // namespace platform
