// A database of the test's server, with the rows of the file.
#include "../DataStore.h"
#include "TestServer.h"
#include "platform/data/postgres/Catalogue.h"
#include "platform/data/postgres/OwnStatement.h"

namespace support {
namespace {

using namespace Qt::StringLiterals;
using namespace platform::postgres;

class ServerStore : public DataStore {
public:
    ServerStore() {
        Session session(location());
        m_catalogue.read(session);
    }
    QString location() const override { return serverAddress(); }
    Rows run(const QString& statements) override {
        return runOnServer(ownStatement(statements, m_catalogue).sql);
    }
    void takeAll() override {
        run(u"BEGIN; LOCK TABLE Log, RXs, Chemical IN ACCESS EXCLUSIVE MODE; COMMIT"_s);
    }
    void breakTable(const QString& table) override {
        run(u"CREATE FUNCTION no() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE ''no''; END'; "
            "CREATE TRIGGER no BEFORE UPDATE ON %1 FOR EACH ROW EXECUTE FUNCTION no()"_s.arg(table));
    }
    QString otherWays() const override { return u"SET enable_hashjoin = off"_s; }

private:
    Catalogue m_catalogue;
};

}  // namespace

std::unique_ptr<DataStore> openStore(const QString& file) {
    makeServerRecords(file);
    return std::make_unique<ServerStore>();
}

}  // namespace support
