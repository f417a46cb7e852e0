// Feeds any bytes to the readers of a formula document and of a mix document: the mixer gets exactly the
// numbers that stand there, within its ranges, or a refusal; the list of steps shows what is stored, as it is
// stored.
#include "Fuzz.h"

#include "mixer/LoadedFormula.h"
#include "mixer/MixTables.h"
#include "platform/widgets/ReportList.h"
#include "screens/MixList.h"

#include <QApplication>

using namespace Qt::StringLiterals;

using fuzz::require;
using platform::XmlDocument;
using platform::XmlDocumentPtr;
using platform::XmlNode;
using namespace sorvanto;

namespace {

QString text(const XmlDocument& document, const QString& path) {
    const XmlNode node = document.selectSingleNode(path);
    return node ? node.text().trimmed() : QString();
}

QString attribute(const XmlNode& node, const char* name) {
    return node.hasAttribute(QLatin1String(name)) ? node.attribute(QLatin1String(name)).trimmed() : QString();
}

/// Whether the text is this whole number, however many zeros stand in front.
bool says(QString number, int value) {
    const bool negative = number.startsWith(u'-');
    if (negative || number.startsWith(u'+'))
        number.remove(0, 1);
    if (number.isEmpty())
        return false;
    for (const QChar mark : number) {
        if (mark < u'0' || mark > u'9')
            return false;
    }
    while (number.size() > 1 && number.startsWith(u'0'))
        number.remove(0, 1);
    return number == QString::number(std::abs(value)) && (value == 0 || negative == (value < 0));
}

bool saysTime(const QString& time, int seconds) {
    const QStringList parts = time.split(u':');
    int total = 0;
    for (const QString& part : parts) {
        const int value = part.trimmed().toInt();
        if (!says(part.trimmed(), value))
            return false;
        total = total * 60 + value;
    }
    return parts.size() == 3 && total == seconds;
}

void checkSteps(const XmlDocument& document, const protocol::Programme& programme) {
    if (programme.type != customType) {
        require(programme.steps == presetSteps(programme.type, programme.jar), "a preset has its own steps");
        return;
    }
    const auto nodes = document.selectNodes(u"//Formula/CustomMix//Mix"_s);
    require(nodes.size() == programme.steps.size(), "no step is lost or added");
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const protocol::Step& step = programme.steps[i];
        require(says(attribute(nodes[i], "LiftRPM"), step.liftRpm),
                "the lift speed is the one that stands there");
        require(says(attribute(nodes[i], "MixRPM"), step.mixRpm),
                "the mix speed is the one that stands there");
        require(saysTime(attribute(nodes[i], "MixTime"), step.seconds),
                "the time is the one that stands there");
        require(says(attribute(nodes[i], "Cycles"), step.cycles), "the cycles are those that stand there");
    }
}

/// Over the line and back.
void checkFrames(protocol::Programme programme) {
    programme.id = "0000ABCD";
    const auto over = [](const protocol::Frame& frame) {
        const QByteArray line = encode(frame);
        require(line.endsWith('\n'), "what was read can be sent");
        return *protocol::decode(line.chopped(1));
    };
    const auto head = readLoad(over(loadCommand(programme)));
    require(head.has_value(), "the mixer takes what was read");
    protocol::Programme arrived = head->first;
    for (std::size_t i = 0; i < programme.steps.size(); ++i) {
        const auto step = readStep(over(stepCommand(static_cast<int>(i) + 1, programme.steps[i])));
        require(step && step->first == static_cast<int>(i) + 1, "the mixer takes each step");
        arrived.steps.push_back(step->second);
    }
    require(arrived == programme && head->second == static_cast<int>(programme.steps.size()),
            "the mixer gets what was read");
}

void tryFormula(const XmlDocumentPtr& document) {
    const QString before = document->xml();
    const auto read = readFormula(document, false);
    require(document->xml() == before, "reading changes nothing");
    const auto* formula = std::get_if<LoadedFormula>(&read);
    if (!formula)
        return;
    require(formula->document->xml() == before, "the copy is the same");
    require(says(text(*document, u"//Formula/Make"_s), formula->quantity), "the quantity stands there");
    require(says(text(*document, u"//Formula/Size"_s), formula->jar), "the jar stands there");
    require(says(text(*document, u"//Formula/Type"_s), formula->programme.type), "the type stands there");
    checkSteps(*document, formula->programme);
    checkFrames(formula->programme);
}

/// The list of steps and the document made of it again.
void tryList(const XmlDocument& document) {
    static platform::ReportList list;
    list.setColumnCaptions({u"Lift RPM"_s, u"Mix RPM"_s, u"Time"_s, u"Cycles"_s});
    list.clear();
    const bool whole = fuzz::succeeds({platform::error::objectNotSet}, [&] { listMixSteps(document, list); });
    const auto nodes = document.getElementsByTagName(u"Mix"_s);
    require(list.count() <= static_cast<int>(nodes.size()) &&
                (!whole || list.count() == static_cast<int>(nodes.size())),
            "a row is a step");
    for (int row = 0; row < list.count(); ++row) {
        const QStringList cells = list.row(row);
        int column = 0;
        for (const char* name : {"LiftRPM", "MixRPM", "MixTime", "Cycles"}) {
            const XmlNode& node = nodes[static_cast<std::size_t>(row)];
            const bool there = node.hasAttribute(QLatin1String(name));
            require(there || (!whole && row + 1 == list.count()), "only the last row may be unfinished");
            if (!there)
                break;
            require(cells.value(column++) == node.attribute(QLatin1String(name)), "a cell is what is stored");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static const QApplication application(count, arguments);
    const XmlDocumentPtr document = XmlDocument::create();
    if (!document->loadXML(QString::fromUtf8(fuzz::bytes(data, size))))
        return 0;
    tryFormula(document);
    tryList(*document);
    return 0;
}
