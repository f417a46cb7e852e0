// An XML document in memory: build, load, save, find by path. Written without declaration,
// indentation or added blanks, so that a stored document is the text that was built.
// Texts and attributes read back as they were set: a line end or tab in an attribute is written as a
// character reference. Characters that XML can't hold (control characters, halves of surrogate pairs)
// become U+FFFD, in paths too, so that no written document is unreadable. Entities of a document type
// definition are never expanded; the definition itself is skipped.
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

/// An element inside a document. An empty node is "nothing"; using one throws objectNotSet.
/// A node keeps alive what it belongs to: after its document has been loaded anew or is gone, it goes on
/// in the old tree, and changes of it no longer concern the document.
class XmlNode {
public:
    XmlNode() = default;
    explicit operator bool() const;

    QString name() const;
    QString text() const;  ///< joined text content
    /// In place of the text that was there. Throws invalidProcedureCall when the node holds elements.
    void setText(const QString& text);
    QString xml() const;  ///< the node's own XML text

    bool hasAttribute(const QString& name) const;
    /// Throws objectNotSet when the attribute is missing.
    QString attribute(const QString& name) const;
    void setAttribute(const QString& name, const QString& value);

    /// Appends a new element (document order) and gives it. Throws invalidProcedureCall when no element
    /// can bear that name.
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

    /// False when the file or text doesn't parse, is no regular file or too large; the document is then empty. Never throws. An XML file in
    /// UTF-8, UTF-16 or Latin-1 with its declaration is read. Line ends in text and comments are kept;
    /// blanks between elements are not. A text without exactly one root element doesn't parse, nor one with
    /// an attribute given twice or with a reference to a character that XML can't hold.
    bool load(const QString& path);
    /// Largest file that is read, in bytes.
    static constexpr qint64 largestFile = 16'000'000;
    /// Why the last load or loadXML gave false, in plain words; empty after one that went well.
    QString problem() const { return m_problem; }
    bool loadXML(const QString& text);
    /// UTF-8, whole or not at all; throws as writeFile does.
    void save(const QString& path) const;
    QString xml() const;

    /// Appends a new element to the document itself (its root). Throws invalidProcedureCall when there is
    /// one already, or when no element can bear that name.
    XmlNode appendElement(const QString& name);
    XmlNode root() const;
    /// From the document: "//Formula/ID", "Results". Nothing when absent; throws statement on a bad path
    /// and on one that leads to anything else than elements.
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
    QString m_problem;
};

/// Text of the node at the path; throws objectNotSet when there is no such node.
QString nodeText(const XmlDocument& document, const QString& path);
/// Attribute "Value" of the node at the path; throws objectNotSet when either is missing.
QString nodeValue(const XmlDocument& document, const QString& path);

}  // namespace platform
