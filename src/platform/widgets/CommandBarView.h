// Draws a command bar on a main window: menus, tool bars, side bar and the hosted windows.
#pragma once

#include "platform/widgets/CommandBar.h"

#include <vector>

class QMenu;
class QToolBar;

namespace platform {

class HostArea;

class CommandBar::View : public QObject {
public:
    View(CommandBar& bar, QMainWindow& window, const QString& rightHostBand);

    void layOut();
    void addStrip(QWidget& strip);
    void addAtEnd(const Band& band, QWidget& widget);
    HostArea& hosts() { return *m_hosts; }

private:
    void build(Band& band);
    void buildMenuBar(Band& band);
    /// The menu that the opener's action brings up from then on.
    QMenu* makeMenu(Tool& opener, QWidget& parent);
    void buildToolBar(Band& band);
    void addToBar(Tool& tool, QToolBar& strip);
    void buildSideBar(Band& band);
    void hostForms(Band& band);
    void showHosts();

    CommandBar& m_bar;
    QMainWindow& m_window;
    QString m_rightBand;
    HostArea* m_hosts;
    std::vector<QToolBar*> m_strips;
};

}  // namespace platform
