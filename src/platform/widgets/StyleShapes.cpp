#include "platform/widgets/StyleShapes.h"

#include "platform/widgets/Theme.h"

#include <QPainter>

namespace platform {

namespace {

constexpr qreal canvas = 24;  // the shapes are given on the grid of the pictures
constexpr qreal shapeSize = 16;
constexpr qreal markWidth = 2;

/// Makes the painter's units those of the canvas, its middle that of the rectangle.
class Canvas {
public:
    Canvas(QPainter& painter, const QRect& place) : m_painter(painter) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(QRectF(place).center());
        painter.scale(shapeSize / canvas, shapeSize / canvas);
    }
    ~Canvas() { m_painter.restore(); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

private:
    QPainter& m_painter;
};

void drawStroke(QPainter& painter, const QPolygonF& points, const QColor& color, qreal width) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
}

int degreesFromDown(Qt::ArrowType direction) {
    switch (direction) {
    case Qt::LeftArrow:
        return 90;
    case Qt::UpArrow:
        return 180;
    case Qt::RightArrow:
        return 270;
    default:
        return 0;
    }
}

}  // namespace

void drawBox(QPainter& painter, const QRect& place, const Box& box) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = box.line.isValid() ? box.width : 0;
    painter.setPen(width > 0 ? QPen(box.line, width) : QPen(Qt::NoPen));
    painter.setBrush(box.fill.isValid() ? QBrush(box.fill) : QBrush(Qt::NoBrush));
    const qreal inset = width / 2, radius = qMax(0.0, box.radius - inset);
    painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

void drawFocusMark(QPainter& painter, const QRect& place, qreal radius) {
    drawBox(painter, place, {{}, theme().accent, markWidth, radius});
}

void drawRowMark(QPainter& painter, const QRect& cell, bool first, bool last) {
    constexpr int beyond = 10;  // the corners of a cell within the row
    painter.save();
    painter.setClipRect(cell);
    drawFocusMark(painter, cell.adjusted(first ? 0 : -beyond, 0, last ? 0 : beyond, 0));
    painter.restore();
}

void drawArrow(QPainter& painter, const QRect& place, Qt::ArrowType direction, const QColor& color) {
    const Canvas canvasOf(painter, place);
    painter.rotate(degreesFromDown(direction));
    drawStroke(painter, {{-5.5, -2.5}, {0, 3}, {5.5, -2.5}}, color, 1.6);
}

void drawTick(QPainter& painter, const QRect& place, const QColor& color) {
    const Canvas canvasOf(painter, place);
    drawStroke(painter, {{-7, 0.5}, {-2.3, 5.2}, {7, -4.5}}, color, 3);
}

void drawDot(QPainter& painter, const QRect& place, const QColor& color) {
    const Canvas canvasOf(painter, place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(), 5, 5);
}

void drawEdge(QPainter& painter, const QRect& place, Qt::Edge edge, const QColor& color) {
    QRect line = place;
    switch (edge) {
    case Qt::TopEdge:
        line.setHeight(1);
        break;
    case Qt::BottomEdge:
        line.setTop(place.bottom());
        break;
    case Qt::LeftEdge:
        line.setWidth(1);
        break;
    case Qt::RightEdge:
        line.setLeft(place.right());
        break;
    }
    painter.fillRect(line, color);
}

}  // namespace platform
