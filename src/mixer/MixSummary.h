// What was planned for a mix and what became of it, as far as that is known.
#pragma once

#include "mixer/protocol/Messages.h"
#include "platform/xml/XmlDocument.h"

#include <optional>

namespace sorvanto {

/// Nothing where a value is not known; nothing is worked out from what the mixer may not have done.
struct MixSummary {
    struct Side {
        std::optional<int> steps, seconds, revolutions;
        bool operator==(const Side&) const = default;
    };
    Side planned, done;
    std::optional<bool> interrupted;
};

/// The plan is the programme of the formula document; its time and revolutions are known when all its steps
/// go by time. Revolutions done and the interruption are the results' own. reached: the mixer's last word
/// while the mix ran, by which a mix that was stopped has its steps and its time.
MixSummary mixSummary(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results,
                      const std::optional<protocol::Status>& reached);

/// Whether the results say that the mix was stopped before its end; nothing when they say neither.
std::optional<bool> wasInterrupted(const platform::XmlDocumentPtr& results);

}  // namespace sorvanto
