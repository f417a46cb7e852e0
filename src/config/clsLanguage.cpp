// Lookup by the English text in an index of the document; a new text rewrites the file.
#include "config/clsLanguage.h"

#include "platform/basic/Paths.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "shared/Guard.h"

#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr std::array<const char*, 8> languageNames{"English", "Spanish",    "German",  "French",
                                                   "Russian", "Portuguese", "Italian", "Swiss"};

platform::PluralRule pluralRuleOf(const QString& language) {
    if (language == u"French" || language == u"Swiss")
        return platform::PluralRule::ZeroOrOne;
    return language == u"Russian" ? platform::PluralRule::Slavic : platform::PluralRule::One;
}

QString languageName(std::int16_t language) {
    if (language < 0 || language >= static_cast<std::int16_t>(languageNames.size()))
        return {};
    return QLatin1String(languageNames[static_cast<std::size_t>(language)]);
}

}  // namespace

clsLanguage::clsLanguage() : m_document(platform::XmlDocument::create()) {}

void clsLanguage::choose(std::int16_t language) {
    m_language = languageName(language);
    platform::setPluralRule(pluralRuleOf(m_language));
    m_path = platform::platformPath(platform::programFolder() + u"\\"_s + m_language + u"Translation.xml"_s);
}

void clsLanguage::setLanguage(std::int16_t language) {
    guarded(u"clsLanguage:setLanguage"_s, [&] {
        choose(language);
        if (!platform::fileExists(m_path))
            CreateLanguages();
        else if (!m_document->load(m_path))
            throw platform::RuntimeError(
                platform::error::general,
                u"The language file %1 can't be read: %2. The texts are English, and the file stays as it is."_s
                    .arg(m_path, m_document->problem()));
        indexEntries();
    });
}

void clsLanguage::readLanguage(std::int16_t language) {
    choose(language);
    if (platform::fileExists(m_path) && m_document->load(m_path))
        indexEntries();
}

void clsLanguage::CreateLanguages() {
    guarded(u"clsLanguage:CreateLanguages"_s, [&] {
        const auto document = platform::XmlDocument::create();
        document->appendElement(u"Translations"_s).setAttribute(u"Language"_s, m_language);
        m_document = document;
        m_document->save(m_path);
    });
}

void clsLanguage::indexEntries() {
    m_entries.clear();
    for (const platform::XmlNode& entry : m_document->getElementsByTagName(u"Translate"_s)) {
        if (!entry.hasAttribute(u"English"_s))
            continue;  // damaged; no text finds it, and the entries behind it still count
        const QString text = entry.attribute(u"English"_s);
        if (!text.isEmpty() && !m_entries.contains(text))
            m_entries.insert(text, entry);
    }
}

// Two kinds of texts are left to a path over the document: the empty one, which only an entry with that
// attribute answers, and one with an apostrophe, which breaks the path and is shown as it is.
platform::XmlNode clsLanguage::entryOf(const QString& text) const {
    if (!text.isEmpty() && !text.contains('\''_L1))
        return m_entries.value(text);
    return m_document->selectSingleNode(u"//Translate[@English='"_s + text + u"']"_s);
}

void clsLanguage::appendEntry(const QString& text) {
    auto translations = m_document->selectSingleNode(u"//Translations"_s);
    if (!translations)
        throw platform::RuntimeError(platform::error::objectNotSet,
                                     u"The language file has no element Translations"_s);
    auto entry = translations.appendElement(u"Translate"_s);
    entry.setAttribute(u"English"_s, text);
    entry.setAttribute(u"Translated"_s, text);
    if (!text.isEmpty())
        m_entries.insert(text, entry);
}

void clsLanguage::translate(QString& text, QString& result) {
    try {
        text = platform::trimmed(text);
        const auto entry = entryOf(text);
        if (entry) {
            const QString translated = entry.attribute(u"Translated"_s);
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

QString clsLanguage::known(const QString& text) const {
    const auto entry = m_entries.constFind(text);
    const bool holds = entry != m_entries.cend() && entry->hasAttribute(u"Translated"_s);
    return holds ? entry->attribute(u"Translated"_s) : QString();
}

QString clsLanguage::translationPath() {
    return guarded(u"clsLanguage:translationPath"_s, QString(), [&] { return m_path; });
}

}  // namespace sorvanto
