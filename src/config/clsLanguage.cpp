// Lookup by the English text in an index of the document; a new text rewrites the file.
#include "config/clsLanguage.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "shared/Guard.h"

#include <array>

namespace sorvanto {
namespace {

constexpr std::array<const char*, 8> languageNames{"English", "Spanish",    "German",  "French",
                                                   "Russian", "Portuguese", "Italian", "Swiss"};

QString languageName(std::int16_t language) {
    if (language < 0 || language >= static_cast<std::int16_t>(languageNames.size()))
        return {};
    return QLatin1String(languageNames[static_cast<std::size_t>(language)]);
}

}  // namespace

clsLanguage::clsLanguage() : m_document(platform::XmlDocument::create()) {}

void clsLanguage::setLanguage(std::int16_t language) {
    guarded(QStringLiteral("clsLanguage:setLanguage"), [&] {
        m_language = languageName(language);
        m_path = platform::platformPath(platform::programFolder() + QStringLiteral("\\") + m_language
                                        + QStringLiteral("Translation.xml"));
        if (platform::fileExists(m_path))
            m_document->load(m_path);
        else
            CreateLanguages();
        indexEntries();
    });
}

void clsLanguage::CreateLanguages() {
    guarded(QStringLiteral("clsLanguage:CreateLanguages"), [&] {
        const auto document = platform::XmlDocument::create();
        document->appendElement(QStringLiteral("Translations")).setAttribute(QStringLiteral("Language"), m_language);
        m_document = document;
        m_document->save(m_path);
    });
}

void clsLanguage::indexEntries() {
    m_entries.clear();
    for (const platform::XmlNode& entry : m_document->getElementsByTagName(QStringLiteral("Translate"))) {
        if (!entry.hasAttribute(QStringLiteral("English")))
            continue;  // damaged; no text finds it, and the entries behind it still count
        const QString text = entry.attribute(QStringLiteral("English"));
        if (!text.isEmpty() && !m_entries.contains(text))
            m_entries.insert(text, entry);
    }
}

// Two kinds of texts are left to a path over the document: the empty one, which only an entry with that
// attribute answers, and one with an apostrophe, which breaks the path and is shown as it is.
platform::XmlNode clsLanguage::entryOf(const QString& text) const {
    if (!text.isEmpty() && !text.contains(QLatin1Char('\'')))
        return m_entries.value(text);
    return m_document->selectSingleNode(QStringLiteral("//Translate[@English='") + text + QStringLiteral("']"));
}

void clsLanguage::appendEntry(const QString& text) {
    auto translations = m_document->selectSingleNode(QStringLiteral("//Translations"));
    if (!translations)
        throw platform::RuntimeError(platform::error::objectNotSet,
                                     QStringLiteral("The language file has no element Translations"));
    auto entry = translations.appendElement(QStringLiteral("Translate"));
    entry.setAttribute(QStringLiteral("English"), text);
    entry.setAttribute(QStringLiteral("Translated"), text);
    if (!text.isEmpty())
        m_entries.insert(text, entry);
}

void clsLanguage::translate(QString& text, QString& result) {
    try {
        text = platform::trimmed(text);
        const auto entry = entryOf(text);
        if (entry) {
            const QString translated = entry.attribute(QStringLiteral("Translated"));
            result = translated.isEmpty() ? text : translated;
            return;
        }
        result = text;
        appendEntry(text);
        m_document->save(m_path);
    } catch (...) {
        result = text;
    }
}

QString clsLanguage::translationPath() {
    return guarded(QStringLiteral("clsLanguage:translationPath"), QString(), [&] { return m_path; });
}

}  // namespace sorvanto
