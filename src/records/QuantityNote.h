// What is said beside the question for a chemical's quantity. The answer goes into a statement as it stands;
// the note tells what the statement will store.
#pragma once

#include "platform/ask/Ask.h"

#include <QString>
#include <functional>

namespace sorvanto {

/// The units are asked for when the first note is. "Diclofenac Sodium: 1,25 GMS" for a plain number with a point, in the system's marks; a doubtful note for
/// any other text. Where the system's decimal mark is the comma, a plain number with one comma gets a point.
platform::LineGuide quantityGuide(const QString& chemical, const std::function<QString()>& units);

}  // namespace sorvanto
