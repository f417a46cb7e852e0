// Draws a command bar on a main window: menus, tool bars, side bar and the hosted windows.
#pragma once

#include "platform/widgets/CommandBar.h"

#include <QPointer>
#include <unordered_map>
#include <vector>

class QAction;
class QLineEdit;
class QMenu;
class QToolBar;

namespace platform {

class BarButton;
class HostArea;

class CommandBar::View : public QObject {
public:
    View(CommandBar& bar, QMainWindow& window, const QString& rightHostBand);

    void toolChanged(Tool& tool);
    void bandChanged(Band& band);
    void layOut();
    void addStrip(QWidget& strip);
    void addAtEnd(const Band& band, QWidget& widget);
    HostArea& hosts() { return *m_hosts; }
    void focusText(Tool& tool);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// All that is on the window for one tool.
    struct Shown {
        std::vector<QPointer<QAction>> entries;  // in menus; one of a sub-menu opens it
        QPointer<QAction> place;                 // of a button or text box on a tool bar
        QPointer<BarButton> button;
        QPointer<QLineEdit> edit;
        QPointer<QAction> keys;
    };

    void buildMenuBar(Band& band);
    void fillMenu(QMenu& menu, Band& band);
    QMenu* makeMenu(Tool& opener, QWidget& parent);
    void buildToolBar(Band& band);
    void buildSideBar(Band& band);
    void addTextBox(Tool& tool, QToolBar& strip);
    void addKeys(Tool& tool);
    void showHosts();

    CommandBar& m_bar;
    QMainWindow& m_window;
    QString m_rightBand;
    HostArea* m_hosts;
    QWidget* m_sideBar = nullptr;
    std::vector<std::pair<Band*, QToolBar*>> m_strips;
    std::unordered_map<const Tool*, Shown> m_shown;
};

}  // namespace platform
