#include "shared/ServerWatch.h"

#include "platform/data/Engine.h"
#include "platform/data/postgres/Address.h"
#include "platform/widgets/AnswerWait.h"
#include "shared/Context.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

#include <QCoreApplication>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int lookMilliseconds = 5000;

void tellSaved() { announce(translated(u"The line to the server broke; the change was saved"_s)); }

void lookAfterLine(const std::weak_ptr<platform::Connection>& watched, QTimer& timer) {
    const platform::ConnectionPtr connection = watched.lock();
    if (!connection)
        timer.deleteLater();
    else if (connection->state() == 1)
        connection->engine().lookAfter();
}

}  // namespace

void watchServer(const Context& context, const QString& location) {
    if (!platform::postgres::isAddress(location.trimmed()))
        return;
    context.connection->setWaiter(std::make_shared<platform::AnswerWait>(
        [] { return translated(u"Waiting for the server"_s); }, tellSaved));
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, watched = std::weak_ptr(context.connection)] {
        lookAfterLine(watched, *timer);
    });
    timer->start(lookMilliseconds);
}

}  // namespace sorvanto
