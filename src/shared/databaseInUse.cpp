#include "shared/databaseInUse.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "shared/FileIdentity.h"
#include "shared/basMain.h"

#include <QFileInfo>

namespace sorvanto {

QString databaseInUse() {
    try {
        const QString path =
            platform::platformPath(basMain::databaseLocation ? basMain::databaseLocation() : QString());
        const QString canonical = QFileInfo(path).canonicalFilePath();
        return canonical.isEmpty() ? path : canonical;
    } catch (const platform::RuntimeError&) {
        return {};  // options without a location: reported where the database is opened
    }
}

QString databaseIdentity() {
    const auto identity = basMain::gConnection ? readFileIdentity(*basMain::gConnection) : std::nullopt;
    return identity ? identity->identity : QString();
}

bool isDatabaseInUse(const QString& path, const QString& identity) {
    const QString own = databaseIdentity();
    return own.isEmpty() || identity.isEmpty() ? path == databaseInUse() : identity == own;
}

}  // namespace sorvanto
