// The parts of the look by kind of widget. Rectangles and sizes are in device-independent pixels.
#pragma once

#include "platform/widgets/StyleShapes.h"

#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionGroupBox;
class QStyleOptionHeader;
class QStyleOptionMenuItem;
class QStyleOptionProgressBar;
class QStyleOptionSlider;
class QStyleOptionSpinBox;
class QStyleOptionTab;
class QStyleOptionToolButton;
class QStyleOptionViewItem;
class QWidget;

namespace platform {

inline constexpr qreal strongLine = 2;  ///< of what is reached or chosen

bool has(const QStyleOption& option, QStyle::StateFlag flag);

/// The color of a text or picture of a widget: grey when it is off.
QColor inkOf(const QStyleOption& option);

// Boxes that are typed or chosen in.

/// Ground and frame by the state of the field: editable, locked, off, refused, doubtful, reached.
Box fieldBox(const QStyleOption& option, const QWidget* widget, bool locked);
bool isLockedField(const QStyleOption& option, const QWidget* widget);
QSize textBoxSize(const QSize& contents);
QRect textBoxContents(const QRect& place);
void drawCombo(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget);
QRect comboPart(const QStyleOptionComboBox& option, QStyle::SubControl part, const QWidget* widget);
QSize comboSize(const QSize& contents);
void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget);
QRect spinBoxPart(const QStyleOptionSpinBox& option, QStyle::SubControl part);
QSize spinBoxSize(const QSize& contents);

// Buttons.

void drawPushButton(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget);
/// Of the caption on its ground.
QColor pushButtonInk(const QStyleOptionButton& option, const QWidget* widget);
QSize pushButtonSize(const QSize& contents, const QWidget* widget);
void drawToolButtonGround(const QStyleOptionToolButton& option, QPainter& painter);
void drawCheckMark(const QStyleOption& option, QPainter& painter);
void drawRadioMark(const QStyleOption& option, QPainter& painter);
void drawGroupBox(const QStyleOptionGroupBox& option, QPainter& painter);
QRect groupBoxPart(const QStyleOptionGroupBox& option, QStyle::SubControl part);

// Menus, bars and tabs.

void drawMenuBarItem(const QStyleOptionMenuItem& option, QPainter& painter);
void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter);
QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& contents);
void drawToolBarLine(const QStyleOption& option, QPainter& painter);
void drawTabShape(const QStyleOptionTab& option, QPainter& painter);
void drawTabLabel(const QStyleOptionTab& option, QPainter& painter);

// Lists, tables, scroll bars, progress.

/// Pixels that a heading has for the arrow of the order.
inline constexpr int arrowRoom = 20;
/// Room for the caption, its margins and the arrow of the order.
QSize headerSize(const QStyleOptionHeader& option, const QWidget* widget);
void drawHeader(const QStyleOptionHeader& option, QPainter& painter, const QWidget* widget);
void drawHeaderSection(const QStyleOption& option, QPainter& painter);
void drawItemGround(const QStyleOptionViewItem& option, QPainter& painter, const QWidget* widget);
void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter, const QRect& handle);
/// The empty rectangle where the base style is to say.
QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part);
void drawProgress(const QStyleOptionProgressBar& option, QPainter& painter, const QWidget* widget);

}  // namespace platform
