// Push buttons, tool buttons, check boxes, radio buttons, group boxes.
#include "platform/widgets/Looks.h"
#include "platform/widgets/StyleParts.h"
#include "platform/widgets/Theme.h"

#include <QPainter>
#include <QStyleOption>

namespace platform {

namespace {

constexpr int pushHeight = 33;  // without its frame, as the next
constexpr int pushRoom = 22;
constexpr int compactHeight = 22;
constexpr int compactRoom = 12;
constexpr int inLineRoom = 8;  // with the frame
constexpr int inLineHeight = 19;
constexpr qreal inLineRadius = 4, pushRadius = 7, toolRadius = 8, checkRadius = 4, cardRadius = 12;
constexpr QMargins groupRoom{13, 41, 13, 13};
constexpr QPoint groupTitle{22, 14};

/// The color that fills a button which does what a window is for, or which stops; none for all others.
QColor fillOf(const QStyleOptionButton& option, const QWidget* widget) {
    if (!has(option, QStyle::State_Enabled))
        return {};
    if (hasLook(widget, "danger"))
        return theme().danger;
    if (hasLook(widget, "primary") || option.features.testFlag(QStyleOptionButton::DefaultButton))
        return theme().accent;
    return {};
}

/// Among small texts: no frame, shown by its color.
Box inLineBox(const QStyleOptionButton& option, const QWidget* widget) {
    Box box{{}, {}, strongLine, inLineRadius};
    if (has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken))
        box.fill = hasLook(widget, "inLine") ? theme().softAccent : theme().window;
    if (has(option, QStyle::State_HasFocus))
        box.line = theme().accent;
    return box;
}

QColor inLineInk(const QWidget* widget) {
    if (hasLook(widget, "caution"))
        return theme().warning;
    return hasLook(widget, "inLine") && !hasLook(widget, "quiet") ? theme().accent : theme().secondaryText;
}

Box pushBox(const QStyleOptionButton& option, const QWidget* widget) {
    const Theme& colors = theme();
    const bool on = has(option, QStyle::State_Enabled);
    const bool reached = on && has(option, QStyle::State_HasFocus);
    if (const QColor fill = fillOf(option, widget); fill.isValid())
        return {fill, reached ? colors.text : fill, reached ? strongLine : 1, pushRadius};
    Box box{colors.surface, colors.line, 1, pushRadius};
    if (on && (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On)))
        box.fill = colors.softAccent;
    else if (on && has(option, QStyle::State_MouseOver))
        box = {colors.window, colors.fieldLine, 1, pushRadius};
    if (reached) {
        box.line = colors.accent;
        box.width = strongLine;
    }
    return box;
}

/// The box of a check box or a radio button. On its fill the mark of the focus is the color of texts.
Box markBox(const QStyleOption& option, qreal radius) {
    const Theme& colors = theme();
    const bool filled = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
    Box box{colors.surface, colors.secondaryText, 1, radius};
    if (!has(option, QStyle::State_Enabled))
        return {colors.quietField, colors.disabledText, 1, radius};
    if (filled)
        box.fill = box.line = colors.accent;
    if (has(option, QStyle::State_HasFocus)) {
        box.line = filled ? colors.text : colors.accent;
        box.width = strongLine;
    }
    return box;
}

QColor markInk(const QStyleOption& option) {
    return has(option, QStyle::State_Enabled) ? theme().onFill : theme().disabledText;
}

}  // namespace

bool has(const QStyleOption& option, QStyle::StateFlag flag) { return option.state.testFlag(flag); }

QColor inkOf(const QStyleOption& option) {
    return has(option, QStyle::State_Enabled) ? theme().text : theme().disabledText;
}

void drawPushButton(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) {
    const bool flat = option.features.testFlag(QStyleOptionButton::Flat);
    if (flat && !has(option, QStyle::State_HasFocus) && !has(option, QStyle::State_MouseOver) &&
        !has(option, QStyle::State_Sunken))
        return;
    drawBox(painter, option.rect, isInLine(widget) ? inLineBox(option, widget) : pushBox(option, widget));
}

QColor pushButtonInk(const QStyleOptionButton& option, const QWidget* widget) {
    if (isInLine(widget) && has(option, QStyle::State_Enabled))
        return inLineInk(widget);
    return fillOf(option, widget).isValid() ? theme().onFill : inkOf(option);
}

QSize pushButtonSize(const QSize& contents, const QWidget* widget) {
    if (isInLine(widget))
        return {contents.width() + 2 * inLineRoom, qMax(contents.height() + 2, inLineHeight)};
    const bool compact = hasLook(widget, "compact");
    return {contents.width() + 2 * (compact ? compactRoom : pushRoom) + 2,
            qMax(contents.height(), compact ? compactHeight : pushHeight) + 2};
}

void drawToolButtonGround(const QStyleOptionToolButton& option, QPainter& painter) {
    const Theme& colors = theme();
    Box box{{}, {}, strongLine, toolRadius};
    const bool on = has(option, QStyle::State_Enabled);
    if (has(option, QStyle::State_On) || (on && has(option, QStyle::State_Sunken)))
        box.fill = colors.softAccent;
    else if (on && has(option, QStyle::State_MouseOver))
        box.fill = colors.window;
    if (has(option, QStyle::State_HasFocus))
        box.line = colors.accent;
    drawBox(painter, option.rect, box);
}

void drawCheckMark(const QStyleOption& option, QPainter& painter) {
    drawBox(painter, option.rect, markBox(option, checkRadius));
    if (has(option, QStyle::State_On))
        drawTick(painter, option.rect, markInk(option));
    else if (has(option, QStyle::State_NoChange))
        drawDot(painter, option.rect, markInk(option));
}

void drawRadioMark(const QStyleOption& option, QPainter& painter) {
    drawBox(painter, option.rect, markBox(option, option.rect.height() / 2.0));
    if (has(option, QStyle::State_On))
        drawDot(painter, option.rect, markInk(option));
}

void drawGroupBox(const QStyleOptionGroupBox& option, QPainter& painter) {
    drawBox(painter, option.rect, {theme().surface, theme().line, 1, cardRadius});
    QFont font = painter.font();
    font.setWeight(QFont::DemiBold);
    painter.save();
    painter.setFont(font);
    painter.setPen(theme().text);  // says what is off, so it stays
    painter.drawText(groupBoxPart(option, QStyle::SC_GroupBoxLabel),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, option.text);
    painter.restore();
}

QRect groupBoxPart(const QStyleOptionGroupBox& option, QStyle::SubControl part) {
    switch (part) {
    case QStyle::SC_GroupBoxContents:
        return option.rect.marginsRemoved(groupRoom);
    case QStyle::SC_GroupBoxLabel:
        return {option.rect.topLeft() + groupTitle,
                QSize(option.rect.width() - groupTitle.x(), groupRoom.top() - groupTitle.y())};
    case QStyle::SC_GroupBoxFrame:
        return option.rect;
    default:
        return {};
    }
}

}  // namespace platform
