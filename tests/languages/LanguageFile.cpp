// Read by another reader than the program's own.
#include "LanguageFile.h"

#include <QFile>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace languages {

std::vector<Entry> entries(const QString& path) {
    std::vector<Entry> found;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return found;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() != "Translate"_L1)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        found.push_back({attributes.value("English").toString(), attributes.value("Translated").toString()});
    }
    return reader.hasError() ? std::vector<Entry>() : found;
}

QMap<QString, QString> texts(const QString& path) {
    QMap<QString, QString> found;
    for (const Entry& entry : entries(path))
        found.insert(entry.english, entry.translated);
    return found;
}

QString deliveredPath(int language) {
    return QString(SORVANTO_SOURCE_DIR) + "/languages/" + names[language] + "Translation.xml";
}

QMap<QString, QString> delivered(int language) { return texts(deliveredPath(language)); }

QByteArray deliveredFile(int language) {
    QFile file(deliveredPath(language));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace languages
