// The one place of colors, spacings and the style sheet; light and dark by the desktop's choice.
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
/// The same in two steps for the start of the program: all but the style sheet, then the style sheet, before
/// the first window shows. With a sheet in force each widget is styled anew whenever it gets a parent,
/// so that windows made between the two steps are made in half the time.
void prepareTheme(QApplication& application);
/// Does nothing when the style sheet is in force, or when no theme has been prepared.
void finishTheme();

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
/// Secondary text color, right-aligned label of a field.
void makeFieldLabel(QWidget& label);
/// Sets one of the dynamic properties above and draws the widget anew.
void setLook(QWidget& widget, const char* property, bool on = true);

}  // namespace platform
