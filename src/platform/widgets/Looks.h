// Looks that a widget gets beside those of its kind, by a dynamic property; what each property means stands
// in Theme.h.
#pragma once

#include <QMargins>
#include <Qt>

class QPainter;
class QWidget;

namespace platform {

/// Whether the widget has that look; none without a widget.
bool hasLook(const QWidget* widget, const char* property);
/// Whether the widget is a box of several lines to type or read in; a page to be read is none.
bool isTextBox(const QWidget* widget);
/// Whether a push button stands among small texts: on the status bar, or by its look.
bool isInLine(const QWidget* button);
/// What the looks take of a widget's room at each edge.
QMargins roomOfLooks(const QWidget& widget);
/// Ground and lines of a card, a panel, a bar, a badge.
void drawLooks(QPainter& painter, const QWidget& widget);
/// Font, colors and sizes of a widget by its kind and its looks; called when the style takes it over.
void dress(QWidget& widget);

}  // namespace platform
