// The translation store: one XML file a language beside the program, keyed by the English text,
// growing by itself with every text it is asked for.
#pragma once

#include "platform/xml/XmlDocument.h"
#include "shared/Translator.h"

#include <QString>
#include <cstdint>

namespace sorvanto {

class clsLanguage : public Translator {
public:
    clsLanguage();
    /// Loads or creates the file of the language (0 English to 7 Swiss; any other has an empty name).
    void setLanguage(std::int16_t language);
    void translate(QString& text, QString& result) override;
    QString translationPath() override;

private:
    void CreateLanguages();

    QString m_language;
    QString m_path;
    platform::XmlDocumentPtr m_document;
};

}  // namespace sorvanto
