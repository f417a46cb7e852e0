// Sizing of the content. The usual resizable content would get its wished height, not its least one,
// as soon as a label in it breaks lines.
#include "mixer/FittingScrollArea.h"

#include "platform/widgets/FocusMark.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>
#include <algorithm>

namespace sorvanto {

FittingScrollArea::FittingScrollArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(false);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::TabFocus);    // a click leaves the keys where they are
    new platform::FocusMark(*this);  // the arrow keys scroll it
}

void FittingScrollArea::setContent(QWidget* content) {
    setWidget(content);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
    fit();
}

void FittingScrollArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fit();
    emit resized();
}

bool FittingScrollArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        fit();
    return QScrollArea::eventFilter(watched, event);
}

int FittingScrollArea::leastHeight(int width) const {
    const QLayout& layout = *widget()->layout();
    return layout.hasHeightForWidth() ? layout.minimumHeightForWidth(width) : layout.minimumSize().height();
}

bool FittingScrollArea::hasRoom() const {
    const QSize room = maximumViewportSize();
    return !widget() || !widget()->layout() || leastHeight(room.width()) <= room.height();
}

void FittingScrollArea::fit() {
    if (!widget() || !widget()->layout())
        return;
    const QSize room = maximumViewportSize();
    int width = room.width();
    if (!hasRoom())
        width -= verticalScrollBar()->sizeHint().width();
    widget()->resize(width, std::max(room.height(), leastHeight(width)));
}

}  // namespace sorvanto
