// The translation store: one XML file a language beside the program, keyed by the English text,
// growing by itself with every text it is asked for.
#pragma once

#include "platform/xml/XmlDocument.h"
#include "shared/Translator.h"

#include <QHash>
#include <QString>
#include <cstdint>

namespace sorvanto {

class clsLanguage : public Translator {
public:
    clsLanguage();
    /// Loads or creates the file of the language (0 English to 7 Swiss; any other has an empty name).
    void setLanguage(std::int16_t language);
    /// As setLanguage, but makes no file and reports nothing.
    void readLanguage(std::int16_t language);
    void translate(QString& text, QString& result) override;
    QString known(const QString& text) const override;
    QString translationPath() override;

private:
    /// Name and path.
    void choose(std::int16_t language);
    void CreateLanguages();
    /// The first entry of each English text, so that a lookup doesn't walk through the file.
    void indexEntries();
    platform::XmlNode entryOf(const QString& text) const;
    void appendEntry(const QString& text);

    QString m_language;
    QString m_path;
    platform::XmlDocumentPtr m_document;
    QHash<QString, platform::XmlNode> m_entries;
};

}  // namespace sorvanto
