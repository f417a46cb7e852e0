// The wait for a window's first picture, while the program has not come so far that it may hear of the user.
#pragma once

#include <QObject>

class QEventLoop;
class QWidget;

namespace platform {

class PaintWait : public QObject {
public:
    /// To be made before the window is shown, and not to outlive it.
    explicit PaintWait(QWidget& window);

    /// Returns when the window has been painted on its screen; at once when it is hidden or minimized, and after a
    /// quarter of a second in any case. Input of the user and what comes by sockets wait until the next loop, in their
    /// order.
    void wait();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_window;
    QEventLoop* m_loop = nullptr;  ///< while it runs
    bool m_painted = false;
};

}  // namespace platform
