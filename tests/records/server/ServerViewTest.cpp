// What several statements read on a server is of one moment where that is asked for.
#include "history/HistoryTest.h"

#include "platform/data/TableReader.h"

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class ServerViewTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        other = open(u"mlopez@bench7"_s);
        run("INSERT INTO Chemical (chm_Name, chm_NDC, chm_Units, chm_Cost) VALUES ('Zinc', '1', 'GMS', 1)");
        run("INSERT INTO Chemical (chm_Name, chm_NDC, chm_Units, chm_Cost) VALUES ('Talc', '2', 'GMS', 1)");
    }
    QString stored() const {
        return outside(u"SELECT chm_Name, chm_Cost FROM Chemical ORDER BY ChemicalID"_s);
    }
    std::int64_t count() const {
        return platform::number(connection->engine(), u"SELECT count(*) FROM Chemical"_s);
    }
    static std::int32_t failure(const std::function<void()>& action) {
        try {
            action();
        } catch (const platform::RuntimeError& met) {
            return met.number();
        }
        return 0;
    }

    std::shared_ptr<platform::Connection> other;
};

TEST_F(ServerViewTest, ALookReadsAsOfOneMomentAndChangesNothing) {
    {
        const auto look = connection->engine().beginLook();
        EXPECT_EQ(count(), 2);
        other->execute(u"INSERT INTO Chemical (chm_Name) VALUES ('Urea')"_s);
        EXPECT_EQ(count(), 2);
        EXPECT_EQ(failure([&] { run("DELETE FROM Chemical"); }), platform::error::permissionDenied);
    }
    EXPECT_EQ(count(), 3);
    run("DELETE FROM Chemical WHERE chm_Name = 'Urea'");
    EXPECT_EQ(count(), 2);
}

TEST_F(ServerViewTest, AListReadsItsColumnsByTheProgramsOwnWords) {
    outside(
        u"INSERT INTO Log (LogID, log_Name, log_Results) VALUES (1, 'Gel', '<a Value=\"U\"/>'), (2, 'Gel', NULL)"_s);
    platform::TableReader reader(
        connection, u"Log"_s, u"LogID"_s,
        {u"log_Name"_s, u"CASE WHEN instr(log_Results, '=\"U\"') > 0 THEN 1 ELSE 0 END"_s});
    const auto rows = reader.next(9);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].values, (std::vector<QVariant>{u"Gel"_s, 1}));
    EXPECT_EQ(rows[1].values, (std::vector<QVariant>{u"Gel"_s, 0}));
    EXPECT_TRUE(reader.next(9).empty());
}

}  // namespace
