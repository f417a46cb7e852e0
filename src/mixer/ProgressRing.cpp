// Painting of the ring.
#include "mixer/ProgressRing.h"

#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"

#include <QPainter>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr double thickness = 14;
/// Where an arc begins, in sixteenths of a degree.
constexpr int top = 90 * 16;
/// Of a ring that is held at a place not known.
constexpr int dots = 24;

QColor arcColor(ProgressRing::Tone tone) {
    const platform::Theme& theme = platform::theme();
    switch (tone) {
    case ProgressRing::Tone::Running:
        return theme.accent;
    case ProgressRing::Tone::Held:
        return theme.warning;
    case ProgressRing::Tone::Good:
        return theme.good;
    case ProgressRing::Tone::Problem:
        return theme.danger;
    case ProgressRing::Tone::Quiet:
        break;
    }
    return theme.fieldLine;
}

/// The largest font up to the wanted size in which the text fits the width.
QFont fitted(QFont font, int pixels, const QString& text, double width) {
    font.setPixelSize(pixels);
    while (pixels > 10 && QFontMetricsF(font).horizontalAdvance(text) > width)
        font.setPixelSize(--pixels);
    return font;
}

}  // namespace

ProgressRing::ProgressRing(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ProgressRing::show(double fraction, Tone tone, const QString& middle, const QString& below) {
    if (m_fraction == fraction && m_tone == tone && m_middle == middle && m_below == below)
        return;
    m_fraction = fraction;
    m_tone = tone;
    m_middle = middle;
    m_below = below;
    platform::setSpokenName(*this, below.isEmpty() ? middle : middle + u", "_s + below);
    update();
}

void ProgressRing::setSmall(bool on) {
    if (std::exchange(m_small, on) != on)
        updateGeometry();
}

void ProgressRing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = std::min(width(), height()) - 2;
    const QRectF ring((width() - side + thickness) / 2, (height() - side + thickness) / 2, side - thickness,
                      side - thickness);
    const platform::Theme& theme = platform::theme();
    QColor track = theme.dark ? theme.line : theme.line.lighter(106);
    track.setAlphaF(theme.dark ? 0.65F : 0.7F);
    painter.setPen(QPen(track, thickness));
    painter.drawEllipse(ring);
    if (m_fraction > 0 || (m_tone == Tone::Held && m_fraction == 0)) {
        painter.setPen(QPen(arcColor(m_tone), thickness, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(ring, top, -std::max(1, qRound(std::min(m_fraction, 1.0) * 360 * 16)));
    } else if (m_tone == Tone::Held) {
        painter.setPen(QPen(arcColor(m_tone), thickness / 2, Qt::SolidLine, Qt::RoundCap));
        for (int dot = 0; dot < dots; ++dot)
            painter.drawArc(ring, top - dot * 360 * 16 / dots, 1);
    }
    paintTexts(painter, ring.adjusted(thickness, thickness, -thickness, -thickness));
}

void ProgressRing::paintTexts(QPainter& painter, const QRectF& inside) const {
    const platform::Theme& theme = platform::theme();
    QFont big = font();
    big.setWeight(QFont::DemiBold);
    const bool alone = m_below.isEmpty();
    big = fitted(big, alone ? 24 : 36, m_middle, inside.width());
    const double middle = inside.center().y();
    painter.setFont(big);
    painter.setPen(m_tone == Tone::Quiet ? theme.secondaryText : theme.text);
    painter.drawText(QRectF(inside.left(), middle - (alone ? 24 : 38), inside.width(), 48), Qt::AlignCenter,
                     m_middle);

    const QFont small = fitted(font(), 13, m_below, inside.width());
    painter.setFont(small);
    painter.setPen(theme.secondaryText);
    painter.drawText(QRectF(inside.left(), middle + 10, inside.width(), 22), Qt::AlignCenter, m_below);
}

}  // namespace sorvanto
