// An XML document in memory: build, load, save, find by path. Written without declaration,
// indentation or added blanks, so that a stored document is the text that was built.
#pragma once

#include <QString>
#include <memory>
#include <vector>

namespace pugi {
class xml_node;
}

namespace platform {

class XmlDocument;
using XmlDocumentPtr = std::shared_ptr<XmlDocument>;

/// A node inside a document; keeps its document alive. An empty node is "nothing".
class XmlNode {
public:
    XmlNode() = default;
    explicit operator bool() const;

    QString name() const;
    QString text() const;             ///< joined text content
    void setText(const QString& text);
    QString xml() const;              ///< the node's own XML text

    bool hasAttribute(const QString& name) const;
    /// Throws objectNotSet when the attribute is missing.
    QString attribute(const QString& name) const;
    void setAttribute(const QString& name, const QString& value);

    /// Appends a new element (document order) and gives it.
    XmlNode appendElement(const QString& name);
    /// Appends a deep copy of a node of any document. Throws objectNotSet when the node is nothing.
    XmlNode appendCopy(const XmlNode& node);

    /// Path relative to this node; nothing when there is none. Throws statement on a bad path.
    XmlNode selectSingleNode(const QString& path) const;

private:
    friend class XmlDocument;
    struct State;
    const State& state() const;  // throws objectNotSet when the node is nothing
    std::shared_ptr<State> m_state;
};

class XmlDocument : public std::enable_shared_from_this<XmlDocument> {
public:
    static XmlDocumentPtr create();
    ~XmlDocument();

    /// False when the file or text doesn't parse; the document is then empty. Never throws. An XML file in
    /// UTF-8, UTF-16 or Latin-1 with its declaration is read. Line ends in text are kept.
    bool load(const QString& path);
    bool loadXML(const QString& text);
    /// UTF-8, whole or not at all; throws as writeFile does.
    void save(const QString& path) const;
    QString xml() const;

    /// Appends a new element to the document itself (its root).
    XmlNode appendElement(const QString& name);
    XmlNode root() const;
    /// From the document: "//Formula/ID", "Results". Nothing when absent; throws statement on a bad path.
    XmlNode selectSingleNode(const QString& path) const;
    std::vector<XmlNode> selectNodes(const QString& path) const;
    /// All elements of that name in document order.
    std::vector<XmlNode> getElementsByTagName(const QString& name) const;
    XmlDocumentPtr cloneDeep() const;

private:
    XmlDocument();
    friend class XmlNode;
    struct Tree;
    static XmlNode nodeOf(const std::shared_ptr<Tree>& tree, const pugi::xml_node& node);
    std::shared_ptr<Tree> m_tree;
};

/// Text of the node at the path; throws objectNotSet when there is no such node.
QString nodeText(const XmlDocument& document, const QString& path);
/// Attribute "Value" of the node at the path; throws objectNotSet when either is missing.
QString nodeValue(const XmlDocument& document, const QString& path);

}  // namespace platform
