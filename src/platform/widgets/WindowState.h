// The file of the program's folder that keeps how the user has set up his windows and printers: window.ini.
#pragma once

#include <QString>

namespace platform {

QString windowStateFile();

}  // namespace platform
