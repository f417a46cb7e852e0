// Puts a server in the place of the file, for the whole test program.
#include "support/RecordsPlace.h"
#include "support/TestServer.h"

#include "platform/data/postgres/Catalogue.h"
#include "platform/data/postgres/OwnStatement.h"
#include "platform/data/postgres/Session.h"

#include <QFile>

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
        platform::postgres::Session session(support::serverAddress());
        m_catalogue.read(session);
    }
    support::Rows run(const QString&, const QString& statements) override {
        return support::runOnServer(platform::postgres::ownStatement(statements, m_catalogue).sql);
    }
    support::Rows runInBulk(const QString& file, const QString& statements) override {
        return run(file, u"SET session_replication_role = replica; "_s + statements);
    }
    void refuse(const QString& file, const Refusal& refusal) override {
        run(file,
            u"CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE ''no room''; END'; "
            "CREATE TRIGGER refuse BEFORE %1 ON %2 FOR EACH ROW WHEN (NEW.%3 = '%4') EXECUTE FUNCTION refuse()"_s
                .arg(refusal.event, refusal.table, refusal.column, refusal.value));
    }
    void doAfterInsert(const QString& file, const QString& table, const QString& statement) override {
        run(file,
            u"CREATE FUNCTION meddle() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN %2; RETURN NULL; END$$; "
            "CREATE TRIGGER meddle AFTER INSERT ON %1 FOR EACH ROW EXECUTE FUNCTION meddle()"_s.arg(
                table, statement));
    }
    void unlockHistory(const QString& file) override {
        run(file, u"ALTER TABLE History DISABLE TRIGGER USER"_s);
    }

private:
    platform::postgres::Catalogue m_catalogue;
};

ServerPlace place;

}  // namespace
