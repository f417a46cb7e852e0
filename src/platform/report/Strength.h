// Finds what must not be torn apart in running text: numbers with their units, as in "1000 mcg/ml".
#pragma once

#include <QString>

namespace platform {

/// A part of a text, the end not included; empty where start and end are equal.
struct TextSpan {
    qsizetype start = 0, end = 0;
    bool isEmpty() const { return start == end; }
};

/// From the first to the last strength of a name ("Lidocaine [2% Prilocaine 2.5 %] Cream"); empty without any.
TextSpan strengthOf(const QString& name);

/// Where a text may end that must be shortened to at most so many characters: not within a number nor between
/// a number and its unit.
qsizetype safeEnd(const QString& text, qsizetype most);

}  // namespace platform
