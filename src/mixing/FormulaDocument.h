// Reads the nodes of a formula document as the mixer hands it back.
#pragma once

#include "platform/xml/XmlDocument.h"

#include <cstdint>

namespace sorvanto {

/// "//Formula/ID" as a key; 0 when the node or the document is absent. Throws on a text that is no number.
std::int16_t formulaDocumentID(const platform::XmlDocumentPtr& document);

/// A node below "//Formula" ("Type", "Make", "Size") as a 16-bit number; throws when it is missing.
std::int16_t formulaDocumentNumber(const platform::XmlDocument& document, const QString& node);

}  // namespace sorvanto
