// Finding words in texts without regard to case and accents, and in the whole manual.
#pragma once

#include "manual/Manual.h"

#include <vector>

namespace sorvanto {

/// A stretch of a text.
struct TextStretch {
    qsizetype start = 0, length = 0;
};

/// Where the words stand in the text, in its order; they may be parts of longer words.
std::vector<TextStretch> stretchesOf(const QStringList& foldedWords, const QString& text);

/// A section that has all the words.
struct ManualHit {
    QString page;  ///< name of its file
    int section = 0;
    QString title, heading;  ///< of the page and of the section
    QString context;         ///< the text around the first word; empty when only the heading has it
};

/// Sections whose headings have all the words come first, then by reading order. Without words there are none.
std::vector<ManualHit> searchManual(const Manual& manual, const QString& words);

}  // namespace sorvanto
