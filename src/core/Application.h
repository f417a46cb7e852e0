// The application object, and the last net under the window: a failure that leaves the handler of an event is
// reported like any other, and the program goes on with the next event.
#pragma once

#include <QApplication>

namespace sorvanto {

class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace sorvanto
