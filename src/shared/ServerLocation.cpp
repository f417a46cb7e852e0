#include "shared/ServerLocation.h"

#include "platform/data/postgres/Address.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

bool isServerLocation(const QString& location) { return platform::postgres::isAddress(location.trimmed()); }

QString serverNotYet() {
    return translated(
        u"This version tries a server, and does not keep records on one yet: choose a file for them."_s);
}

}  // namespace sorvanto
