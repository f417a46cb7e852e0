// What the parser lets pass though no XML document may hold it. Such a text would read as a guess: a
// quantity cut off behind a null character, one of two values of the same attribute.
// Included by the .cpp files of this folder alone.
#pragma once

#include <QByteArray>
#include <pugixml.hpp>

namespace platform::xml_text {

/// Whether all names are names and no element has an attribute twice.
bool hasGoodNames(const pugi::xml_document& document);

/// Whether each character reference of the text (UTF-8, parsed with these options) means a character that
/// XML allows.
bool hasGoodReferences(const QByteArray& content, unsigned int parseOptions);

}  // namespace platform::xml_text
