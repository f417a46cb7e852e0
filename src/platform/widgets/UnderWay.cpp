// Timers stand still while an answer is waited for, and run between the pieces of long work.
#include "platform/widgets/UnderWay.h"

#include <QTimer>
#include <utility>

namespace platform {

namespace {
constexpr int pause = 50;  // milliseconds, until it is looked again whether the work is over
int underWay = 0;
}  // namespace

UnderWay::UnderWay() { ++underWay; }

UnderWay::~UnderWay() { --underWay; }

bool UnderWay::any() { return underWay > 0; }

void whenIdle(QObject& receiver, std::function<void()> action) {
    auto* timer = new QTimer(&receiver);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, &receiver, [timer, action = std::move(action)] {
        if (UnderWay::any())
            return timer->start(pause);
        timer->deleteLater();
        const auto last = action;  // it may take its receiver, and this call, away
        last();
    });
    timer->start(0);
}

}  // namespace platform
