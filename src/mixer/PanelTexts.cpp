// The English texts of the panel, and the look-up of the user's language.
#include "mixer/PanelTexts.h"

#include "platform/basic/Paths.h"
#include "platform/xml/XmlDocument.h"

#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr std::size_t count = static_cast<std::size_t>(PanelText::Count);

constexpr std::array<const char*, count> english{
#define PANEL_TEXT(name, english) english,
#include "mixer/PanelTexts.inc"
#undef PANEL_TEXT
};

QString literal(PanelText text) {
    return text < PanelText::Count ? QString::fromLatin1(english[static_cast<std::size_t>(text)]) : QString();
}

}  // namespace

QString filledIn(const QString& pattern, const QStringList& parts) {
    QString filled;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const bool isMark = pattern[i] == '%'_L1 && i + 1 < pattern.size() && pattern[i + 1].isDigit();
        if (isMark)
            filled += parts.value(pattern[++i].digitValue() - 1);
        else
            filled += pattern[i];
    }
    return filled;
}

void PanelTexts::load(const QString& path) {
    m_translated.clear();
    const platform::XmlDocumentPtr file = platform::XmlDocument::create();
    if (path.isEmpty() || !file->load(platform::platformPath(path)))
        return;
    for (const platform::XmlNode& entry : file->getElementsByTagName(u"Translate"_s)) {
        if (!entry.hasAttribute(u"English"_s) || !entry.hasAttribute(u"Translated"_s))
            continue;
        const QString translated = entry.attribute(u"Translated"_s);
        const QString key = entry.attribute(u"English"_s);
        if (!translated.isEmpty() && !m_translated.contains(key))
            m_translated.insert(key, translated);
    }
}

QString PanelTexts::operator()(PanelText text) const { return shown(literal(text)); }

QString PanelTexts::shown(const QString& english) const {
    const QString own = m_source ? m_source(english) : m_translated.value(english);
    return own.isEmpty() ? english : own;
}

QString PanelTexts::operator()(PanelText text, const QStringList& parts) const {
    return filledIn((*this)(text), parts);
}

QString PanelTexts::operator()(const PanelMessage& message) const {
    return (*this)(message.text, message.parts);
}

QStringList PanelTexts::keys() {
    QStringList keys;
    for (const char* text : english)
        keys << QString::fromLatin1(text);
    keys.removeDuplicates();
    return keys;
}

}  // namespace sorvanto
