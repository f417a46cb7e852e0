// The program's version, as the about box and the error reports state it.
#include "platform/basic/Version.h"
#include "shared/basMain.h"

namespace sorvanto {

QString programVersion() { return platform::programVersion(); }

}  // namespace sorvanto
