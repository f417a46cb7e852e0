// An XML document in memory: build, load, save, find by path.
#include "platform/xml/XmlDocument.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/xml/XmlChecks.h"
#include "platform/xml/XmlTree.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

using namespace xml_text;

/// What is kept: comments, blanks that are all an element holds, line ends as they are, and text beside
/// the root, so that it can be refused. Entities beyond the five of XML stay unexpanded; a document type
/// declaration is skipped.
constexpr unsigned int parseOptions = (pugi::parse_default | pugi::parse_comments | pugi::parse_pi |
                                       pugi::parse_ws_pcdata_single | pugi::parse_fragment) &
                                      ~pugi::parse_eol;

/// The encoding that the first line declares, UTF-8 when it declares none.
QByteArray declaredEncoding(const QByteArray& content) {
    static const QRegularExpression declaration(
        u"^<\\?xml\\s[^>]*encoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']"_s);
    constexpr qsizetype longest = 200;
    const auto match = declaration.match(QString::fromLatin1(content.left(longest)));
    return match.hasMatch() ? match.captured(1).toLatin1() : "UTF-8"_ba;
}

std::optional<QString> decoded(const QByteArray& content) {
    QStringDecoder decoder;
    if (const auto unicode = QStringConverter::encodingForData(content, u'<'))
        decoder = QStringDecoder(*unicode);
    else
        decoder = QStringDecoder(declaredEncoding(content).constData());
    if (!decoder.isValid())
        return std::nullopt;
    const QString text = decoder.decode(content);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

/// One root element and no text beside it.
bool hasOneRoot(const pugi::xml_document& document) {
    int roots = 0;
    for (const pugi::xml_node node : document.children()) {
        if (node.type() == pugi::node_element)
            ++roots;
        else if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata)
            return false;
    }
    return roots == 1;
}

}  // namespace

XmlDocument::XmlDocument() : m_tree(std::make_shared<Tree>()) {}
XmlDocument::~XmlDocument() = default;

XmlDocumentPtr XmlDocument::create() { return XmlDocumentPtr(new XmlDocument()); }

bool XmlDocument::load(const QString& path) {
    m_tree = std::make_shared<Tree>();
    try {
        if (const auto text = decoded(readFile(path, largestFile)))
            return loadXML(*text);
        m_problem = u"its characters can't be read"_s;
    } catch (const RuntimeError& failure) {
        m_problem = failure.description();
    }
    return false;
}

bool XmlDocument::loadXML(const QString& text) {
    m_tree = std::make_shared<Tree>();
    m_problem = u"it holds characters that XML can't hold"_s;
    if (!isClean(text))
        return false;
    const QByteArray content = text.toUtf8();
    const auto parsed = m_tree->document.load_buffer(
        content.constData(), static_cast<std::size_t>(content.size()), parseOptions, pugi::encoding_utf8);
    if (parsed && hasOneRoot(m_tree->document) && hasGoodNames(m_tree->document) &&
        hasGoodReferences(content, parseOptions)) {
        m_problem.clear();
        return true;
    }
    m_problem = parsed ? u"it is no whole XML document"_s
                       : u"line %1: %2"_s.arg(content.left(parsed.offset).count('\n') + 1)
                             .arg(QLatin1String(parsed.description()));
    m_tree = std::make_shared<Tree>();
    return false;
}

void XmlDocument::save(const QString& path) const { writeFile(path, xml().toUtf8()); }

QString XmlDocument::xml() const { return printed(m_tree->document); }

XmlNode XmlDocument::nodeOf(const std::shared_ptr<Tree>& tree, const pugi::xml_node& node) {
    XmlNode result;
    if (node)
        result.m_state = std::make_shared<XmlNode::State>(XmlNode::State{tree, node});
    return result;
}

XmlNode XmlDocument::appendElement(const QString& name) {
    const QByteArray checked = checkedName(name);
    if (m_tree->document.document_element())
        throw RuntimeError(error::invalidProcedureCall, u"The XML document has a root already"_s);
    return nodeOf(m_tree, m_tree->document.append_child(checked.constData()));
}

XmlNode XmlDocument::root() const { return nodeOf(m_tree, m_tree->document.document_element()); }

XmlNode XmlDocument::selectSingleNode(const QString& path) const {
    const auto nodes = select(m_tree->document, path, Wanted::first);
    return nodes.empty() ? XmlNode() : nodeOf(m_tree, nodes.front());
}

std::vector<XmlNode> XmlDocument::selectNodes(const QString& path) const {
    std::vector<XmlNode> result;
    for (const pugi::xml_node& node : select(m_tree->document, path, Wanted::all))
        result.push_back(nodeOf(m_tree, node));
    return result;
}

std::vector<XmlNode> XmlDocument::getElementsByTagName(const QString& name) const {
    const QByteArray wanted = name.toUtf8();
    const pugi::xml_node top = m_tree->document;
    std::vector<XmlNode> result;
    for (pugi::xml_node node = top.first_child(); node; node = following(node, top)) {
        if (node.type() == pugi::node_element && wanted == node.name())
            result.push_back(nodeOf(m_tree, node));
    }
    return result;
}

XmlDocumentPtr XmlDocument::cloneDeep() const {
    const XmlDocumentPtr copy = create();
    copy->m_tree->document.reset(m_tree->document);
    return copy;
}

QString nodeText(const XmlDocument& document, const QString& path) {
    const XmlNode node = document.selectSingleNode(path);
    if (!node)
        throw RuntimeError(error::objectNotSet, u"XML node %1 is missing"_s.arg(path));
    return node.text();
}

QString nodeValue(const XmlDocument& document, const QString& path) {
    const XmlNode node = document.selectSingleNode(path);
    if (!node)
        throw RuntimeError(error::objectNotSet, u"XML node %1 is missing"_s.arg(path));
    return node.attribute(u"Value"_s);
}

}  // namespace platform
