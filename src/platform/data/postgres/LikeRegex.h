// A pattern of Like as a regular expression of the server. The server folds the case of English letters alone, so each
// character stands there as all those that fold to it: what LikePattern takes for equal.
#pragma once

#include <QString>

namespace platform::postgres {

/// Matches a whole text, or nothing of it. Throws statement where a set of the pattern is not closed.
QString likeRegex(const QString& pattern);

}  // namespace platform::postgres
