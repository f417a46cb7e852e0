#include "platform/widgets/WindowState.h"

#include "platform/basic/Paths.h"

using namespace Qt::StringLiterals;

namespace platform {

QString windowStateFile() { return programFolder() + u"/window.ini"_s; }

}  // namespace platform
