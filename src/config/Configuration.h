// The tree of a new options.xml with its defaults.
#pragma once

namespace platform {
class XmlDocument;
}

namespace sorvanto {

/// Fills the empty document; in the midst of it the language wizard asks its question.
void buildConfiguration(platform::XmlDocument& document);

}  // namespace sorvanto
