// Steps applied to records on a server: all of them or none, as with a file.
#include "TempProgramFolder.h"
#include "TestServer.h"
#include "db/ServerUpdate.h"
#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

class UpdateStepsTest : public testing::Test {
protected:
    void SetUp() override { support::makeEmptyServer(); }
    void updates(const QByteArray& steps) const {
        folder.write(u"dbupdate.xml"_s, "<DatabaseUpdates>" + steps + "</DatabaseUpdates>");
    }
    ServerUpdate apply() const {
        return updateServer(support::serverOwnerAddress(), folder.path(u"dbupdate.xml"_s));
    }
    /// What an update was refused with; empty when it was done.
    std::string refusal() const {
        try {
            apply();
        } catch (const platform::RuntimeError& failure) {
            return failure.description().toStdString();
        }
        return {};
    }
    static std::string asked(const QString& statement) {
        return support::rowsText(support::runOnServer(statement)).toStdString();
    }
    /// Neither a table of the steps, nor a version, nor a mark of one.
    static std::string left() {
        return asked(u"SELECT (SELECT count(*) FROM pg_class WHERE relname = 'Shelf'), \"opt_Version\", "
                     "obj_description('sorvanto'::regnamespace) FROM \"Options\""_s);
    }

    static constexpr auto two =
        "<Step From=\"1.2\" To=\"1.3\" Engine=\"server\">"
        "<Statement>CREATE TABLE \"Shelf\" (\"Place\" \"TEXT(20)\")</Statement>"
        "<Statement>INSERT INTO \"Shelf\" VALUES ('upper')</Statement></Step>"
        "<Step From=\"1.3\" To=\"2\" Engine=\"server\">"
        "<Statement>ALTER TABLE \"Shelf\" ADD COLUMN \"Level\" \"SMALLINT\"</Statement></Step>";
    support::TempProgramFolder folder;
};

TEST_F(UpdateStepsTest, AllAreAppliedAndTheVersionIsWritten) {
    updates(two);
    const ServerUpdate done = apply();
    EXPECT_EQ(done.from, "1.2");
    EXPECT_EQ(done.to, "2");
    EXPECT_EQ(asked(u"SELECT \"Place\", \"Level\" FROM \"Shelf\""_s), "upper|NULL");
    EXPECT_EQ(left(), "1|2.0|20000");
}

TEST_F(UpdateStepsTest, StepsThatAreDoneAreNotRunTwice) {
    updates(two);
    apply();
    EXPECT_EQ(apply().from, "2");
    EXPECT_EQ(asked(u"SELECT count(*) FROM \"Shelf\""_s), "1");
}

TEST_F(UpdateStepsTest, AFailedStatementTakesAllStepsBack) {
    const std::string before = left();
    updates(QByteArray(two).replace("ADD COLUMN \"Level\" \"SMALLINT\"", "ADD COLUMN"));
    EXPECT_NE(refusal(), "");
    EXPECT_EQ(left(), before);
    updates(two);
    EXPECT_EQ(refusal(), "") << "the next one is done";
}

TEST_F(UpdateStepsTest, TwoStatementsInAnElementAreRefused) {
    const std::string before = left();
    for (const char* tail : {"; DELETE FROM \"Shelf\"", ";;DELETE FROM \"Shelf\";", "; COMMIT"}) {
        updates(QByteArray(two).replace("VALUES ('upper')", QByteArray("VALUES ('up;per')") + tail));
        EXPECT_NE(refusal(), "") << tail;
        EXPECT_EQ(left(), before) << tail;
    }
}

TEST_F(UpdateStepsTest, AStepCantEndItsTransactionInDisguise) {
    const std::string before = left();
    for (const char* words :
         {"COMMIT", "ROLLBACK", "ABORT", "END", "SAVEPOINT a", "START TRANSACTION", "PREPARE TRANSACTION 'a'",
          "/* */ COMMIT", "/* /* */ */ COMMIT", "-- a\n/* /* b */ c */ abort"}) {
        updates(QByteArray(two).replace("INSERT INTO \"Shelf\" VALUES ('upper')", words));
        EXPECT_NE(refusal().find("not the step's to run"), std::string::npos) << words;
        EXPECT_EQ(left(), before) << words;
    }
}

TEST_F(UpdateStepsTest, ABodyOfAFunctionIsOneStatementAndCantEndItEither) {
    const std::string before = left();
    const auto body = [](const char* words) {
        return QByteArray("<Step From=\"1.2\" To=\"1.3\" Engine=\"server\"><Statement>CREATE TABLE \"Shelf\" "
                          "(\"Place\" \"TEXT(20)\")</Statement><Statement>DO $$BEGIN PERFORM 1; ") +
               words + " END$$</Statement></Step>";
    };
    updates(body("COMMIT;"));
    EXPECT_NE(refusal(), "");
    EXPECT_EQ(left(), before);
    updates(body("PERFORM 2;"));
    EXPECT_EQ(refusal(), "");
}

TEST_F(UpdateStepsTest, BrokenRelationsAreRefused) {
    updates("<Step From=\"1.2\" To=\"1.3\" Engine=\"server\"><Statement>"
            "INSERT INTO \"RXs\" (\"LogID\", \"PatientID\") VALUES (12345, 54321)</Statement></Step>");
    const std::string before = left();
    EXPECT_NE(refusal(), "");
    EXPECT_EQ(asked(u"SELECT count(*) FROM \"RXs\""_s), "0");
    EXPECT_EQ(left(), before);
}

TEST_F(UpdateStepsTest, ABrokenFileChangesNothing) {
    const std::string before = left();
    folder.write(u"dbupdate.xml"_s, "<DatabaseUpdates><Step");
    EXPECT_NE(refusal(), "");
    EXPECT_EQ(left(), before);
}

TEST_F(UpdateStepsTest, TheDeliveredStepsLeaveANewServerAsItIs) {
    const std::string before = left();
    const ServerUpdate done = updateServer(support::serverOwnerAddress(),
                                           QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/dbupdate.xml"));
    EXPECT_EQ(done.from, done.to);
    EXPECT_EQ(left(), before);
}

}  // namespace
}  // namespace sorvanto
