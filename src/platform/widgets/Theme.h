// The one place of colors and spacings; light and dark by the desktop's choice.
// Widgets get a special look by a dynamic property, settable here or in a .ui file:
//   card        a frame: surface, one-pixel line, rounded corners
//   fieldLabel  a label beside a field: secondary color, right-aligned
//   heading     a label in semi-bold
//   quiet       a label in small secondary text
//   badge       a label as a small filled mark in the warning color
//   caution     a text box or a label in the warning color: allowed, but to be looked at
//   danger      a push button that stops or destroys
//   inLine      a push button that stands among small texts, without a frame
//   primary     a push button for the main action of a window
//   bare        a tool bar without any frame of its own
//   compact     a push button of less height, beside small texts
//   dense       a table in small type, its header as well: less room beside the texts
//   fine        a label in the smallest type
//   onBar       a text box on a bar: in the color of the window
//   panel       what comes up over a window: surface, one-pixel line, square corners
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;
class QWidget;

namespace platform {

struct Theme {
    QColor window, surface, line, text, secondaryText, accent, softAccent, alternateRow, good, warning,
        danger;
    /// Text on a fill of accent, good, warning or danger.
    QColor onFill;
    /// Ground of a field that can't be edited.
    QColor quietField;
    /// Frame of a field that can be edited: at least 3:1 against window and surface, so that it is seen.
    QColor fieldLine;
    /// Texts and pictures of what is off.
    QColor disabledText;
    bool dark = false;
};

/// The theme in force.
const Theme& theme();
/// The two themes as designed, whichever is in force.
const Theme& themeOf(bool dark);
/// Light or dark by the desktop's own colors.
void applyTheme(QApplication& application);
void applyTheme(QApplication& application, bool dark);
/// A picture of our own set ("first", "save", "chemicals" ...), drawn in the text color, grey when off,
/// accent when checked. An unknown name gives an empty icon.
QIcon icon(const QString& name);
/// The same in a color of choice.
QIcon icon(const QString& name, const QColor& color);
/// The program's own icon.
QIcon applicationIcon();

/// The 8-pixel grid.
inline constexpr int grid = 8;

/// Makes a frame a card: surface, one-pixel line, rounded corners.
void makeCard(QWidget& frame);
/// Makes a widget a bar at the edge of something: surface, with a line at one edge; in the warning color when
/// it has the look "caution" as well.
void makeBar(QWidget& widget, Qt::Edge line);
/// Makes a widget a line across, one pixel high; another size is set afterwards.
void makeRule(QWidget& line);
/// Secondary text color, right-aligned label of a field.
void makeFieldLabel(QWidget& label);
/// Sets one of the dynamic properties above and draws the widget anew.
void setLook(QWidget& widget, const char* property, bool on = true);

}  // namespace platform
