// Composing the results document.
#include "mixer/ResultsDocument.h"

#include "mixer/MixTables.h"

namespace sorvanto {

platform::XmlDocumentPtr makeResultsDocument(const protocol::Identity& mixer,
                                             const protocol::MixResults& results) {
    const platform::XmlDocumentPtr document = platform::XmlDocument::create();
    platform::XmlNode root = document->appendElement(QStringLiteral("Results"));
    const QString attribute = QStringLiteral("Value");
    root.setAttribute(attribute, QString::fromLatin1(mixer.serial));
    const auto add = [&](const char* name, const QString& value) {
        root.appendElement(QLatin1String(name)).setAttribute(attribute, value);
    };
    add("Size", jarNames().value(results.jar));
    add("Type", mixTypeNames().value(results.type));
    add("LiftingCycles", QString::number(results.cycles));
    add("Interuption", results.stoppedByUser ? QStringLiteral("U") : QStringLiteral("A"));
    add("PreGrind", QString::number(results.preGrind));
    add("PreparationNumber", QStringLiteral("%1").arg(results.preparation, 4, 10, QLatin1Char('0')));
    add("TotalMixingRevolutions", QString::number(results.revolutions));
    add("HardwareVersion", QString::fromLatin1(mixer.hardware));
    return document;
}

QString lotOf(const platform::XmlDocumentPtr& results) {
    if (!results)
        return {};
    const platform::XmlNode root = results->selectSingleNode(QStringLiteral("//Results"));
    const platform::XmlNode number = results->selectSingleNode(QStringLiteral("//Results/PreparationNumber"));
    const QString attribute = QStringLiteral("Value");
    if (!root || !number || !root.hasAttribute(attribute) || !number.hasAttribute(attribute))
        return {};
    return root.attribute(attribute) + number.attribute(attribute);
}

}  // namespace sorvanto
