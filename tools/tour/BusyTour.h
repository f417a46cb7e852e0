// A mix that ends while the user is in the midst of something: a list, a question, a half-typed note.
#pragma once

#include <QString>

namespace tour {

/// scene: "list", "delete" or "note". Requires that what the user was at comes to its own end, and that the
/// mix is signed afterwards.
void runBusy(const QString& programFolder, const QString& scene);

}  // namespace tour
