#include "platform/data/postgres/WholeServer.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/StatementWriter.h"
#include "platform/data/Waiter.h"
#include "platform/data/postgres/Address.h"
#include "platform/data/postgres/ServerStore.h"
#include "platform/data/postgres/StoredForm.h"

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

constexpr int rowsAtOnce = 500;

/// Kept by the server itself: where keys and chains go on.
const QStringList counters{u"HistoryChain"_s, u"KeyCounter"_s};

QString listed(const QStringList& columns) {
    QStringList names;
    for (const QString& column : columns)
        names << quotedName(column);
    return names.join(u", "_s);
}

/// Ends a wait for the server as soon as the work is cancelled.
class Patience : public Waiter {
public:
    explicit Patience(Cancelled cancelled) : m_cancelled(std::move(cancelled)) {}
    bool goesOn(int) override { return !m_cancelled || !m_cancelled(); }
    void ended() override {}
    void foundSaved() override {}

private:
    Cancelled m_cancelled;
};

class WholeServer final : public WholeStore {
public:
    WholeServer(const QString& address, bool fills, const Cancelled& cancelled = {});
    ~WholeServer() override;

    QStringList tables() override;
    QStringList columns(const QString& table) override;
    std::int64_t rowCount(const QString& table) override;
    void read(const QString& table, const QStringList& columns, const RowTaker& taker) override;
    QMap<QString, std::int64_t> lastKeys() override;
    void clear(const QStringList& tables) override;
    void add(const QString& table, const QStringList& columns, const std::vector<StoredRow>& rows) override;
    void setLastKeys(const QMap<QString, std::int64_t>& keys) override;
    void commit() override;

private:
    Result ask(const QString& sql, std::vector<QVariant> parameters = {}) {
        return m_store.session.runOne({sql.toUtf8(), std::move(parameters), false}, Access::Reads, {});
    }
    void run(const QString& sql, std::vector<QVariant> parameters = {}) {
        m_store.session.runOne({sql.toUtf8(), std::move(parameters), false}, Access::Changes, {});
    }
    void holdTables();
    void refuseUnlessOwner();
    void refuseAtWork();
    void takeTables();
    void setTriggers(const QString& able);
    void insert(const QString& table, const QStringList& columns, const std::vector<StoredRow>& rows);
    void setCounter(const QString& sequence, std::int64_t last);
    void beginChains();
    QString expression(const QString& table, const QString& column) const;
    std::vector<StoredRow> rowsOf(const Result& result, const QString& table,
                                  const QStringList& columns) const;

    ServerStore m_store;
};

WholeServer::WholeServer(const QString& address, bool fills, const Cancelled& cancelled)
    : m_store(address, std::make_shared<Patience>(cancelled)) {
    if (fills)
        refuseUnlessOwner();
    m_store.session.control(fills ? "BEGIN READ WRITE" : "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY",
                            {});
    m_store.session.countSpan(+1);
    if (fills)
        takeTables();
    else
        holdTables();
}

WholeServer::~WholeServer() {
    try {
        if (m_store.session.isSpanOpen())
            m_store.session.control("ROLLBACK", {});
    } catch (const RuntimeError&) {
        // The line is lost, and with it all that was not committed.
    }
}

/// The moment is that of the first statement that looks at rows. From before it on nobody empties a table: those who began
/// to read before would find it empty.
void WholeServer::holdTables() {
    const QString lock = u"LOCK TABLE %1 IN ACCESS SHARE MODE"_s.arg(listed(tables() + counters));
    m_store.session.control(lock.toUtf8(), {});  // as a command of its own it would be given up behind it
    ask(u"SELECT 1"_s);
}

void WholeServer::refuseUnlessOwner() {
    const Result owner =
        ask(u"SELECT pg_has_role(nspowner, 'USAGE') FROM pg_namespace WHERE nspname = current_schema()"_s);
    if (owner.rows() == 0 || owner.bytes(0, 0) != "t")
        throw RuntimeError(error::permissionDenied,
                           u"That is for the owner of the tables: the address begins with "
                           "postgresql://sorvanto_owner@"_s,
                           u"Copy"_s);
}

/// Every bench holds this lock as long as its program works on the records: what it has read must not become others.
void WholeServer::refuseAtWork() {
    if (ask(u"SELECT pg_try_advisory_xact_lock(2, 0)"_s).bytes(0, 0) == "t")
        return;
    const Result benches = ask(u"SELECT bench FROM benches()"_s);
    QStringList names;
    for (int row = 0; row < benches.rows(); ++row)
        names << benches.text(row, 0);
    const QString why =
        names.isEmpty()
            ? u"Another program replaces these records at this moment: try again once it has ended"_s
            : u"Benches work on these records (%1): close the program there first"_s.arg(names.join(u", "_s));
    throw RuntimeError(error::permissionDenied, why, u"Copy"_s);
}

/// Nobody reads records that are half there.
void WholeServer::takeTables() {
    refuseAtWork();
    QStringList all = tables() + counters;
    run(u"SET LOCAL idle_in_transaction_session_timeout = 0"_s);
    run(u"LOCK TABLE %1 IN ACCESS EXCLUSIVE MODE"_s.arg(listed(all)));
    setTriggers(u"DISABLE"_s);
}

void WholeServer::setTriggers(const QString& able) {
    for (const QString& table : tables())
        run(u"ALTER TABLE %1 %2 TRIGGER USER"_s.arg(quotedName(table), able));
}

QStringList WholeServer::tables() {
    QStringList all = m_store.catalogue.tables();
    for (const QString& counter : counters)
        all.removeAll(counter);
    return all;
}

QStringList WholeServer::columns(const QString& table) {
    QStringList names;
    if (const Catalogue::Table* known = m_store.catalogue.table(table)) {
        for (const Catalogue::Column& column : known->columns)
            names << column.name;
    }
    return names;
}

std::int64_t WholeServer::rowCount(const QString& table) {
    return columns(table).isEmpty() ? 0
                                    : ask(u"SELECT count(*) FROM %1"_s.arg(quotedName(table))).integer(0, 0);
}

/// How often records were changed is counted beside the table that tells it of a file.
QString WholeServer::expression(const QString& table, const QString& column) const {
    if (column == "fid_Changes"_L1)
        return u"(SELECT last_value FROM changes)"_s;
    const Catalogue::Column* known = m_store.catalogue.column(table, column);
    const QString name = quotedName(column);
    return known && known->declaredType == "CURRENCY"_L1 ? u"trim_scale(%1)"_s.arg(name) : name;
}

std::vector<StoredRow> WholeServer::rowsOf(const Result& result, const QString& table,
                                           const QStringList& columns) const {
    QStringList types;
    for (const QString& column : columns)
        types << m_store.catalogue.column(table, column)->declaredType;
    std::vector<StoredRow> rows(static_cast<std::size_t>(result.rows()));
    for (int row = 0; row < result.rows(); ++row) {
        for (int column = 0; column < columns.size(); ++column)
            rows[static_cast<std::size_t>(row)].push_back(storedForm(result, row, column, types.at(column)));
    }
    return rows;
}

void WholeServer::read(const QString& table, const QStringList& columns, const RowTaker& taker) {
    QStringList values;
    for (const QString& column : columns)
        values << expression(table, column);
    const QString name = quotedName(table), key = m_store.catalogue.key(table);
    if (key.isEmpty()) {
        const QString all = u"SELECT %1 FROM %2 ORDER BY ctid"_s.arg(values.join(u", "_s), name);
        if (const auto rows = rowsOf(ask(all), table, columns); !rows.empty())
            taker(rows);
        return;
    }
    const QString piece = u"SELECT %1, %2 FROM %3 WHERE %2 > $1 ORDER BY %2 LIMIT %4"_s.arg(
        values.join(u", "_s), quotedName(key), name, QString::number(rowsAtOnce));
    std::int64_t last = std::numeric_limits<std::int64_t>::min();
    for (;;) {
        const Result result = ask(piece, {qint64{last}});
        if (result.rows() == 0)
            return;
        last = result.integer(result.rows() - 1, static_cast<int>(columns.size()));
        taker(rowsOf(result, table, columns));
    }
}

QMap<QString, std::int64_t> WholeServer::lastKeys() {
    const Result result =
        ask(u"SELECT \"key_Table\", \"key_Last\" FROM \"KeyCounter\" WHERE \"key_Last\" > 0 "
            "UNION ALL SELECT 'History', max(\"HistoryID\") FROM \"History\""_s);
    QMap<QString, std::int64_t> keys;
    for (int row = 0; row < result.rows(); ++row) {
        if (!result.isNull(row, 1))
            keys[result.text(row, 0)] = result.integer(row, 1);
    }
    return keys;
}

void WholeServer::clear(const QStringList& tables) {
    run(u"TRUNCATE %1"_s.arg(listed(tables + QStringList{u"HistoryChain"_s})));
}

/// All rows of the piece at once; where one is refused, one by one, so that the error names it.
void WholeServer::add(const QString& table, const QStringList& columns, const std::vector<StoredRow>& rows) {
    try {
        insert(table, columns, rows);
    } catch (const RuntimeError& failure) {
        if (rows.size() == 1)
            throw RuntimeError(failure.number(),
                               u"Row %1 of %2: %3"_s.arg(QString::fromUtf8(rows.front().front().bytes), table,
                                                         failure.description()),
                               u"Copy"_s);
        for (const StoredRow& row : rows)
            add(table, columns, {row});
    }
    if (table == "FileIdentity"_L1)
        setCounter(u"changes"_s, ask(u"SELECT \"fid_Changes\" FROM \"FileIdentity\""_s).integer(0, 0));
}

/// One array a column.
void WholeServer::insert(const QString& table, const QStringList& columns,
                         const std::vector<StoredRow>& rows) {
    QStringList arrays, names, values;
    std::vector<QVariant> parameters;
    for (const QString& column : columns) {
        const QString type = m_store.catalogue.column(table, column)->declaredType;
        parameters.emplace_back(arrayOf(rows, parameters.size(), type, column));
        const QString place = QString::number(parameters.size());
        arrays << u"$%1::text[]"_s.arg(place);
        names << u"v"_s + place;
        values << u"v%1::%2"_s.arg(place, quotedName(type));
    }
    run(u"INSERT INTO %1 (%2) SELECT %3 FROM unnest(%4) WITH ORDINALITY AS rows (%5, place) ORDER BY place"_s
            .arg(quotedName(table), listed(columns), values.join(u", "_s), arrays.join(u", "_s),
                 names.join(u", "_s)),
        std::move(parameters));
}

/// Behind the number that was given last; taken back with the transaction, unlike setval.
void WholeServer::setCounter(const QString& sequence, std::int64_t last) {
    run(u"ALTER SEQUENCE %1 RESTART WITH %2"_s.arg(sequence).arg(last));
    run(u"SELECT nextval('%1')"_s.arg(sequence));
}

void WholeServer::setLastKeys(const QMap<QString, std::int64_t>& keys) {
    run(u"UPDATE \"KeyCounter\" SET \"key_Last\" = 0"_s);
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        if (key.key() == "History"_L1)
            setCounter(u"history_number"_s, key.value());
        else
            run(u"UPDATE \"KeyCounter\" SET \"key_Last\" = %1 WHERE \"key_Table\" = %2"_s.arg(key.value())
                    .arg(quotedText(key.key())));
    }
    beginChains();
}

/// The ends of the chains, where each bench has its own and all is sealed; else the first change here begins them anew.
void WholeServer::beginChains() {
    run(u"INSERT INTO \"HistoryChain\" SELECT substring(\"hst_Person\" from '[^@]*$'), count(*), max(\"HistoryID\"), "
        "(array_agg(\"hst_Seal\" ORDER BY \"HistoryID\" DESC))[1] FROM \"History\" WHERE \"HistoryID\" >= "
        "(SELECT CASE WHEN \"hst_Note\" = 'one chain a bench' THEN \"HistoryID\" END FROM \"History\" "
        "WHERE \"hst_What\" = 'begun' ORDER BY \"HistoryID\" DESC LIMIT 1) AND NOT EXISTS (SELECT FROM \"History\" WHERE \"hst_Seal\" IS NULL) "
        "GROUP BY 1"_s);
}

void WholeServer::commit() {
    setTriggers(u"ENABLE"_s);
    run(u"ANALYZE %1"_s.arg(listed(tables())));  // so that the first statements go the right ways
    m_store.session.control("COMMIT", {});
    m_store.session.countSpan(-1);
}

}  // namespace

std::unique_ptr<WholeStore> readWholeServer(const QString& address, const Cancelled& cancelled) {
    readAddress(address);  // refuses a password
    return std::make_unique<WholeServer>(address, false, cancelled);
}

std::unique_ptr<WholeStore> fillWholeServer(const QString& address) {
    readAddress(address);
    return std::make_unique<WholeServer>(address, true);
}

}  // namespace platform::postgres
