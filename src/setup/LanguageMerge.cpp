#include "setup/LanguageMerge.h"

#include "platform/basic/RuntimeError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString english = u"English"_s;
const QString translated = u"Translated"_s;

QString attribute(const platform::XmlNode& entry, const QString& name) {
    return entry.hasAttribute(name) ? entry.attribute(name) : QString();
}

/// The first entry of each text.
QHash<QString, platform::XmlNode> entriesOf(const platform::XmlDocument& document) {
    QHash<QString, platform::XmlNode> entries;
    for (const platform::XmlNode& entry : document.getElementsByTagName(u"Translate"_s)) {
        const QString text = attribute(entry, english);
        if (!text.isEmpty() && !entries.contains(text))
            entries.insert(text, entry);
    }
    return entries;
}

}  // namespace

FormerTexts formerTexts(const QByteArray& json, const QString& language) {
    FormerTexts result;
    const QJsonObject texts = QJsonDocument::fromJson(json).object().value(language).toObject();
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        for (const auto& former : text.value().toArray())
            result[text.key()] << former.toString();
    }
    return result;
}

bool mergeLanguage(const platform::XmlDocument& delivered, platform::XmlDocument& target,
                   const FormerTexts& former) {
    platform::XmlNode root = target.selectSingleNode(u"/Translations"_s);
    if (!root)
        throw platform::RuntimeError(platform::error::objectNotSet, u"It has no element Translations"_s);
    QHash<QString, platform::XmlNode> entries = entriesOf(target);
    bool changed = false;
    for (const platform::XmlNode& source : delivered.getElementsByTagName(u"Translate"_s)) {
        const QString text = attribute(source, english);
        const QString wanted = attribute(source, translated);
        const auto known = entries.find(text);
        if (known == entries.end()) {
            platform::XmlNode entry = root.appendElement(u"Translate"_s);
            entry.setAttribute(english, text);
            entry.setAttribute(translated, wanted);
            entries.insert(text, entry);
        } else if (const QString now = attribute(*known, translated);
                   now == wanted || !former.value(text).contains(now)) {
            continue;
        } else {
            known->setAttribute(translated, wanted);
        }
        changed = true;
    }
    return changed;
}

}  // namespace sorvanto
