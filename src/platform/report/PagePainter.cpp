// Drawing of the four kinds of items.
#include "platform/report/PagePainter.h"

#include "platform/report/Code39.h"
#include "platform/report/TextMeasure.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double ruleWidth = 10;  // half a point

/// Size of a device dot across the page, in device units: pixels on a screen or picture; on paper the dot
/// of a 300 dpi printer, since nobody knows the printer behind the file.
double dotSize(const QPainter& painter) {
    const bool paper = painter.paintEngine() && (painter.paintEngine()->type() == QPaintEngine::Pdf ||
                                                 painter.device()->devType() == QInternal::Printer);
    return paper ? Code39::dot * painter.deviceTransform().m11() : 1.0;
}

}  // namespace

void PagePainter::paint(QPainter& painter, const Page& page) {
    for (std::size_t i = m_fonts.size(); i < m_document.styles.size(); ++i)
        m_fonts.push_back(reportFont(m_document.styles[i]));
    // Rules, boxes and backgrounds first, then all writing: nothing hides a text, and pens and fonts
    // change seldom, which is most of the work on paper.
    m_penColor = m_fontSet = -1;
    for (const PageItem& item : page.items) {
        const TextStyle& style = styleOf(item);
        if (item.kind == ItemKind::Line) {
            useRulePen(painter, style.color);
            painter.drawLine(item.x, item.y, item.x + item.width, item.y + item.height);
        } else if (item.kind == ItemKind::Box) {
            useRulePen(painter, style.color);
            painter.setBrush(style.background ? QBrush(QColor::fromRgb(*style.background))
                                              : QBrush(Qt::NoBrush));
            painter.drawRect(item.x, item.y, item.width, item.height);
            painter.setBrush(Qt::NoBrush);
        } else if (item.kind == ItemKind::Text && style.background) {
            painter.fillRect(item.x, item.y, item.width, item.height, QColor::fromRgb(*style.background));
        }
    }
    m_penColor = -1;
    for (const PageItem& item : page.items) {
        if (item.kind == ItemKind::Text)
            paintText(painter, page, item);
        else if (item.kind == ItemKind::BarCode)
            paintBars(painter, item);
    }
}

void PagePainter::useRulePen(QPainter& painter, QRgb color) {
    if (m_penColor == color)
        return;
    m_penColor = color;
    QPen pen(QColor::fromRgb(color), ruleWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
}

void PagePainter::paintText(QPainter& painter, const Page& page, const PageItem& item) {
    if (item.runCount == 0)
        return;
    if (m_fontSet != item.drawn) {
        painter.setFont(m_fonts[item.drawn]);
        m_fontSet = item.drawn;
        const QRgb color = styleOf(item).color;
        if (m_penColor != color) {
            painter.setPen(QColor::fromRgb(color));
            m_penColor = color;
        }
    }
    for (std::uint32_t i = item.firstRun; i < item.firstRun + item.runCount; ++i) {
        const TextRun& run = page.runs[i];
        painter.drawText(QPointF(run.x, run.baseline), run.text);
    }
}

void PagePainter::paintBars(QPainter& painter, const PageItem& item) {
    const std::vector<int> pattern = Code39::pattern(item.text);
    if (pattern.empty())
        return;
    const QTransform device = painter.deviceTransform();
    const QRectF band = device.mapRect(QRectF(item.x, item.y, item.width, item.height));
    const double dot = dotSize(painter);
    const double count = Code39::modules(pattern) + 2 * Code39::quietZone;
    // Whole dots for each module; only a picture too small to be read falls back to parts of a pixel.
    double module = std::floor(band.width() / count / dot + 1e-6) * dot;
    const bool whole = module > 0;
    if (!whole)
        module = band.width() / count;
    double x = band.x() + (band.width() - count * module) / 2 + Code39::quietZone * module;
    if (whole)
        x = std::ceil(x / dot - 1e-6) * dot;
    const double top = whole && dot == 1.0 ? std::round(band.y()) : band.y();
    const double bottom = whole && dot == 1.0 ? std::round(band.bottom()) : band.bottom();

    painter.save();
    painter.setWorldTransform(device.inverted() * painter.worldTransform());
    painter.setRenderHint(QPainter::Antialiasing, !whole);
    bool dark = true;
    for (const int width : pattern) {
        if (dark)
            painter.fillRect(QRectF(x, top, width * module, bottom - top), Qt::black);
        x += width * module;
        dark = !dark;
    }
    painter.restore();
}

}  // namespace platform
