// Small text rules that the statements and documents rest on.
#pragma once

#include <QString>

namespace platform {

/// Takes off blanks (U+0020) at both ends, and nothing else: tabs and line ends stay.
QString trimmed(const QString& text);

/// Every apostrophe twice, as a quoted text in a statement needs it.
QString doubledApostrophes(const QString& text);

}  // namespace platform
