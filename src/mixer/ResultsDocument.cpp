// Composing the results document.
#include "mixer/ResultsDocument.h"

#include "mixer/MixTables.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

platform::XmlDocumentPtr makeResultsDocument(const protocol::Identity& mixer,
                                             const protocol::MixResults& results) {
    const platform::XmlDocumentPtr document = platform::XmlDocument::create();
    platform::XmlNode root = document->appendElement(u"Results"_s);
    const QString attribute = u"Value"_s;
    root.setAttribute(attribute, QString::fromLatin1(mixer.serial));
    const auto add = [&](const char* name, const QString& value) {
        root.appendElement(QLatin1String(name)).setAttribute(attribute, value);
    };
    add("Size", jarNames().value(results.jar));
    add("Type", mixTypeNames().value(results.type));
    add("LiftingCycles", QString::number(results.cycles));
    add("Interuption", results.stoppedByUser ? u"U"_s : u"A"_s);
    add("PreGrind", QString::number(results.preGrind));
    add("PreparationNumber", u"%1"_s.arg(results.preparation, 4, 10, '0'_L1));
    add("TotalMixingRevolutions", QString::number(results.revolutions));
    add("HardwareVersion", QString::fromLatin1(mixer.hardware));
    return document;
}

QString lotOf(const platform::XmlDocumentPtr& results) {
    if (!results)
        return {};
    const platform::XmlNode root = results->selectSingleNode(u"//Results"_s);
    const platform::XmlNode number = results->selectSingleNode(u"//Results/PreparationNumber"_s);
    const QString attribute = u"Value"_s;
    if (!root || !number || !root.hasAttribute(attribute) || !number.hasAttribute(attribute))
        return {};
    return root.attribute(attribute) + number.attribute(attribute);
}

}  // namespace sorvanto
