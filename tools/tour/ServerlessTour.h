// A start whose records lie on a server that does not give them.
#pragma once

#include <QString>

namespace tour {

/// Prints what the start says, goes on without records, looks at the health page, the options and the reports, prints every
/// text on show there, and leaves.
void runServerless(const QString& programFolder);

}  // namespace tour
