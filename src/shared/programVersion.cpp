// The program's version, as the about box and the error reports state it.
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int major = 1;
constexpr int minor = 0;
constexpr int revision = 0;

}  // namespace

QString programVersion() { return u"%1.%2.%3"_s.arg(major).arg(minor).arg(revision); }

}  // namespace sorvanto
