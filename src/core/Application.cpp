// Qt can't carry an exception through its event loop, so it is caught where each event enters.
#include "core/Application.h"

#include "history/HistorySeal.h"
#include "shared/Context.h"
#include "shared/ErrorReporter.h"
#include "shared/Guard.h"

#include <QAbstractEventDispatcher>
#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace sorvanto {

void Application::noteBlocks(const Context& context) {
    constexpr qint64 limit = 100;
    watchBlocks(limit, [&context](qint64 block, const QString& event) {
        if (context.reporter)
            context.reporter->note(u"stood still for %1 ms: %2"_s.arg(block).arg(event));
    });
}

void Application::watchBlocks(qint64 limit, Heartbeat::Listener listener, Heartbeat::Clock clock) {
    m_heartbeat =
        std::make_unique<Heartbeat>(*eventDispatcher(), limit, std::move(listener), std::move(clock));
}

// The change is one statement, in which no event can be heard.
void Application::showLongSealing() {
    onLongSealing([] {
        if (QThread::currentThread() != qApp->thread())
            return;
        setOverrideCursor(Qt::WaitCursor);
        QTimer::singleShot(0, qApp, [] { restoreOverrideCursor(); });
    });
}

bool Application::notify(QObject* receiver, QEvent* event) {
    const auto deliver = [&] {
        return guarded(u"Application:notify"_s, false, [&] { return QApplication::notify(receiver, event); });
    };
    if (!m_heartbeat)
        return deliver();
    const QString name = receiver->objectName();  // the event may delete its receiver
    const char* const kind = receiver->metaObject()->className();
    const qint64 begun = m_heartbeat->begin();
    const bool taken = deliver();
    if (m_heartbeat)
        m_heartbeat->end(begun, name, kind);
    return taken;
}

}  // namespace sorvanto
