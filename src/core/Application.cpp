// Qt can't carry an exception through its event loop, so it is caught where each event enters.
#include "core/Application.h"

#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

bool Application::notify(QObject* receiver, QEvent* event) {
    return guarded(u"Application:notify"_s, false, [&] { return QApplication::notify(receiver, event); });
}

}  // namespace sorvanto
