// Inside of the XML classes: the tree that nodes keep alive, and the small rules of text and paths.
// Included by the .cpp files of this folder alone.
#pragma once

#include "platform/xml/XmlDocument.h"

#include <QByteArray>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace platform {

struct XmlDocument::Tree {
    pugi::xml_document document;
};

struct XmlNode::State {
    std::shared_ptr<XmlDocument::Tree> tree;
    pugi::xml_node node;
};

namespace xml_text {

/// UTF-8 of a text; characters that XML can't hold come out as U+FFFD.
QByteArray toXml(const QString& text);
QString fromXml(const char* text);
QString fromXml(const std::string& text);

/// The name as UTF-8. Throws invalidProcedureCall when no element or attribute can be called so.
QByteArray checkedName(const QString& name);

/// Whether an element or attribute can be called so.
bool isXmlName(const QString& name);

/// Whether XML allows the character.
bool isAllowed(char32_t mark);
/// Whether the text holds nothing but characters that XML allows.
bool isClean(const QString& text);

/// XML text without declaration, indentation or added blanks.
QString printed(const pugi::xml_node& node);

/// The node behind this one in document order, not leaving `top`; empty at the end.
pugi::xml_node following(pugi::xml_node node, const pugi::xml_node& top);

enum class Wanted { first, all };
/// Elements at the path in document order. Throws statement on a path that is none, or that leads to
/// anything else (a text, a number, an attribute).
std::vector<pugi::xml_node> select(const pugi::xml_node& from, const QString& path, Wanted wanted);

}  // namespace xml_text
}  // namespace platform
