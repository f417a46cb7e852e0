// The document that tells the rest of the program what a mix came to.
#pragma once

#include "mixer/protocol/Messages.h"
#include "platform/xml/XmlDocument.h"

namespace sorvanto {

/// Root "Results" with the mixer's serial number, then one element for each value, all in the attribute
/// "Value": jar and type by name, cycles, "A" for a mix that ran to its end or "U" for one stopped by the
/// user, pre grind, the preparation number in at least four digits, revolutions, hardware version.
platform::XmlDocumentPtr makeResultsDocument(const protocol::Identity& mixer,
                                             const protocol::MixResults& results);

/// Serial number directly followed by the preparation number; no two mixes of any mixer share one.
/// Empty when the document holds none.
QString lotOf(const platform::XmlDocumentPtr& results);

}  // namespace sorvanto
