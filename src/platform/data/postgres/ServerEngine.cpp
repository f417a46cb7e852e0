#include "platform/data/postgres/ServerEngine.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/ColumnType.h"
#include "platform/data/Query.h"
#include "platform/data/StatementWriter.h"
#include "platform/data/postgres/Address.h"
#include "platform/data/postgres/OwnStatement.h"
#include "platform/data/postgres/ServerKeys.h"
#include "platform/data/postgres/ServerQuery.h"
#include "platform/data/postgres/ServerSpan.h"

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

/// Each has its time on the server, and all of them the time of one answer.
constexpr std::size_t rowsOfAMessage = 100;

class ServerEngine : public Engine {
public:
    ServerEngine(const QString& address, std::shared_ptr<Waiter> waiter)
        : m_address(address), m_store(address, std::move(waiter)) {
        m_store.session.setBeforeChanges([this] { return toldBeforeChanges(); });
    }

    QString location() const override { return m_address; }
    bool isServer() const override { return true; }
    bool isReadOnly() const override { return m_store.refusesChanges || m_store.session.isStandby(); }
    void refuseChanges() override { m_store.refusesChanges = true; }
    bool refusesChanges() override { return isReadOnly(); }
    std::int64_t changeState() override {
        return number(*this, u"SELECT last_value FROM changes"_s) + m_store.spansTakenBack;
    }

    std::int64_t ownChangeState() override { return m_store.ownChanges(); }

    const EngineWords& words() const override { return m_store.words; }
    std::unique_ptr<EngineQuery> prepare(const QString& sql, const QString& original) override;
    std::unique_ptr<EngineQuery> prepareTranslated(const Translation& translation,
                                                   const QString& statement) override;
    std::unique_ptr<KeyedSelect> keyedSelect(const Translation& translation,
                                             const QString& statement) override;
    std::int64_t insert(const QString& table, const QStringList& columns, const std::vector<QVariant>& values,
                        const QString& statement) override;
    void insertInTurn(const QString& table, const QStringList& columns,
                      const std::vector<std::vector<QVariant>>& rows, const QString& statement,
                      const KeyTaker& taken) override;
    std::unique_ptr<EngineSpan> beginSpan(const QString& statement, Sees sees) override;
    void holdRow(const QString& table, std::int64_t key) override;
    std::unique_ptr<EngineLook> beginLook() override { return std::make_unique<ServerLook>(m_store); }

    QStringList tables() override { return m_store.catalogue.tables(); }
    QStringList columns(const QString& table) override;
    QString declaredType(const QString& table, const QString& column) override;
    bool isKey(const QString& table, const QString& column) override;
    bool hasKeys(const QString& table) override { return !m_store.catalogue.key(table).isEmpty(); }
    std::int64_t lastKey(const QString& table) override { return lastKeys({table}).front(); }
    std::vector<std::int64_t> lastKeys(const QStringList& tables) override;

    std::int64_t version() override;
    void migrate(const QStringList& statements, std::int64_t version, const QString& source) override;
    bool keepName(const QString& name) override;
    void giveUpName(const QString& name) override;
    QString nameKeeper(const QString& name) override;
    void setAdmission(const QString& question,
                      const std::function<QString(const QString& answer)>& refusal) override;
    bool isRefused() const override { return m_store.session.isRefused(); }
    bool tellWriter(const HistoryContext& writer) override;
    void tellDeed(const QString& deed, const QString& note) noexcept override;
    void addFunction(const char* name, FunctionResult result, EngineFunction function) override;
    void lookAfter() override { m_store.session.lookAfter(); }
    std::int64_t awayFor() const override { return m_store.session.awayFor(); }
    void beginReadAhead(const QStringList& statements) override;
    void endReadAhead() override;
    QStringList problems(const Cancelled& cancelled) override;

private:
    void greetWithNames();
    QByteArrayList toldBeforeChanges() const;

    QString m_address;
    QByteArrayList m_writer;  ///< what the server is told of who writes
    QStringList m_names;      ///< that are kept
    int m_readAheads = 0;
    ServerStore m_store;
    std::function<int()> m_minutesAhead;
    QByteArrayList m_deed;  ///< once one was told: what a span has been told holds until its end
};

std::unique_ptr<EngineQuery> ServerEngine::prepare(const QString& sql, const QString& original) {
    const OwnStatement own = ownStatement(sql, m_store.catalogue);
    return std::make_unique<ServerQuery>(m_store, own.sql, own.reads ? Access::Reads : Access::Changes,
                                         original);
}

std::unique_ptr<EngineQuery> ServerEngine::prepareTranslated(const Translation& translation,
                                                             const QString& statement) {
    const Access access = translation.kind == StatementKind::Select ? Access::Reads : Access::Changes;
    const bool givesKey = translation.kind == StatementKind::Insert && hasKeys(translation.table);
    const QString key = givesKey ? u" RETURNING "_s + m_store.words.rowKey(translation.table) : QString();
    return std::make_unique<ServerQuery>(m_store, translation.sql + key, access, statement, givesKey);
}

std::unique_ptr<KeyedSelect> ServerEngine::keyedSelect(const Translation& translation,
                                                       const QString& statement) {
    return std::make_unique<ServerKeys>(m_store, translation, statement);
}

/// With its values as parameters, giving the key.
QString insertion(const ServerWords& words, const QString& table, const QStringList& columns) {
    QStringList names, places;
    for (const QString& column : columns) {
        names << quotedName(column);
        places << u'$' + QString::number(names.size());
    }
    return u"INSERT INTO %1 (%2) VALUES (%3) RETURNING %4"_s.arg(quotedName(table), names.join(u", "_s),
                                                                 places.join(u", "_s), words.rowKey(table));
}

std::int64_t ServerEngine::insert(const QString& table, const QStringList& columns,
                                  const std::vector<QVariant>& values, const QString& statement) {
    Query row(std::make_unique<ServerQuery>(m_store, insertion(m_store.words, table, columns),
                                            Access::Changes, statement));
    for (std::size_t i = 0; i < values.size(); ++i)
        row.bind(static_cast<int>(i) + 1, values[i]);
    row.step();
    const std::int64_t key = row.integer(0);
    m_store.words.setLastKey(key);
    return key;
}

/// Outside a span each row is a transaction of its own.
void ServerEngine::insertInTurn(const QString& table, const QStringList& columns,
                                const std::vector<std::vector<QVariant>>& rows, const QString& statement,
                                const KeyTaker& taken) {
    if (!m_store.session.isSpanOpen() || m_store.refusesChanges)
        return Engine::insertInTurn(table, columns, rows, statement, taken);
    const QByteArray sql = insertion(m_store.words, table, columns).toUtf8();
    for (std::size_t begin = 0; begin < rows.size(); begin += rowsOfAMessage) {
        std::vector<Command> changes;
        for (std::size_t i = begin; i < std::min(rows.size(), begin + rowsOfAMessage); ++i)
            changes.push_back({sql, rows[i], false});
        m_store.session.runInTurn(changes, statement, [&](const Result& added) {
            m_store.words.setLastKey(added.integer(0, 0));
            taken(added.integer(0, 0));
        });
    }
}

std::unique_ptr<EngineSpan> ServerEngine::beginSpan(const QString& statement, Sees sees) {
    return std::make_unique<ServerSpan>(m_store, statement, sees);
}

void ServerEngine::holdRow(const QString& table, std::int64_t key) {
    const QString sql = u"SELECT 1 FROM %1 WHERE %2 = %3 FOR UPDATE"_s.arg(
        quotedName(table), m_store.words.rowKey(table), QString::number(key));
    m_store.session.runOne({sql.toUtf8(), {}, false}, Access::Changes, sql);
}

QStringList ServerEngine::columns(const QString& table) {
    QStringList names;
    if (const Catalogue::Table* known = m_store.catalogue.table(table)) {
        for (const Catalogue::Column& column : known->columns)
            names << column.name;
    }
    return names;
}

QString ServerEngine::declaredType(const QString& table, const QString& column) {
    const Catalogue::Column* known = m_store.catalogue.column(table, column);
    return known ? known->declaredType : QString();
}

bool ServerEngine::isKey(const QString& table, const QString& column) {
    const Catalogue::Column* known = m_store.catalogue.column(table, column);
    return known && known->isKey;
}

std::vector<std::int64_t> ServerEngine::lastKeys(const QStringList& tables) {
    QHash<QString, std::int64_t> counters;
    for (Query row(*this, u"SELECT key_Table, key_Last FROM KeyCounter"_s); row.step();)
        counters.insert(row.value(0, asText).toString().toCaseFolded(), row.integer(1));
    std::vector<std::int64_t> keys;
    for (const QString& table : tables)
        keys.push_back(counters.value(table.toCaseFolded()));
    return keys;
}

/// The mark is the comment of the tables' schema.
std::int64_t ServerEngine::version() {
    return number(*this, u"SELECT obj_description(current_schema()::regnamespace, 'pg_namespace')::bigint"_s);
}

void ServerEngine::migrate(const QStringList& statements, std::int64_t version, const QString& source) {
    ServerSpan whole(m_store, source);
    for (const QString& statement : statements)
        run(*this, statement);
    run(*this,
        u"DO $mark$ BEGIN EXECUTE format('COMMENT ON SCHEMA %I IS %L', current_schema(), '%1'); END $mark$"_s
            .arg(version));
    whole.commit();
    m_store.catalogue.read(m_store.session);
}

/// Until the end of the transaction.
QByteArray setting(const char* name, const QString& value) {
    return "SET LOCAL sorvanto." + QByteArray(name) + " = " + quotedText(value).toUtf8();
}

/// Who works on the records holds this lock, so that nobody changes the tables meanwhile (benches.sql).
constexpr char takePart[] = "SELECT pg_try_advisory_lock_shared(2, 0)";

/// See benches.sql.
QByteArray called(const char* function, const QString& name) {
    return "SELECT " + QByteArray(function) + '(' + quotedText(name).toUtf8() + ')';
}

/// Also once a lost line was opened again.
void ServerEngine::greetWithNames() {
    QByteArrayList all = m_writer;
    for (const QString& name : m_names)
        all << called("keep_name", name);
    m_store.session.setGreeting(all);
}

bool ServerEngine::keepName(const QString& name) {
    if (m_names.contains(name))
        return true;
    const Command lock{called("keep_name", name), {}, false};
    if (m_store.session.runOne(lock, Access::Reads, {}).bytes(0, 0) != "t")
        return false;
    m_names << name;
    greetWithNames();
    return true;
}

void ServerEngine::giveUpName(const QString& name) {
    if (m_names.removeAll(name) == 0)
        return;
    greetWithNames();
    m_store.session.runOne({called("give_up_name", name), {}, false}, Access::Reads, {});
}

QString ServerEngine::nameKeeper(const QString& name) {
    const Result keeper = m_store.session.runOne({called("name_keeper", name), {}, false}, Access::Reads, {});
    return keeper.rows() == 0 ? QString() : keeper.text(0, 0);
}

const QString notReady = u"The server is not ready: its records are being brought up to date"_s;

/// The lock first: what is answered while it is held stays so.
void ServerEngine::setAdmission(const QString& question,
                                const std::function<QString(const QString& answer)>& refusal) {
    m_store.session.setAdmission(
        {Command{takePart}, Command{question.toUtf8()}}, [refusal](const std::vector<Result>& answers) {
            return answers.front().bytes(0, 0) == "t" ? refusal(answers.back().text(0, 0)) : notReady;
        });
}

bool ServerEngine::tellWriter(const HistoryContext& writer) {
    const QString name = writer.person + u' ' + writer.program;
    m_minutesAhead = writer.minutesAhead;
    m_writer = {"SET sorvanto.person = " + quotedText(writer.person).toUtf8(),
                "SET sorvanto.program = " + quotedText(writer.program).toUtf8(),
                "SET application_name = " + quotedText(name).toUtf8(), takePart};
    greetWithNames();
    std::vector<Command> commands;
    for (const QByteArray& sql : m_writer)
        commands.push_back({sql, {}, false});
    const Result held = m_store.session.run(commands, Access::Reads, {}).back();
    if (held.bytes(0, 0) != "t")
        throw RuntimeError(error::general, notReady, u"Database"_s);
    return true;
}

/// A connection may last from winter into summer: how far its clock is ahead of UTC is told with each change.
QByteArrayList ServerEngine::toldBeforeChanges() const {
    QByteArrayList told = m_deed;
    if (m_minutesAhead)
        told << setting("zone", QString::number(m_minutesAhead()));
    return told;
}

void ServerEngine::tellDeed(const QString& deed, const QString& note) noexcept {
    m_deed = {setting("deed", deed), setting("note", note)};
}

void ServerEngine::beginReadAhead(const QStringList& statements) {
    QByteArrayList all;
    for (const QString& statement : statements)
        all << statement.toUtf8();
    m_store.session.expect(all);
    m_store.readAhead = ++m_readAheads;
}

void ServerEngine::endReadAhead() {
    m_store.session.expect({});
    m_store.readAhead = 0;
}

/// What a file's connection calculates, the server does by itself.
void ServerEngine::addFunction(const char* name, FunctionResult, EngineFunction) {
    throw RuntimeError(error::general, u"The server takes no function (%1)"_s.arg(QString::fromUtf8(name)),
                       u"Database"_s);
}

/// The server checks its pages whenever it reads one, and relations with each change. What it takes as it is: counters of
/// keys, and whether its triggers are on.
QStringList ServerEngine::problems(const Cancelled&) {
    QStringList problems;
    const auto add = [&](const QString& sql, const QString& sentence) {
        Query row(*this, sql, sql);
        while (row.step())
            problems << sentence.arg(row.value(0, asText).toString());
    };
    for (const QString& table : m_store.catalogue.tables()) {
        const QString key = m_store.catalogue.key(table);
        if (!key.isEmpty())
            add(u"SELECT key_Table FROM KeyCounter WHERE key_Table = %1 AND key_Last < (SELECT max(%2) FROM %3)"_s
                    .arg(quotedText(table), quotedName(key), quotedName(table)),
                u"Keys of %1 that are in use would be given out once more"_s);
    }
    add(u"SELECT tgname || ' of ' || relname FROM pg_trigger JOIN pg_class ON pg_class.oid = tgrelid WHERE "
        "relnamespace = current_schema()::regnamespace AND NOT tgisinternal AND tgenabled <> 'O' ORDER BY 1"_s,
        u"The trigger %1 is turned off"_s);
    add(u"SELECT key_Table FROM KeyCounter WHERE 5 > (SELECT count(*) FROM pg_trigger JOIN pg_class ON "
        "pg_class.oid = tgrelid WHERE relname = key_Table AND relnamespace = current_schema()::regnamespace AND "
        "NOT tgisinternal) ORDER BY 1"_s,
        u"Triggers of %1 are missing"_s);
    return problems;
}

}  // namespace

std::unique_ptr<Engine> openServer(const QString& address, std::shared_ptr<Waiter> waiter) {
    readAddress(address);  // refuses a password
    return std::make_unique<ServerEngine>(address, std::move(waiter));
}

}  // namespace platform::postgres
