#include "platform/data/sqlite/FileEngine.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"
#include "platform/data/sqlite/Guard.h"
#include "platform/data/sqlite/Integrity.h"
#include "platform/data/sqlite/KeyedStatements.h"
#include "platform/data/sqlite/OwnFunction.h"
#include "platform/data/sqlite/Span.h"
#include "platform/data/sqlite/Statement.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

class FileEngine : public Engine {
public:
    explicit FileEngine(Handle database) : m_database(std::move(database)), m_guard(handle()) {}
    sqlite3* handle() const { return m_database.get(); }

    QString location() const override;
    bool isServer() const override { return false; }
    bool isReadOnly() const override { return sqlite3_db_readonly(handle(), "main") == 1; }
    void refuseChanges() override { run(*this, u"PRAGMA query_only = ON"_s); }
    bool refusesChanges() override { return isReadOnly() || number(*this, u"PRAGMA query_only"_s) != 0; }
    std::int64_t changeState() override;

    const EngineWords& words() const override { return fileWords(); }
    std::unique_ptr<EngineQuery> prepare(const QString& sql, const QString& original) override;
    std::unique_ptr<EngineQuery> prepareTranslated(const Translation& translation,
                                                   const QString& statement) override;
    std::unique_ptr<KeyedSelect> keyedSelect(const Translation& translation,
                                             const QString& statement) override;
    std::int64_t insert(const QString& table, const QStringList& columns, const std::vector<QVariant>& values,
                        const QString& statement) override;
    std::unique_ptr<EngineSpan> beginSpan(const QString& statement, Sees sees) override;
    std::unique_ptr<EngineLook> beginLook() override { return std::make_unique<Look>(handle()); }

    QStringList tables() override;
    QStringList columns(const QString& table) override;
    QString declaredType(const QString& table, const QString& column) override;
    bool isKey(const QString& table, const QString& column) override;
    bool hasKeys(const QString& table) override;
    std::int64_t lastKey(const QString& table) override;

    std::int64_t version() override { return number(*this, u"PRAGMA user_version"_s); }
    void migrate(const QStringList& statements, std::int64_t version, const QString& source) override;
    void addFunction(const char* name, FunctionResult result, EngineFunction function) override;
    QStringList problems(const Cancelled& cancelled) override;

private:
    QStringList names(const QString& sql, const QVariant& parameter = {});

    Handle m_database;
    Guard m_guard;
    struct Insertion {
        QString sql, statement;
        std::unique_ptr<Statement> row;
    };
    Insertion m_insertion;  ///< the last: the lines of a batch are all written by the same
};

class FileWords : public EngineWords {
public:
    QString lastKey() const override { return u"last_insert_rowid()"_s; }
    QString rowKey(const QString&) const override { return u"rowid"_s; }
};

QString FileEngine::location() const { return QString::fromUtf8(sqlite3_db_filename(handle(), "main")); }

std::int64_t FileEngine::changeState() {
    const std::int64_t others = number(*this, u"PRAGMA data_version"_s);
    return (others << 40) + sqlite3_total_changes64(handle()) + m_guard.spansTakenBack();
}

std::unique_ptr<EngineQuery> FileEngine::prepare(const QString& sql, const QString& original) {
    return std::make_unique<Statement>(handle(), sql, original);
}

std::unique_ptr<EngineQuery> FileEngine::prepareTranslated(const Translation& translation,
                                                           const QString& statement) {
    const bool mayChange = translation.kind != StatementKind::Select;
    return m_guard.prepareTyped(translation.sql, statement, mayChange);
}

std::unique_ptr<KeyedSelect> FileEngine::keyedSelect(const Translation& translation,
                                                     const QString& statement) {
    return std::make_unique<KeyedStatements>(handle(), m_guard, translation, statement);
}

std::int64_t FileEngine::insert(const QString& table, const QStringList& columns,
                                const std::vector<QVariant>& values, const QString& statement) {
    QStringList names;
    for (const QString& column : columns)
        names << quotedName(column);
    const QString marks = u"?, "_s.repeated(columns.size()).chopped(2);
    const QString sql =
        u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(quotedName(table), names.join(u", "_s), marks);
    if (!m_insertion.row || m_insertion.sql != sql || m_insertion.statement != statement)
        m_insertion = {sql, statement, std::make_unique<Statement>(handle(), sql, statement)};
    Statement& row = *m_insertion.row;
    int parameter = 0;
    for (const QVariant& value : values)
        row.bind(++parameter, value);
    row.step();
    row.reset();
    return sqlite3_last_insert_rowid(handle());
}

/// Nobody else writes while it is open.
std::unique_ptr<EngineSpan> FileEngine::beginSpan(const QString& statement, Sees) {
    return std::make_unique<Span>(handle(), m_guard, statement);
}

QStringList FileEngine::names(const QString& sql, const QVariant& parameter) {
    Statement rows(handle(), sql, sql);
    if (parameter.isValid())
        rows.bind(1, parameter);
    QStringList all;
    while (rows.step())
        all << rows.value(0, asText).toString();
    return all;
}

QStringList FileEngine::tables() {
    return names(
        u"SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name"_s);
}

QStringList FileEngine::columns(const QString& table) {
    return names(u"SELECT name FROM pragma_table_info(?)"_s, table);
}

QString FileEngine::declaredType(const QString& table, const QString& column) {
    const char* declared = nullptr;
    const int code = sqlite3_table_column_metadata(handle(), nullptr, table.toUtf8().constData(),
                                                   column.toUtf8().constData(), &declared, nullptr, nullptr,
                                                   nullptr, nullptr);
    return code == SQLITE_OK ? QString::fromUtf8(declared) : QString();
}

bool FileEngine::isKey(const QString& table, const QString& column) {
    int key = 0;
    sqlite3_table_column_metadata(handle(), nullptr, table.toUtf8().constData(), column.toUtf8().constData(),
                                  nullptr, nullptr, nullptr, &key, nullptr);
    return key != 0;
}

bool FileEngine::hasKeys(const QString& table) {
    return sqlite3_table_column_metadata(handle(), nullptr, table.toUtf8().constData(), "rowid", nullptr,
                                         nullptr, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::int64_t FileEngine::lastKey(const QString& table) {
    Statement row(handle(), u"SELECT seq FROM sqlite_sequence WHERE name = ?"_s, {});
    row.bind(1, table);
    return row.step() ? row.integer(0) : 0;
}

/// Relations are checked once, at the end of the steps: a table may be rebuilt meanwhile.
class RelationsOff {
public:
    explicit RelationsOff(sqlite3* database) : m_database(database) { set("PRAGMA foreign_keys = OFF"); }
    ~RelationsOff() { set("PRAGMA foreign_keys = ON"); }
    RelationsOff(const RelationsOff&) = delete;
    RelationsOff& operator=(const RelationsOff&) = delete;

private:
    void set(const char* sql) const { sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr); }

    sqlite3* m_database;
};

void FileEngine::migrate(const QStringList& statements, std::int64_t version, const QString& source) {
    const RelationsOff relationsOff(handle());
    Span whole(handle(), m_guard, {});
    for (const QString& statement : statements)
        run(*this, statement);
    if (number(*this, u"SELECT count(*) FROM pragma_foreign_key_check"_s) != 0)
        throw RuntimeError(error::general, u"The updated tables break a relation"_s, source);
    run(*this, u"PRAGMA user_version = %1"_s.arg(version));
    whole.commit();
}

void FileEngine::addFunction(const char* name, FunctionResult result, EngineFunction function) {
    installFunction(handle(), name, result, std::move(function));
}

QStringList FileEngine::problems(const Cancelled& cancelled) { return integrityOf(handle(), cancelled); }

}  // namespace

std::unique_ptr<Engine> openFile(const QString& path, OpenFor use) {
    return std::make_unique<FileEngine>(openHandle(path, use));
}

const EngineWords& fileWords() {
    static const FileWords words;
    return words;
}

std::unique_ptr<Engine> inMemory(const QByteArray& statements) {
    sqlite3* opened = nullptr;
    sqlite3_open(":memory:", &opened);
    Handle database(opened);
    if (sqlite3_exec(opened, statements.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(opened, {});
    return std::make_unique<FileEngine>(std::move(database));
}

sqlite3* handleOf(const Engine& engine) {
    const auto* file = dynamic_cast<const FileEngine*>(&engine);
    return file ? file->handle() : nullptr;
}

}  // namespace platform::sqlite
