// The program's one style sheet, written for the colors of a theme.
#pragma once

#include <QString>

namespace platform {

struct Theme;

QString styleSheet(const Theme& theme);

}  // namespace platform
