#include "shared/databaseInUse.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "shared/FileIdentity.h"
#include "shared/basMain.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

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

QString databaseOpen() {
    if (!basMain::gConnection || basMain::gConnection->state() == 0)
        return {};
    const QString source = u"Data Source="_s;
    const auto begin = basMain::gConnectionString.indexOf(source) + source.size();
    const auto end = basMain::gConnectionString.lastIndexOf(u';');
    return platform::platformPath(basMain::gConnectionString.mid(begin, end - begin));
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
