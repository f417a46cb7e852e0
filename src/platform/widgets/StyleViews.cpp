// Lists, tables, scroll bars, progress.
#include "platform/widgets/Looks.h"
#include "platform/widgets/StyleParts.h"
#include "platform/widgets/Theme.h"

#include <QListView>
#include <QPainter>
#include <QStyleOption>
#include <QTime>
#include <QTimer>
#include <algorithm>
#include <vector>

namespace platform {

namespace {

constexpr int handleMargin = 3, leastHandle = 36;
constexpr qreal handleRadius = 3, progressRadius = 4;
constexpr int busySteps = 60, busyInterval = 25;  // milliseconds a step

int headerMargin(const QWidget* widget) { return hasLook(widget, "dense") ? 7 : 10; }

int arrowOf(const QStyleOptionHeader& option) {
    return option.sortIndicator == QStyleOptionHeader::None ? 0 : arrowRoom;
}

/// A table measures all its headings again with each column that it gets, and nearly always there are few.
QSize headingSize(const QWidget& header, const QString& text) {
    struct Measured {
        QString text;
        QFont font;
        int dotsPerInch;
        QSize size;
    };
    constexpr std::size_t most = 64;
    static std::vector<Measured> known;
    const int dotsPerInch = header.logicalDpiY();
    const auto found = std::find_if(known.cbegin(), known.cend(), [&](const Measured& one) {
        return one.text == text && one.dotsPerInch == dotsPerInch && one.font == header.font();
    });
    if (found != known.cend())
        return found->size;
    if (known.size() == most)
        known.clear();
    known.push_back({text, header.font(), dotsPerInch, header.fontMetrics().size(0, text)});
    return known.back().size;
}

/// The part that wanders from end to end while nobody knows how long it takes.
QRect busyChunk(const QRect& all) {
    const int width = all.width() / 4;
    const int step = QTime::currentTime().msecsSinceStartOfDay() / busyInterval % busySteps;
    return {all.left() + (all.width() - width) * step / busySteps, all.top(), width, all.height()};
}

}  // namespace

QSize headerSize(const QStyleOptionHeader& option, const QWidget* widget) {
    const QSize text = widget ? headingSize(*widget, option.text) : option.fontMetrics.size(0, option.text);
    return {text.width() + 2 * headerMargin(widget) + arrowOf(option), text.height() + 5};
}

void drawHeader(const QStyleOptionHeader& option, QPainter& painter, const QWidget* widget) {
    drawHeaderSection(option, painter);
    const int margin = headerMargin(widget), arrow = arrowOf(option);
    const QRect room = option.rect.adjusted(margin, 0, -margin - arrow, 0);
    const auto sides = option.textAlignment & Qt::AlignHorizontal_Mask;
    painter.setPen(theme().secondaryText);
    painter.drawText(room, static_cast<int>(sides) | Qt::AlignVCenter, option.text);
    if (arrow > 0)
        drawArrow(painter, QRect(room.right() + 1, room.top(), arrow, room.height()),
                  option.sortIndicator == QStyleOptionHeader::SortUp ? Qt::UpArrow : Qt::DownArrow,
                  theme().secondaryText);
}

void drawHeaderSection(const QStyleOption& option, QPainter& painter) {
    painter.fillRect(option.rect, theme().surface);
    drawEdge(painter, option.rect, Qt::BottomEdge, theme().line);
}

void drawItemGround(const QStyleOptionViewItem& option, QPainter& painter, const QWidget* widget) {
    if (option.backgroundBrush.style() != Qt::NoBrush)
        painter.fillRect(option.rect, option.backgroundBrush);
    if (!has(option, QStyle::State_Selected))
        return;
    const qreal radius = qobject_cast<const QListView*>(widget) ? 5 : 0;
    drawBox(painter, option.rect, {theme().softAccent, {}, 0, radius});
}

// Scroll bars

void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter, const QRect& handle) {
    if (option.minimum == option.maximum)
        return;
    const bool reached = has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken);
    const int m = handleMargin;
    drawBox(painter, handle.adjusted(m, m, -m, -m),
            {reached ? theme().secondaryText : theme().fieldLine, {}, 0, handleRadius});
}

QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const bool flat = option.orientation == Qt::Horizontal;
    const QRect& all = option.rect;
    const int length = flat ? all.width() : all.height();
    const int range = option.maximum - option.minimum;
    int handle = length;
    if (range > 0)
        handle =
            qBound(qMin(leastHandle, length),
                   static_cast<int>(qint64(option.pageStep) * length / (range + option.pageStep)), length);
    const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                      length - handle, option.upsideDown);
    const auto along = [&](int from, int size) {
        return flat ? QRect(all.left() + from, all.top(), size, all.height())
                    : QRect(all.left(), all.top() + from, all.width(), size);
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return all;
    case QStyle::SC_ScrollBarSlider:
        return along(start, handle);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + handle, length - start - handle);
    default:
        return {};
    }
}

// Progress

void drawProgress(const QStyleOptionProgressBar& option, QPainter& painter, const QWidget* widget) {
    drawBox(painter, option.rect, {theme().line, {}, 0, progressRadius});
    QRect done = option.rect;
    if (option.maximum == option.minimum) {
        done = busyChunk(option.rect);
        auto* bar = const_cast<QWidget*>(widget);
        QTimer::singleShot(busyInterval, bar, qOverload<>(&QWidget::update));
    } else {
        const double share = double(option.progress - option.minimum) / (option.maximum - option.minimum);
        done.setWidth(qRound(qBound(0.0, share, 1.0) * option.rect.width()));
    }
    if (done.width() > 0)
        drawBox(painter, done, {theme().accent, {}, 0, progressRadius});
}

}  // namespace platform
