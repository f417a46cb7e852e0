// The server of the tests behind a line, with a disturber for each test: whatever the suites of the screens expect holds as
// well where each answer comes late and things happen in each wait.
//   SORVANTO_SEED=7   other things
#include "Disturber.h"
#include "RecordsPlace.h"
#include "TestServer.h"

#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <optional>

namespace {

/// What the tests themselves ask goes past the line.
class LatePlace : public support::RecordsPlace {
public:
    LatePlace() { setCurrent(*this); }
    ~LatePlace() override { setCurrent(m_server); }
    LatePlace(const LatePlace&) = delete;
    LatePlace& operator=(const LatePlace&) = delete;

    QString location(const QString&) const override { return m_line.address(); }
    void create(const QString& file) override { m_server.create(file); }
    support::Rows run(const QString& file, const QString& statements) override {
        return m_server.run(file, statements);
    }
    void runAtOnce(const QString& file, const QString& statements) override {
        m_server.runAtOnce(file, statements);
    }
    support::Rows runInBulk(const QString& file, const QString& statements) override {
        return m_server.runInBulk(file, statements);
    }
    void addSample(const QString& file) override { m_server.addSample(file); }
    void refuse(const QString& file, const Refusal& refusal) override { m_server.refuse(file, refusal); }
    void doAfterInsert(const QString& file, const QString& table, const QString& statement) override {
        m_server.doAfterInsert(file, table, statement);
    }
    void slowDown(const QString& file, const QString& table) override { m_server.slowDown(file, table); }
    void giveIdentity(const QString& file) override { m_server.giveIdentity(file); }
    void beginHistory(const QString& file) override { m_server.beginHistory(file); }
    void unlockHistory(const QString& file) override { m_server.unlockHistory(file); }
    void moveHistory(const QString& file, const QString& span) override { m_server.moveHistory(file, span); }

    support::ServerProxy& line() { return m_line; }

private:
    support::RecordsPlace& m_server = current();
    support::ServerProxy m_line{support::serverAddress()};
};

class Disturbed : public testing::EmptyTestEventListener {
public:
    explicit Disturbed(LatePlace& place) : m_place(place) {}
    void OnTestStart(const testing::TestInfo& test) override {
        std::seed_seq seeds{static_cast<unsigned>(qEnvironmentVariableIntValue("SORVANTO_SEED")),
                            static_cast<unsigned>(qHash(QByteArray(test.name()), 0))};
        unsigned seed = 0;
        seeds.generate(&seed, &seed + 1);
        m_disturber = std::make_unique<Disturber>(m_place.line(), seed);
    }
    void OnTestEnd(const testing::TestInfo& test) override {
        if (test.result()->Failed())
            std::cout << "in the waits: " << m_disturber->orders().join(QStringLiteral(", ")).toStdString()
                      << "\n";
        m_disturber.reset();
    }
    void OnTestProgramEnd(const testing::UnitTest&) override {
        std::cout << "in all waits: " << Disturber::account().toStdString() << "\n";
    }

private:
    LatePlace& m_place;
    std::unique_ptr<Disturber> m_disturber;
};

/// Once the program's objects of the test library are there.
class Lateness : public testing::Environment {
public:
    void SetUp() override {
        m_place.emplace();
        m_listener = new Disturbed(*m_place);
        testing::UnitTest::GetInstance()->listeners().Append(m_listener);
    }
    void TearDown() override { m_place.reset(); }

private:
    std::optional<LatePlace> m_place;
    Disturbed* m_listener = nullptr;  ///< owned by the list
};

const testing::Environment* const lateness = testing::AddGlobalTestEnvironment(new Lateness);

}  // namespace
