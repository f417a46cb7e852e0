// What the cards above a record have in common: a sign, a text, what the user can do, and a cross at the end.
#pragma once

class QFrame;
class QHBoxLayout;
class QLabel;
class QToolButton;

namespace sorvanto {

struct CardParts {
    QLabel* sign;
    QLabel* text;  ///< shown as plain text, in several lines where it has to be
    QToolButton* close;
};

/// Puts the parts into the card, which stays hidden. What the user can do goes to afterText of the row that it gives.
QHBoxLayout* layOutCard(QFrame& card, const CardParts& parts);
constexpr int afterText = 2;

/// Names the cross in the language of the program.
void nameClose(QToolButton& close);

}  // namespace sorvanto
