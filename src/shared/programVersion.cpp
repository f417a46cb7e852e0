// The program's version, as the about box and the error reports state it.
#include "shared/basMain.h"

namespace sorvanto {
namespace {

constexpr int major = 1;
constexpr int minor = 0;
constexpr int revision = 0;

}  // namespace

QString programVersion() {
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision);
}

}  // namespace sorvanto
