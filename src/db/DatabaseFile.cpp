// Runs the delivered statements on a new file, in one transaction.
#include "db/DatabaseFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Sqlite.h"

#include <QFile>
#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

/// Resources of a static library have to be asked for, from outside any namespace.
static void useResources() { Q_INIT_RESOURCE(database); }

namespace sorvanto {

namespace {

using platform::RuntimeError;

QByteArray resource(const char* name) {
    useResources();
    QFile file(u":/database/"_s + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(platform::error::fileNotFound,
                           u"%1 is not part of this program"_s.arg(QLatin1String(name)));
    return file.readAll();
}

/// A new database; the file goes with the object unless it was finished.
class NewDatabase {
public:
    explicit NewDatabase(const QString& path) : m_path(platform::platformPath(path)) {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
            throw RuntimeError(platform::error::permissionDenied,
                               u"\"%1\" can't be created: %2"_s.arg(m_path, file.errorString()));
        file.close();
        sqlite3* opened = nullptr;
        const int code =
            sqlite3_open_v2(m_path.toUtf8().constData(), &opened, SQLITE_OPEN_READWRITE, nullptr);
        m_database.reset(opened);
        if (code != SQLITE_OK)
            platform::sqlite::fail(opened, {});
        run("PRAGMA foreign_keys = ON; BEGIN");
    }
    ~NewDatabase() {
        m_database.reset();
        if (!m_finished)
            QFile::remove(m_path);
    }
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    void run(const QByteArray& statements) {
        if (sqlite3_exec(m_database.get(), statements.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            platform::sqlite::fail(m_database.get(), {});
    }
    void finish() {
        run("COMMIT");
        m_finished = true;
    }

private:
    QString m_path;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> m_database{nullptr, sqlite3_close};
    bool m_finished = false;
};

}  // namespace

QByteArray schemaStatements() { return resource("schema.sql"); }

QByteArray historyStatements() { return resource("history.sql"); }

void createDatabase(const QString& path) {
    NewDatabase database(path);
    database.run(schemaStatements());
    database.run(resource("identity.sql"));
    database.run(historyStatements());
    database.finish();
}

void createSample(const QString& path, int rows) {
    NewDatabase database(path);
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
