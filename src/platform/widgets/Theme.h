// The one place of colours, spacings and the style sheet; light and dark by the desktop's choice.
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;
class QWidget;

namespace platform {

struct Theme {
    QColor window, surface, line, text, secondaryText, accent, softAccent, alternateRow, good, warning, danger;
    bool dark = false;
};

/// The theme in force.
const Theme& theme();
/// Light or dark by the desktop; the environment of tests may force one.
void applyTheme(QApplication& application);
void applyTheme(QApplication& application, bool dark);

/// A picture of our own set ("first", "save", "chemical" ...), drawn in the text colour, grey when off.
QIcon icon(const QString& name);

/// The 8-pixel grid.
inline constexpr int grid = 8;

/// Makes a frame a card: surface, one-pixel line, rounded corners.
void makeCard(QWidget& frame);
/// Secondary text colour, right-aligned label of a field.
void makeFieldLabel(QWidget& label);

}  // namespace platform
