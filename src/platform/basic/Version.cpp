#include "platform/basic/Version.h"

namespace platform {

QString programVersion() { return QString::fromLatin1(SORVANTO_VERSION); }

}  // namespace platform
