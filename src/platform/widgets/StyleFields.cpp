// Boxes that are typed or chosen in: text boxes, memos, choices, up-down boxes.
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Looks.h"
#include "platform/widgets/StyleParts.h"
#include "platform/widgets/Theme.h"

#include <QPainter>
#include <QStyleOption>

namespace platform {

namespace {

constexpr int fieldHeight = 30;  // without its frame
constexpr int sideRoom = 8;      // of a text box, its frame included
constexpr int comboText = 9;
constexpr int comboArrow = 26;
constexpr int spinArrows = 22;

/// Half of the column of arrows of an up-down box.
void drawStepArrow(const QStyleOptionSpinBox& option, QPainter& painter, QStyle::SubControl part,
                   QAbstractSpinBox::StepEnabledFlag step, Qt::ArrowType direction) {
    const QRect place = spinBoxPart(option, part);
    const bool on = has(option, QStyle::State_Enabled) && option.stepEnabled.testFlag(step);
    if (on && option.activeSubControls == part && has(option, QStyle::State_Sunken))
        drawBox(painter, place, {theme().softAccent, {}, 0, 4});
    drawArrow(painter, place, direction, on ? theme().secondaryText : theme().disabledText);
}

}  // namespace

bool isLockedField(const QStyleOption& option, const QWidget* widget) {
    const auto* lockable = dynamic_cast<const Lockable*>(widget);
    return has(option, QStyle::State_ReadOnly) || (lockable && lockable->isReadOnlyBox()) ||
           (widget && widget->property("readOnly").toBool());  // a property of several classes
}

Box fieldBox(const QStyleOption& option, const QWidget* widget, bool locked) {
    const Theme& colors = theme();
    const bool on = has(option, QStyle::State_Enabled);
    Box box{colors.surface, colors.fieldLine};
    if (hasLook(widget, "onBar"))
        box.fill = colors.window;
    if (!on || locked)
        box = {colors.quietField, colors.quietField};
    const QColor marked = hasLook(widget, "invalid")            ? colors.danger
                          : hasLook(widget, "caution")          ? colors.warning
                          : has(option, QStyle::State_HasFocus) ? colors.accent
                                                                : QColor();
    if (on && marked.isValid()) {
        box.line = marked;
        box.width = strongLine;
    }
    return box;
}

QSize textBoxSize(const QSize& contents) {
    return {contents.width() + 2 * sideRoom, qMax(contents.height(), fieldHeight) + 2};
}

QRect textBoxContents(const QRect& place) { return place.adjusted(sideRoom, 1, -sideRoom, -1); }

// Choices

void drawCombo(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) {
    const bool locked = isLockedField(option, widget);
    drawBox(painter, option.rect, fieldBox(option, widget, locked));
    if (!locked)
        drawArrow(painter, comboPart(option, QStyle::SC_ComboBoxArrow, widget), Qt::DownArrow,
                  has(option, QStyle::State_Enabled) ? theme().secondaryText : theme().disabledText);
}

QRect comboPart(const QStyleOptionComboBox& option, QStyle::SubControl part, const QWidget* widget) {
    const QRect& all = option.rect;
    const int arrow = isLockedField(option, widget) ? comboText : comboArrow;
    if (part == QStyle::SC_ComboBoxArrow)
        return {all.right() - comboArrow, all.top(), comboArrow, all.height()};
    if (part == QStyle::SC_ComboBoxEditField)
        return all.adjusted(option.editable ? sideRoom : comboText, 1, -arrow - 1, -1);
    return all;
}

QSize comboSize(const QSize& contents) {
    return {contents.width() + comboText + comboArrow + 3, qMax(contents.height(), fieldHeight) + 2};
}

// Up-down boxes

void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) {
    drawBox(painter, option.rect, fieldBox(option, widget, isLockedField(option, widget)));
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons)
        return;
    drawStepArrow(option, painter, QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, Qt::UpArrow);
    drawStepArrow(option, painter, QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, Qt::DownArrow);
}

QRect spinBoxPart(const QStyleOptionSpinBox& option, QStyle::SubControl part) {
    const QRect& all = option.rect;
    const int arrows = option.buttonSymbols == QAbstractSpinBox::NoButtons ? 0 : spinArrows;
    const QRect column(all.right() - arrows - 2, all.top() + 3, arrows, all.height() - 6);
    switch (part) {
    case QStyle::SC_SpinBoxUp:
        return column.adjusted(0, 0, 0, -column.height() / 2);
    case QStyle::SC_SpinBoxDown:
        return column.adjusted(0, column.height() - column.height() / 2, 0, 0);
    case QStyle::SC_SpinBoxEditField:
        return textBoxContents(all).adjusted(0, 0, -arrows, 0);
    default:
        return all;
    }
}

QSize spinBoxSize(const QSize& contents) {
    return {contents.width() + 2 * sideRoom + spinArrows, qMax(contents.height(), fieldHeight) + 2};
}

}  // namespace platform
