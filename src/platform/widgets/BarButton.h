// A picture button of the command bar: it shows the state of its tool and only reports clicks.
#pragma once

#include <QToolButton>

namespace platform {

class Tool;

/// A tool's tip without the marks of access keys.
QString plainTip(const QString& tip);

class BarButton : public QToolButton {
    Q_OBJECT
public:
    BarButton(Tool& tool, QSize size, int picture, QWidget* parent);
    Tool& tool() const { return m_tool; }
    /// Takes over picture, tip, enabled, checked, visible and the mark from the tool.
    void refresh();

protected:
    /// A click leaves the pressed state to the tool.
    void nextCheckState() override {}
    void paintEvent(QPaintEvent* event) override;

private:
    Tool& m_tool;
};

}  // namespace platform
