// Reads a number as a person types or pastes it.
// A mark that can be meant in two ways is never guessed at.
#pragma once

#include <QLocale>
#include <QString>

namespace platform {

struct TypedNumber {
    enum class Kind {
        Empty,
        Number,
        Incomplete,  ///< may become a number with the next key: "-", "1," before two more digits
        Ambiguous,   ///< can be read in two ways: "1.234" where the point groups thousands
        NotANumber,
    };
    Kind kind = Kind::Empty;
    QString number;    ///< digits with a point and a sign, no groups; for Kind::Number only
    int decimals = 0;  ///< digits typed behind the decimal mark
};

/// Takes the locale's decimal mark and the point as decimal mark, and the locale's group mark where it
/// stands between groups of three. Blanks around the number don't matter.
TypedNumber readTypedNumber(const QString& text, const QLocale& locale);

}  // namespace platform
