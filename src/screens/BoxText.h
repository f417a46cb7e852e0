// What a box shows as a text that can be kept, and typed back later.
#pragma once

#include <QString>

class QWidget;

namespace sorvanto {

/// Of a text, number, memo, date or choice box, of a list (a line a row, cells divided by tabs) or a label.
/// A number stands in the user's own marks; what can't be read as one stands as it was typed.
QString boxText(const QWidget& box);
/// As if the user had typed or chosen it: the box judges it as it judges typing.
void typeIntoBox(QWidget& box, const QString& text);

}  // namespace sorvanto
