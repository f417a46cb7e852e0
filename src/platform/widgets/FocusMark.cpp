#include "platform/widgets/FocusMark.h"

#include "platform/widgets/StyleShapes.h"

#include <QEvent>
#include <QPainter>

namespace platform {

FocusMark::FocusMark(QWidget& owner) : QWidget(&owner) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(owner.rect());
    hide();
    owner.installEventFilter(this);
}

bool FocusMark::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        setVisible(event->type() == QEvent::FocusIn);
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
        raise();
    }
    return false;
}

void FocusMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFocusMark(painter, rect());
}

}  // namespace platform
