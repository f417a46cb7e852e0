// The pharmacy's name, address and numbers in a frame, as it stands at the foot of several reports.
#pragma once

#include "platform/report/Report.h"

#include <vector>

namespace sorvanto {

struct Context;

/// The controls, moved right and down by so many twips from the worksheet's place.
std::vector<platform::Control> storeBlock(int right, int down);

/// Its captions in the user's language.
void translateStoreBlock(platform::Report& report);

/// Its values from the options, and every part of it shown.
void fillStoreBlock(const Context& context, platform::Report& report);

}  // namespace sorvanto
