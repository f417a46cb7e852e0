// Puts a server in the place of the file, for the whole test program.
#include "support/RecordsPlace.h"
#include "support/TestServer.h"

#include "platform/data/postgres/Catalogue.h"
#include "platform/data/postgres/OwnStatement.h"
#include "platform/data/postgres/Session.h"

#include <QFile>
#include <utility>

namespace {

using namespace Qt::StringLiterals;

class ServerPlace : public support::RecordsPlace {
public:
    ServerPlace() { setCurrent(*this); }

    QString location(const QString&) const override { return support::serverAddress(); }
    void create(const QString& file) override {
        support::createDatabaseFile(file);
        support::makeServerRecords(file);
        QFile::remove(file);
        if (std::exchange(m_isNew, false)) {
            platform::postgres::Session session(support::serverAddress());
            m_catalogue.read(session);
        }
    }
    support::Rows run(const QString&, const QString& statements) override {
        return support::runOnServer(platform::postgres::ownStatement(statements, m_catalogue).sql);
    }
    support::Rows runInBulk(const QString& file, const QString& statements) override {
        return run(file, u"SET session_replication_role = replica; "_s + statements);
    }
    void runAtOnce(const QString& file, const QString& statements) override { run(file, statements); }
    void addSample(const QString& file) override {
        support::createDatabaseFile(file);
        RecordsPlace::addSample(file);
        support::addServerRecords(file);
        QFile::remove(file);
    }
    void refuse(const QString& file, const Refusal& refusal) override {
        run(file,
            u"CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
            "'BEGIN RAISE foreign_key_violation USING MESSAGE = ''no room''; END'; CREATE TRIGGER refuse BEFORE %1 ON %2 FOR EACH ROW WHEN (NEW.%3 = '%4') EXECUTE FUNCTION refuse()"_s
                .arg(refusal.event, refusal.table, refusal.column, refusal.value));
    }
    void doAfterInsert(const QString& file, const QString& table, const QString& statement) override {
        run(file,
            u"CREATE FUNCTION meddle() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN %2; RETURN NULL; END$$; "
            "CREATE TRIGGER meddle AFTER INSERT ON %1 FOR EACH ROW EXECUTE FUNCTION meddle()"_s.arg(
                table, statement));
    }
    void giveIdentity(const QString&) override {}  // they are made with one
    void slowDown(const QString& file, const QString& table) override {
        run(file, u"CREATE FUNCTION work() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN PERFORM sum(i) FROM "
                  "generate_series(1, 3000) AS i; RETURN NULL; END$$; "
                  "CREATE TRIGGER slow AFTER UPDATE ON %1 FOR EACH ROW EXECUTE FUNCTION work()"_s.arg(table));
    }
    void beginHistory(const QString& file) override {
        unlockHistory(file);
        run(file,
            u"DELETE FROM History; TRUNCATE \"HistoryChain\"; SELECT setval('history_number', 1, false); "
            "SELECT begin_chains(); ALTER TABLE History ENABLE TRIGGER USER"_s);
    }
    void unlockHistory(const QString& file) override {
        run(file, u"ALTER TABLE History DISABLE TRIGGER USER"_s);
    }
    void moveHistory(const QString& file, const QString& span) override {
        unlockHistory(file);
        run(file,
            u"UPDATE History SET hst_When = "
            "to_char(hst_When::text::timestamp + '%1'::interval, 'YYYY-MM-DD HH24:MI:SS.MS')"_s.arg(span));
    }

private:
    bool m_isNew = true;
    platform::postgres::Catalogue m_catalogue;  ///< it is the same for each test
};

ServerPlace place;

}  // namespace
