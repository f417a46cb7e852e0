// The application object, and the last net under the window: a failure that leaves the handler of an event is
// reported like any other, and the program goes on with the next event.
#pragma once

#include "core/Heartbeat.h"

#include <QApplication>
#include <memory>

namespace sorvanto {

struct Context;

class Application : public QApplication {
public:
    using QApplication::QApplication;

    /// From now on errors.log says when the interface stood still for more than a tenth of a second, and during what;
    /// nobody is disturbed by it.
    void noteBlocks(const Context& context);
    /// From now on the listener hears of each block of more than so many milliseconds, of that clock if there is one.
    void watchBlocks(qint64 limit, Heartbeat::Listener listener, Heartbeat::Clock clock = {});

    /// From now on the mouse shows that the program is at work while a change seals many that other programs made.
    static void showLongSealing();

    bool notify(QObject* receiver, QEvent* event) override;

private:
    std::unique_ptr<Heartbeat> m_heartbeat;
};

}  // namespace sorvanto
