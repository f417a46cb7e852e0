// A node inside a document: reading, writing, appending, finding.
#include "platform/xml/XmlTree.h"

#include "platform/basic/RuntimeError.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

using namespace xml_text;

const QString nothing = u"XML node is nothing"_s;

void appendText(pugi::xml_node node, std::string& text) {
    if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata)
        text += node.value();
}

}  // namespace

const XmlNode::State& XmlNode::state() const {
    if (!m_state)
        throw RuntimeError(error::objectNotSet, nothing);
    return *m_state;
}

XmlNode::operator bool() const { return m_state != nullptr; }

QString XmlNode::name() const { return fromXml(state().node.name()); }

QString XmlNode::text() const {
    const pugi::xml_node top = state().node;
    std::string result;
    appendText(top, result);
    for (pugi::xml_node node = top.first_child(); node;) {
        appendText(node, result);
        node = following(node, top);
    }
    return fromXml(result);
}

void XmlNode::setText(const QString& text) {
    pugi::xml_node node = state().node;
    for (const pugi::xml_node child : node.children()) {
        if (child.type() == pugi::node_element)
            throw RuntimeError(error::invalidProcedureCall, u"XML element %1 holds elements"_s.arg(name()));
    }
    // Text and comments alone, to which no handle is ever given out.
    node.remove_children();
    if (!text.isEmpty())
        node.append_child(pugi::node_pcdata).set_value(toXml(text).constData());
}

QString XmlNode::xml() const { return printed(state().node); }

bool XmlNode::hasAttribute(const QString& name) const {
    return static_cast<bool>(state().node.attribute(toXml(name).constData()));
}

QString XmlNode::attribute(const QString& name) const {
    const pugi::xml_attribute attribute = state().node.attribute(toXml(name).constData());
    if (!attribute)
        throw RuntimeError(error::objectNotSet, u"XML attribute %1 is missing"_s.arg(name));
    return fromXml(attribute.value());
}

void XmlNode::setAttribute(const QString& name, const QString& value) {
    pugi::xml_node node = state().node;
    const QByteArray key = checkedName(name);
    pugi::xml_attribute attribute = node.attribute(key.constData());
    if (!attribute)
        attribute = node.append_attribute(key.constData());
    attribute.set_value(toXml(value).constData());
}

XmlNode XmlNode::appendElement(const QString& name) {
    pugi::xml_node node = state().node;
    return XmlDocument::nodeOf(m_state->tree, node.append_child(checkedName(name).constData()));
}

XmlNode XmlNode::appendCopy(const XmlNode& node) {
    pugi::xml_node parent = state().node;
    return XmlDocument::nodeOf(m_state->tree, parent.append_copy(node.state().node));
}

XmlNode XmlNode::selectSingleNode(const QString& path) const {
    const auto nodes = select(state().node, path, Wanted::first);
    return nodes.empty() ? XmlNode() : XmlDocument::nodeOf(m_state->tree, nodes.front());
}

}  // namespace platform
