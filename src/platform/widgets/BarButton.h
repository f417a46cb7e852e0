// A picture button of the command bar. It follows the action of its tool and triggers it, or, where the action
// has a menu, brings that up.
#pragma once

#include <QToolButton>

namespace platform {

class Tool;

/// A tool's tip without the marks of access keys.
QString plainTip(const QString& tip);

class BarButton : public QToolButton {
    Q_OBJECT
public:
    /// Picture and menu are those that the tool's action has.
    BarButton(Tool& tool, QSize size, int picture, QWidget* parent);
    /// Brings the menu up for the keyboard, its first entry chosen; nothing without a menu, or while it is off.
    void openMenu();

protected:
    void nextCheckState() override;
    void checkStateSet() override;
    void actionEvent(QActionEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showMenuOf(Tool& tool);
    void followTool();

    Tool& m_tool;  ///< as long as there is a default action
};

}  // namespace platform
