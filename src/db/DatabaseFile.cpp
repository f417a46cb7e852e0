// Runs the delivered statements on a new file, in one transaction.
#include "db/DatabaseFile.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/NewFile.h"

#include <QFile>

using namespace Qt::StringLiterals;

/// Resources of a static library have to be asked for, from outside any namespace.
static void useResources() { Q_INIT_RESOURCE(database); }

namespace sorvanto {

namespace {

using platform::RuntimeError;
using platform::sqlite::NewFile;

QByteArray resource(const char* name) {
    useResources();
    QFile file(u":/database/"_s + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(platform::error::fileNotFound,
                           u"%1 is not part of this program"_s.arg(QLatin1String(name)));
    return file.readAll();
}

}  // namespace

QByteArray schemaStatements() { return resource("schema.sql"); }

QByteArray historyStatements() { return resource("history.sql"); }

QByteArray newFileStatements() { return schemaStatements() + resource("identity.sql") + historyStatements(); }

void createDatabase(const QString& path) {
    NewFile database(path);
    database.run(newFileStatements());
    database.finish();
}

void createSample(const QString& path, int rows) {
    NewFile database(path);
    database.run(schemaStatements());
    database.run(resource("sample.sql"));
    if (rows > 0) {
        database.run("CREATE TEMP TABLE Wanted AS SELECT " + QByteArray::number(rows) + " AS rows");
        database.run(resource("rows.sql"));
        database.run("DROP TABLE Wanted");
    }
    database.run(resource("identity.sql"));
    database.run(historyStatements());
    database.finish();
}

}  // namespace sorvanto
