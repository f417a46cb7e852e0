// Names, attributes and character references of a document that was read.
#include "platform/xml/XmlChecks.h"

#include "platform/xml/XmlTree.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace platform::xml_text {
namespace {

constexpr std::size_t fewAttributes = 4;  // as many as an element mostly has

bool isName(const char* name) {
    const std::string_view text(name);
    const auto isLatin = [](char mark) {
        return (mark >= 'A' && mark <= 'Z') || (mark >= 'a' && mark <= 'z');
    };
    if (std::all_of(text.begin(), text.end(), isLatin))
        return !text.empty();
    return isXmlName(QString::fromUtf8(name));
}

bool hasGoodAttributes(const pugi::xml_node& node) {
    std::vector<std::string_view> names;
    names.reserve(fewAttributes);
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (!isName(attribute.name()))
            return false;
        names.emplace_back(attribute.name());
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) == names.end();
}

int digitValue(char mark, int base) {
    if (mark >= '0' && mark <= '9')
        return mark - '0';
    const char letter = static_cast<char>(mark | 0x20);
    return base == 16 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// The text with its references as they were written.
bool refersWell(std::string_view text) {
    for (auto at = text.find("&#"); at != std::string_view::npos; at = text.find("&#", at + 2)) {
        const int base = at + 2 < text.size() && text[at + 2] == 'x' ? 16 : 10;
        const auto first = at + (base == 16 ? 3 : 2);
        auto end = first;
        int mark = 0;
        constexpr int beyond = 0x110000;  // the first number that is no character
        for (; end < text.size() && digitValue(text[end], base) >= 0; ++end)
            mark = std::min(beyond, mark * base + digitValue(text[end], base));
        const bool isReference = end > first && end < text.size() && text[end] == ';';
        if (isReference && !isAllowed(static_cast<char32_t>(mark)))
            return false;
    }
    return true;
}

}  // namespace

bool hasGoodNames(const pugi::xml_document& document) {
    for (pugi::xml_node node = document.first_child(); node; node = following(node, document)) {
        const bool named = node.type() == pugi::node_element || node.type() == pugi::node_pi;
        if (named && (!isName(node.name()) || !hasGoodAttributes(node)))
            return false;
    }
    return true;
}

bool hasGoodReferences(const QByteArray& content, unsigned int parseOptions) {
    const std::string_view raw(content.constData(), static_cast<std::size_t>(content.size()));
    if (refersWell(raw))
        return true;  // what only looks like a reference, as in a comment, is looked at as well
    pugi::xml_document written;
    written.load_buffer(content.constData(), static_cast<std::size_t>(content.size()),
                        parseOptions & ~pugi::parse_escapes, pugi::encoding_utf8);
    for (pugi::xml_node node = written.first_child(); node; node = following(node, written)) {
        if (node.type() == pugi::node_pcdata && !refersWell(node.value()))
            return false;
        for (const pugi::xml_attribute& attribute : node.attributes()) {
            if (!refersWell(attribute.value()))
                return false;
        }
    }
    return true;
}

}  // namespace platform::xml_text
