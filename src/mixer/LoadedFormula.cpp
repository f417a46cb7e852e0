// Reading of the formula document for the mixer.
#include "mixer/LoadedFormula.h"

#include "mixer/MixTables.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::XmlDocumentPtr;
using platform::XmlNode;
using protocol::Step;

constexpr int unreadable = -100'000;

QString childText(const XmlDocumentPtr& document, const char* name) {
    if (!document)
        return {};
    const XmlNode node = document->selectSingleNode(u"//Formula/"_s + QLatin1String(name));
    return node ? node.text() : QString();
}

int number(const QString& text) {
    bool isNumber = false;
    const int value = text.trimmed().toInt(&isNumber);
    return isNumber ? value : unreadable;
}

QString attribute(const XmlNode& node, const char* name) {
    return node.hasAttribute(QLatin1String(name)) ? node.attribute(QLatin1String(name)) : QString();
}

PanelMessage stepMessage(PanelText text, int number, QStringList more = {}) {
    more.prepend(QString::number(number));
    return {text, more};
}

/// One stored step, or what is wrong with it.
std::variant<Step, PanelMessage> readStep(const XmlNode& mix, int position) {
    Step step;
    step.liftRpm = number(attribute(mix, "LiftRPM"));
    step.mixRpm = number(attribute(mix, "MixRPM"));
    step.seconds = secondsOfTime(attribute(mix, "MixTime"));
    step.cycles = number(attribute(mix, "Cycles"));
    if (step.liftRpm == unreadable || step.mixRpm == unreadable || step.seconds < 0 ||
        step.cycles == unreadable)
        return stepMessage(PanelText::StepUnreadable, position);
    if ((step.seconds > 0) == (step.cycles > 0))
        return stepMessage(PanelText::StepTimeOrCycles, position);
    const bool inRange = step.liftRpm >= 1 && step.liftRpm <= protocol::highestLiftRpm && step.mixRpm >= 1 &&
                         step.mixRpm <= protocol::highestMixRpm &&
                         step.seconds <= protocol::longestStepSeconds && step.cycles >= 0 &&
                         step.cycles <= protocol::mostCycles;
    if (!inRange)
        return stepMessage(
            PanelText::StepOutOfRange, position,
            {QString::number(protocol::highestLiftRpm), QString::number(protocol::highestMixRpm)});
    return step;
}

std::variant<std::vector<Step>, PanelMessage> customSteps(const XmlDocumentPtr& document) {
    const auto nodes = document->selectNodes(u"//Formula/CustomMix//Mix"_s);
    if (nodes.empty())
        return PanelMessage{PanelText::NoSteps, {}};
    if (nodes.size() > static_cast<std::size_t>(protocol::mostSteps))
        return PanelMessage{PanelText::TooManySteps,
                            {QString::number(nodes.size()), QString::number(protocol::mostSteps)}};
    std::vector<Step> steps;
    for (const XmlNode& node : nodes) {
        auto step = readStep(node, static_cast<int>(steps.size()) + 1);
        if (auto* refusal = std::get_if<PanelMessage>(&step))
            return *refusal;
        steps.push_back(std::get<Step>(step));
    }
    return steps;
}

/// An attribute that is missing has its usual value; one that is there must be a number of the range.
bool readSetting(const XmlNode& custom, const char* name, int lowest, int highest, int& value) {
    if (!custom.hasAttribute(QLatin1String(name)))
        return true;
    value = number(attribute(custom, name));
    return value >= lowest && value <= highest;
}

/// False when a setting can't be read.
bool readSettings(const XmlDocumentPtr& document, protocol::Programme& programme) {
    const XmlNode custom = document->selectSingleNode(u"//Formula/CustomMix"_s);
    return !custom || (readSetting(custom, "PreGrind", 0, 15, programme.preGrind) &&
                       readSetting(custom, "FreeSpin", 1, 16, programme.freeSpin));
}

std::vector<PanelMessage> speedWarnings(const LoadedFormula& formula) {
    std::vector<PanelMessage> warnings;
    const int recommended = recommendedMixRpm(formula.jar);
    int position = 0;
    for (const Step& step : formula.programme.steps) {
        ++position;
        if (step.mixRpm > recommended)
            warnings.push_back(stepMessage(PanelText::SpeedWarning, position,
                                           {QString::number(step.mixRpm), QString::number(recommended)}));
    }
    return warnings;
}

}  // namespace

std::variant<LoadedFormula, PanelMessage> readFormula(const XmlDocumentPtr& document, bool overrideSpeed) {
    if (!document || !document->selectSingleNode(u"//Formula"_s))
        return PanelMessage{PanelText::NoFormula, {}};
    LoadedFormula formula;
    formula.document = document->cloneDeep();
    formula.name = formulaName(document);
    formula.quantity = number(childText(document, "Make"));
    formula.jar = number(childText(document, "Size"));
    const int type = number(childText(document, "Type"));
    if (type == combinationType)
        return PanelMessage{PanelText::Combination, {}};
    if (type < 1 || type > customType)
        return PanelMessage{PanelText::NoMixType, {}};
    if (formula.jar < 1 || formula.jar > 9)
        return PanelMessage{PanelText::NoJar, {}};
    if (formula.quantity < INT16_MIN || formula.quantity > INT16_MAX)
        return PanelMessage{PanelText::NoFormula, {}};

    protocol::Programme& programme = formula.programme;
    programme.type = type;
    programme.jar = formula.jar;
    programme.quantity = formula.quantity;
    if (!readSettings(document, programme))
        return PanelMessage{PanelText::SettingsUnreadable, {}};
    if (type != customType) {
        programme.steps = presetSteps(type, formula.jar);
        return formula;
    }
    auto steps = customSteps(document);
    if (auto* refusal = std::get_if<PanelMessage>(&steps))
        return *refusal;
    programme.steps = std::get<std::vector<Step>>(steps);
    if (!overrideSpeed)
        formula.warnings = speedWarnings(formula);
    return formula;
}

QString formulaName(const XmlDocumentPtr& document) { return childText(document, "Name"); }

QString formulaQuantity(const XmlDocumentPtr& document) { return childText(document, "Make"); }

int formulaKey(const XmlDocumentPtr& document) { return std::max(0, number(childText(document, "ID"))); }

QString formulaJar(const XmlDocumentPtr& document) {
    return jarNames().value(number(childText(document, "Size")));
}

}  // namespace sorvanto
