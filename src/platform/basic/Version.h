// The program's version, which stands in one place: the build's own.
#pragma once

#include <QString>

namespace platform {

/// Major, minor and revision joined by ".".
QString programVersion();

}  // namespace platform
