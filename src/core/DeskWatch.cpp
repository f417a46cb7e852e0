// A filter on all events of the program: keys and mouse buttons leave no other trace.
#include "core/DeskWatch.h"

#include "platform/widgets/FreshKeys.h"
#include "platform/widgets/UnderWay.h"
#include "shared/TypedText.h"

#include <QApplication>
#include <QMouseEvent>

namespace sorvanto {

DeskWatch::DeskWatch(Window window) : m_window(std::move(window)) {
    m_typing.setSingleShot(true);
    qApp->installEventFilter(this);
    connect(
        qApp, &QGuiApplication::commitDataRequest, this, [this] { m_sessionEnds = true; },
        Qt::DirectConnection);
}

bool DeskWatch::isFree() const {
    if (!canOpenDialog() || QApplication::activePopupWidget() || m_buttonDown || m_typing.isActive() ||
        m_window.clickUnderWay())
        return false;
    const TypedText* screen = m_window.onShow();
    return !screen || !screen->hasTypedText();
}

bool DeskWatch::canOpenDialog() const {
    return !QApplication::activeModalWidget() && !QGuiApplication::modalWindow() &&
           !platform::UnderWay::any();
}

void DeskWatch::keepTypedText() {
    if (TypedText* screen = m_window.onShow())
        screen->keepTypedText();
}

bool DeskWatch::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (platform::typingRest().count() > 0)
            m_typing.start(platform::typingRest());
        m_sessionEnds = false;
        break;
    case QEvent::MouseButtonPress:
        m_sessionEnds = false;
        [[fallthrough]];
    case QEvent::MouseMove:  // a drag swallows the release; the next motion tells of it
    case QEvent::MouseButtonRelease:
        m_buttonDown = static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton;
        break;
    default:
        break;
    }
    return false;
}

}  // namespace sorvanto
