// What a text keeps clear of the one beside it.
#pragma once

#include "platform/report/ReportDefinition.h"

#include <vector>

namespace platform {

/// For each control of the section the twips at its right edge that a single line leaves free, so that it never
/// touches the text of the control beside it; 0 where that one stands far enough away.
std::vector<int> clearances(const Section& section);

}  // namespace platform
