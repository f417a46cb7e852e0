// Reads a number as a person types or pastes it.
// A mark that can be meant in two ways is never guessed at.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace platform {

struct TypedNumber {
    enum class Kind {
        Empty,
        Number,
        Incomplete,  ///< may become a number with the next key: "-", "1," before two more digits
        Ambiguous,   ///< can be read in two ways: "1.234" where the decimal mark is the comma
        NotANumber,
    };
    Kind kind = Kind::Empty;
    QString number;    ///< digits with a point and a sign, no groups; for Kind::Number only
    int decimals = 0;  ///< digits typed behind the decimal mark
    /// For Kind::Ambiguous, where they can be told: what it may mean, with a point ("1250", "1.25").
    QStringList readings{};
};

/// The locale's decimal mark is always one; a single point or comma that is not reads as one unless exactly
/// three digits follow, which is ambiguous. The locale's group mark and the blanks U+0020, U+00A0, U+202F
/// and U+2009 group digits by three, one kind of them in a number. Tabs, line ends and any other blank inside
/// are no part of a number; around it they don't matter.
TypedNumber readTypedNumber(const QString& text, const QLocale& locale);

/// Whether two numbers with a point have the same digits and differ by a factor of 10, 100 or 1000.
bool differByTens(const QString& one, const QString& other);

}  // namespace platform
