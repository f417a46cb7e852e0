// Plan and outcome of a mix out of its two documents.
#include "mixer/MixSummary.h"

#include "mixer/LoadedFormula.h"

#include <algorithm>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString resultText(const platform::XmlDocumentPtr& results, const QString& node) {
    const platform::XmlNode value =
        results ? results->selectSingleNode("//Results/"_L1 + node) : platform::XmlNode();
    return value && value.hasAttribute(u"Value"_s) ? value.attribute(u"Value"_s) : QString();
}

MixSummary::Side planOf(const platform::XmlDocumentPtr& formula) {
    const auto read = readFormula(formula, true);
    const auto* loaded = std::get_if<LoadedFormula>(&read);
    if (!loaded)
        return {};
    const std::vector<protocol::Step>& steps = loaded->programme.steps;
    MixSummary::Side plan;
    plan.steps = static_cast<int>(steps.size());
    if (!std::all_of(steps.begin(), steps.end(), [](const auto& step) { return step.seconds > 0; }))
        return plan;
    std::int64_t seconds = 0, turns = 0;
    for (const protocol::Step& step : steps) {
        seconds += step.seconds;
        turns += std::int64_t(step.seconds) * step.mixRpm;
    }
    plan.seconds = static_cast<int>(seconds);
    plan.revolutions = static_cast<int>(turns / 60);
    return plan;
}

}  // namespace

std::optional<bool> wasInterrupted(const platform::XmlDocumentPtr& results) {
    const QString letter = resultText(results, u"Interuption"_s);
    return letter == "U"_L1 || letter == "A"_L1 ? std::optional(letter == "U"_L1) : std::nullopt;
}

MixSummary mixSummary(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results,
                      const std::optional<protocol::Status>& reached) {
    MixSummary summary;
    summary.planned = planOf(formula);
    if (!summary.planned.seconds && reached && reached->secondsTotal > 0)
        summary.planned.seconds = reached->secondsTotal;
    summary.interrupted = wasInterrupted(results);
    if (summary.interrupted == false) {
        summary.done.steps = summary.planned.steps;
        summary.done.seconds = summary.planned.seconds;
    } else if (reached && summary.interrupted) {
        summary.done.steps = reached->step;
        summary.done.seconds = reached->secondsTotal - reached->secondsLeft;
    }
    bool isNumber = false;
    const int revolutions = resultText(results, u"TotalMixingRevolutions"_s).toInt(&isNumber);
    if (isNumber)
        summary.done.revolutions = revolutions;
    return summary;
}

}  // namespace sorvanto
