// The keyboard's way around a window with a command bar: F6 from area to area (Shift+F6 back), the arrow
// keys along a bar.
#pragma once

#include <QLatin1String>
#include <QObject>
#include <vector>

class QMainWindow;
class QToolButton;
class QWidget;

namespace platform {

class HostArea;

class BarKeys : public QObject {
public:
    /// The object name of a text box on a tool bar, which Tab passes over and F6 reaches.
    static constexpr QLatin1String textBoxName{"searchBox"};
    /// Dynamic property (true) of the widget of an area at which F6 stops while it can be used; without one F6 stops
    /// at the first.
    static constexpr auto firstStop = "firstStop";

    /// Listens as long as the window lives, which owns it.
    BarKeys(QMainWindow& window, HostArea& hosts);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Tool bars and their text boxes, side bar, strips, the window in the middle, what keeps it company, the column
    /// at the right, the status line; only what is on show.
    std::vector<QWidget*> areas() const;
    void nextArea(bool backwards);
    static void moveAlongBar(QToolButton& from, int direction);
    static bool keyOnBar(QToolButton& button, int key);

    QMainWindow& m_window;
    HostArea& m_hosts;
};

}  // namespace platform
