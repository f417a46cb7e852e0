// The table behind problemText(): known failures, what a failed procedure leaves behind, and causes.
#pragma once

#include <cstdint>
#include <span>

namespace sorvanto {

/// A failure that is known by itself. What is empty or 0 fits every report; the first row that fits counts.
struct KnownProblem {
    const char* tags;  ///< one or several, apart by blanks, each "object:procedure"; "*" stands for any text
    std::int32_t number;
    const char* text;  ///< part of the engine's words, or of the failed statement
    const char* sentence;
};

/// What a failure of these procedures leaves undone, and what is kept.
struct FailedDeed {
    const char* tags;
    const char* sentence;
};

/// Why it failed and what to do about it.
struct ProblemCause {
    std::int32_t number;
    const char* text;
    const char* sentence;
};

std::span<const KnownProblem> knownProblems();
std::span<const FailedDeed> failedDeeds();
std::span<const ProblemCause> problemCauses();

/// For a tag that no row of failedDeeds() has, and for a cause that none of problemCauses() has.
extern const char* const otherDeed;
extern const char* const otherCause;

}  // namespace sorvanto
