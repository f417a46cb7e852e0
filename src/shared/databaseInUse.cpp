#include "shared/databaseInUse.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"
#include "platform/data/Engine.h"
#include "shared/Context.h"
#include "shared/FileIdentity.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {

QString databaseInUse(const Context& context) {
    try {
        const QString location = context.databaseLocation ? context.databaseLocation() : QString();
        if (platform::DataLocation::namesServer(location))
            return platform::DataLocation(location).text();
        const QString path = platform::platformPath(location);
        const QString canonical = QFileInfo(path).canonicalFilePath();
        return canonical.isEmpty() ? path : canonical;
    } catch (const platform::RuntimeError&) {
        return {};  // options without a location: reported where the database is opened
    }
}

QString databaseFile(const Context& context) {
    try {
        const QString location = context.databaseLocation ? context.databaseLocation() : QString();
        return platform::DataLocation::namesServer(location) ? QString() : platform::platformPath(location);
    } catch (const platform::RuntimeError&) {
        return {};
    }
}

QString databaseOpen(const Context& context) {
    if (!context.connection || context.connection->state() == 0)
        return {};
    const QString source = u"Data Source="_s;
    const auto begin = context.connectionString.indexOf(source) + source.size();
    const auto end = context.connectionString.lastIndexOf(u';');
    return platform::platformPath(context.connectionString.mid(begin, end - begin));
}

QString databaseIdentity(const Context& context) {
    const auto& connection = context.connection;
    // A server that is known to be away is not waited for; its address tells as much.
    if (!connection || connection->state() == 0 || connection->engine().awayFor() > 0)
        return {};
    const auto identity = knownFileIdentity(*connection);
    return identity ? identity->identity : QString();
}

bool isDatabaseInUse(const Context& context, const QString& path, const QString& identity) {
    const QString own = databaseIdentity(context);
    return own.isEmpty() || identity.isEmpty() ? path == databaseInUse(context) : identity == own;
}

}  // namespace sorvanto
