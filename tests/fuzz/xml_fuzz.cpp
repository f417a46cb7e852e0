// Feeds any bytes as a file to the XML document. What is read can be written, is well formed then, and reads
// back as the same elements, texts and attributes; a strict reader, where it takes the file, sees the same.
#include "Fuzz.h"

#include "platform/xml/XmlDocument.h"

#include <QRegularExpression>
#include <QXmlStreamReader>
#include <algorithm>

using namespace Qt::StringLiterals;

using fuzz::require;
using platform::XmlDocument;
using platform::XmlDocumentPtr;
using platform::XmlNode;

namespace {

/// Without what XML lets a reader change: blanks, and the writing of line ends.
QString essence(QString text) {
    text.removeIf([](QChar mark) { return mark == u' ' || mark == u'\t' || mark == u'\n' || mark == u'\r'; });
    return text;
}

/// Whether the strict reader may know fewer names than the document does: of letters added to Unicode later,
/// with colons in places of no use.
bool hasRareNames(const QString& text) {
    static const QRegularExpression colon(u"[<\\s?][^\\s\"'=<>]*:"_s);
    return text.contains(colon) ||
           std::any_of(text.begin(), text.end(), [](QChar mark) { return mark.unicode() > 0xFF; });
}

/// Whether a strict reader takes the text; if so, it sees what the document holds.
bool readsAlike(const QString& text, const XmlDocument& document) {
    QXmlStreamReader strict(text);
    strict.setNamespaceProcessing(false);
    while (!strict.atEnd())
        strict.readNext();
    if (strict.hasError())
        return false;

    strict.clear();
    strict.addData(text);
    strict.setNamespaceProcessing(false);
    const std::vector<XmlNode> elements = document.selectNodes(u"//*"_s);
    std::size_t at = 0;
    QString characters;
    while (!strict.atEnd()) {
        strict.readNext();
        if (strict.isCharacters())
            characters += strict.text();
        if (!strict.isStartElement())
            continue;
        require(at < elements.size(), "no element is lost");
        const XmlNode& element = elements[at++];
        require(element.name() == strict.qualifiedName(), "each element has its name");
        for (const QXmlStreamAttribute& attribute : strict.attributes()) {
            const QString name = attribute.qualifiedName().toString();
            require(essence(element.attribute(name)) == essence(attribute.value().toString()),
                    "each attribute has its value");
        }
    }
    require(at == elements.size(), "no element is added");
    require(essence(document.root().text()) == essence(characters), "no character is lost or added");
    return true;
}

void tryFile(const fuzz::Folder& folder, const QByteArray& content) {
    const QString path = folder.path(u"any.xml"_s);
    folder.write(u"any.xml"_s, content);
    const XmlDocumentPtr document = XmlDocument::create();
    if (!document->load(path)) {
        require(!document->root() && document->xml().isEmpty(), "what doesn't parse leaves nothing");
        return;
    }
    const QString text = QString::fromUtf8(content);
    const bool isPlain =
        content.startsWith('<') && !content.contains("<!DOCTYPE") && !content.contains("encoding");
    if (isPlain && text.toUtf8() == content)
        readsAlike(text, *document);

    document->save(path);
    const XmlDocumentPtr again = XmlDocument::create();
    require(again->load(path), "what was written can be read");
    require(readsAlike(again->xml(), *document) || hasRareNames(again->xml()),
            "what was written is well formed");
    const XmlDocumentPtr third = XmlDocument::create();
    require(third->loadXML(again->xml()) && third->xml() == again->xml(), "writing again changes nothing");
    require(document->cloneDeep()->xml() == document->xml(), "a copy is the same");
}

/// A text that XML can hold comes back to the letter, as text and as attribute.
void tryText(const QString& text) {
    const XmlDocumentPtr document = XmlDocument::create();
    XmlNode root = document->appendElement(u"T"_s);
    root.appendElement(u"E"_s).setText(text);
    root.setAttribute(u"A"_s, text);
    const XmlDocumentPtr again = XmlDocument::create();
    require(again->loadXML(document->xml()), "what was built can be read");
    const QString read = again->selectSingleNode(u"T/E"_s).text();
    require(read == again->root().attribute(u"A"_s), "text and attribute are the same");
    require(read == document->selectSingleNode(u"T/E"_s).text(), "what was set is what is read");
    require(read == text || read.contains(QChar(0xFFFD)), "only what XML can't hold is replaced");
    require(readsAlike(document->xml(), *document), "what was built is well formed");
}

void tryPath(const QString& path) {
    static const XmlDocumentPtr document = [] {
        const XmlDocumentPtr built = XmlDocument::create();
        built->loadXML(u"<Formula><ID>7</ID><CustomMix><Mix Cycles=\"1\"/></CustomMix></Formula>"_s);
        return built;
    }();
    fuzz::succeeds({platform::error::statement}, [&] {
        const std::vector<XmlNode> all = document->selectNodes(path);
        const XmlNode first = document->selectSingleNode(path);
        require(static_cast<bool>(first) == !all.empty(), "one is found when any is");
        require(!first || first.xml() == all.front().xml(), "the first is the first in the document");
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Folder folder;
    const QByteArray content = fuzz::bytes(data, size);
    tryFile(folder, content);
    const QString text = QString::fromUtf8(content);
    tryText(text);
    constexpr qsizetype longestPath = 40;
    if (text.size() <= longestPath)
        tryPath(text);
    return 0;
}
