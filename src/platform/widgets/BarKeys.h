// The keyboard's way around a window with a command bar: F6 from area to area (Shift+F6 back), the arrow
// keys along a bar, Enter on one of its buttons.
#pragma once

#include <QLatin1String>
#include <QObject>
#include <vector>

class QMainWindow;
class QWidget;

namespace platform {

class HostArea;

class BarKeys : public QObject {
public:
    /// The object name of a text box on a tool bar, which Tab passes over and F6 reaches.
    static constexpr QLatin1String textBoxName{"searchBox"};

    /// Listens as long as the window lives, which owns it.
    BarKeys(QMainWindow& window, HostArea& hosts);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Tool bars, side bar, the window in the middle, the column at the right; only what is on show.
    std::vector<QWidget*> areas() const;
    void nextArea(bool backwards);
    static void moveAlongBar(QWidget& from, int direction);
    static bool keyOnBar(QWidget& button, int key);

    QMainWindow& m_window;
    HostArea& m_hosts;
};

}  // namespace platform
