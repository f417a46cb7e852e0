// The shapes that the whole look is made of: boxes with round corners, the mark of the focus, arrows, ticks.
#pragma once

#include <QColor>
#include <QRect>
#include <Qt>

class QPainter;

namespace platform {

/// A box with round corners; a color that is not valid leaves its part out. The line lies inside the
/// rectangle; all measures are device-independent pixels.
struct Box {
    QColor fill, line;
    qreal width = 1;
    qreal radius = 6;
};

void drawBox(QPainter& painter, const QRect& place, const Box& box);
/// The one mark of what the keys go to: a frame in the accent color, inside the rectangle.
void drawFocusMark(QPainter& painter, const QRect& place, qreal radius = 5);
/// That mark around a whole row, of which each cell paints its part.
void drawRowMark(QPainter& painter, const QRect& cell, bool first, bool last);
/// An arrow head, as wide as a text of the interface is high, in the middle of the rectangle.
void drawArrow(QPainter& painter, const QRect& place, Qt::ArrowType direction, const QColor& color);
/// What fills a check box that is on.
void drawTick(QPainter& painter, const QRect& place, const QColor& color);
void drawDot(QPainter& painter, const QRect& place, const QColor& color);
/// A line of one pixel along an edge.
void drawEdge(QPainter& painter, const QRect& place, Qt::Edge edge, const QColor& color);

}  // namespace platform
