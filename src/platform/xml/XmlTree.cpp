// Inside of the XML classes: the small rules of text, names, output and paths.
#include "platform/xml/XmlTree.h"

#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace platform::xml_text {
namespace {

constexpr char32_t replacement = 0xFFFD;

struct TextWriter final : pugi::xml_writer {
    QByteArray text;
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
    }
};

/// Whether all is allowed and none is half a character. Without a way out of its loop, so that several signs are
/// looked at in one.
bool isPlain(QStringView text) {
    const char16_t* const marks = text.utf16();
    std::uint16_t odd = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const std::uint16_t mark = marks[at];
        const bool control = (mark < u' ') & (mark != u'\t') & (mark != u'\n') & (mark != u'\r');
        odd = static_cast<std::uint16_t>(odd | static_cast<std::uint16_t>(control | (mark >= 0xD800)));
    }
    return odd == 0;
}

}  // namespace

bool isAllowed(char32_t mark) {
    if (mark < 0x20)
        return mark == u'\t' || mark == u'\n' || mark == u'\r';
    return mark < 0xD800 || (mark > 0xDFFF && mark < 0xFFFE) || (mark > 0xFFFF && mark <= 0x10FFFF);
}

bool isClean(const QString& text) {
    if (isPlain(text))
        return true;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar mark = text.at(at);
        if (mark >= u' ' && mark < u'\xD800')
            continue;
        if (mark.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate())
            ++at;
        else if (!isAllowed(mark.unicode()))
            return false;
    }
    return true;
}

QByteArray toXml(const QString& text) {
    if (isClean(text))
        return text.toUtf8();
    QList<uint> marks = text.toUcs4();
    for (uint& mark : marks) {
        if (!isAllowed(mark))
            mark = replacement;
    }
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(marks.constData()), marks.size()).toUtf8();
}

// A byte order mark at the start of a text is a character of it; the plain conversion would swallow it.
QString fromXml(QByteArrayView text) {
    constexpr QByteArrayView mark("\xEF\xBB\xBF");
    qsizetype marks = 0;
    while (text.sliced(marks * mark.size()).startsWith(mark))
        ++marks;
    if (marks == 0)
        return QString::fromUtf8(text);
    return QString(marks, QChar::ByteOrderMark) + QString::fromUtf8(text.sliced(marks * mark.size()));
}
QString fromXml(const char* text) { return fromXml(QByteArrayView(text)); }
QString fromXml(const std::string& text) {
    return fromXml(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
}

bool isXmlName(const QString& name) {
    const auto begins = [](QChar mark) { return mark.isLetter() || mark == u'_' || mark == u':'; };
    bool good = !name.isEmpty() && begins(name.at(0));
    for (const QChar mark : name)
        good = good && (begins(mark) || mark.isDigit() || mark == u'-' || mark == u'.');
    return good;
}

QByteArray checkedName(const QString& name) {
    if (!isXmlName(name))
        throw RuntimeError(error::invalidProcedureCall, u"No XML name: \"%1\""_s.arg(name));
    return name.toUtf8();
}

QString printed(const pugi::xml_node& node) {
    TextWriter writer;
    constexpr unsigned int raw = pugi::format_raw | pugi::format_no_declaration;
    if (node.type() == pugi::node_document) {
        for (const pugi::xml_node child : node.children())
            child.print(writer, "", raw, pugi::encoding_utf8);
    } else {
        node.print(writer, "", raw, pugi::encoding_utf8);
    }
    return QString::fromUtf8(writer.text);
}

pugi::xml_node following(pugi::xml_node node, const pugi::xml_node& top) {
    if (node.first_child())
        return node.first_child();
    while (node && node != top && !node.next_sibling())
        node = node.parent();
    return node == top ? pugi::xml_node() : node.next_sibling();
}

std::vector<pugi::xml_node> select(const pugi::xml_node& from, const QString& path, Wanted wanted) {
    const auto refuse = [&](const QString& reason) {
        throw RuntimeError(error::statement, u"XML path: %1"_s.arg(reason), {}, path);
    };
    std::vector<pugi::xml_node> result;
    try {
        const pugi::xpath_query query(toXml(path).constData());
        pugi::xpath_node_set found = query.evaluate_node_set(from);
        if (wanted == Wanted::all)
            found.sort();
        const auto take = [&](const pugi::xpath_node& node) {
            if (node.node().type() != pugi::node_element)
                refuse(u"names something else than elements"_s);
            result.push_back(node.node());
        };
        if (wanted == Wanted::first && !found.empty())
            take(found.first());
        if (wanted == Wanted::all) {
            for (const pugi::xpath_node& node : found)
                take(node);
        }
    } catch (const pugi::xpath_exception& failure) {
        refuse(QString::fromUtf8(failure.what()));
    }
    return result;
}

}  // namespace platform::xml_text
