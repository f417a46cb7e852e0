// Results of the mixer as a document: what was composed reads back to the letter, and two mixes of one mixer
// never share a lot. Any other document gives the lot that stands in it, or none.
#include "Fuzz.h"

#include "mixer/MixTables.h"
#include "mixer/ResultsDocument.h"

#include <cstring>

using namespace Qt::StringLiterals;

using fuzz::require;
using platform::XmlDocument;
using platform::XmlDocumentPtr;
using namespace sorvanto;

namespace {

/// Values within the protocol's ranges from any bytes.
protocol::MixResults results(const QByteArray& content) {
    std::uint32_t raw[5] = {};
    std::memcpy(raw, content.constData(),
                std::min<std::size_t>(sizeof raw, static_cast<std::size_t>(content.size())));
    const auto positive = [](std::uint32_t value) { return static_cast<int>(value & 0x7FFFFFFF); };
    protocol::MixResults made;
    made.mix = "3FA21C09";
    made.preparation = std::max(1, positive(raw[0]));
    made.jar = static_cast<int>(raw[1] % 9) + 1;
    made.type = static_cast<int>(raw[1] / 16 % 10);
    made.cycles = positive(raw[2]);
    made.stoppedByUser = raw[3] % 2 == 1;
    made.preGrind = static_cast<int>(raw[3] / 2 % 16);
    made.revolutions = positive(raw[4]);
    return made;
}

QString value(const XmlDocument& document, const char* name) {
    return platform::nodeValue(document, u"//Results/"_s + QLatin1String(name));
}

void tryComposing(const protocol::MixResults& made) {
    const protocol::Identity mixer{protocol::version, "2.1", "SV0426"};
    const XmlDocumentPtr document = XmlDocument::create();
    require(document->loadXML(makeResultsDocument(mixer, made)->xml()), "what was composed can be read");
    require(value(*document, "PreparationNumber").toInt() == made.preparation,
            "the preparation number is kept");
    require(value(*document, "LiftingCycles") == QString::number(made.cycles), "the cycles are kept");
    require(value(*document, "TotalMixingRevolutions") == QString::number(made.revolutions),
            "the revolutions are kept");
    require(value(*document, "PreGrind") == QString::number(made.preGrind), "the pre grind is kept");
    require(jarNames().indexOf(value(*document, "Size")) == made.jar, "the jar is kept");
    require(mixTypeNames().indexOf(value(*document, "Type")) == made.type, "the type is kept");
    require((value(*document, "Interuption") == u"U") == made.stoppedByUser, "the ending is kept");

    const QString lot = lotOf(document);
    require(lot.startsWith("SV0426"_L1) && lot.mid(6).toInt() == made.preparation, "the lot tells the mix");
    protocol::MixResults other = made;
    other.preparation = made.preparation > 1 ? made.preparation - 1 : 2;
    require(lotOf(makeResultsDocument(mixer, other)) != lot, "no two mixes share a lot");
}

void tryDocument(const QByteArray& content) {
    const XmlDocumentPtr document = XmlDocument::create();
    document->loadXML(QString::fromUtf8(content));
    const QString before = document->xml();
    const QString lot = lotOf(document);
    require(document->xml() == before, "reading changes nothing");
    if (!lot.isEmpty())
        require(lot == platform::nodeValue(*document, u"//Results"_s) + value(*document, "PreparationNumber"),
                "the lot is the one that stands there");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray content = fuzz::bytes(data, size);
    tryComposing(results(content));
    tryDocument(content);
    return 0;
}
