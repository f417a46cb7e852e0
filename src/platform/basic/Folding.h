// Texts made alike for finding: what a person takes for the same word compares equal.
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Without case and accents; marks that look alike (’ and ', no-break blanks and hyphens) are one.
QString folded(const QString& text);

/// The folded words that stand between blanks.
QStringList foldedWords(const QString& text);

}  // namespace platform
