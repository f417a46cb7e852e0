// Sizing of the content. The usual resizable content would get its wished height, not its least one,
// as soon as a label in it breaks lines.
#include "mixer/FittingScrollArea.h"

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
}

bool FittingScrollArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        fit();
    return QScrollArea::eventFilter(watched, event);
}

void FittingScrollArea::fit() {
    if (!widget() || !widget()->layout())
        return;
    QLayout& layout = *widget()->layout();
    const auto least = [&](int width) {
        return layout.hasHeightForWidth() ? layout.minimumHeightForWidth(width)
                                          : layout.minimumSize().height();
    };
    const QSize room = maximumViewportSize();
    int width = room.width();
    if (least(width) > room.height())
        width -= verticalScrollBar()->sizeHint().width();
    widget()->resize(width, std::max(room.height(), least(width)));
}

}  // namespace sorvanto
