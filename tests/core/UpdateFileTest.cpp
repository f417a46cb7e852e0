// Reading dbupdate.xml and choosing the steps.
#include "db/UpdateFile.h"
#include "TempProgramFolder.h"
#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

namespace {

using namespace sorvanto;

struct VersionCase {
    const char* text;
    std::int64_t number;
};
class Versions : public testing::TestWithParam<VersionCase> {};

TEST_P(Versions, AreReadAsDecimals) {
    EXPECT_EQ(versionNumber(GetParam().text), GetParam().number) << GetParam().text;
}
INSTANTIATE_TEST_SUITE_P(All, Versions,
                         testing::Values(VersionCase{"1", 10000}, VersionCase{"1.1", 11000},
                                         VersionCase{"1.10", 11000}, VersionCase{"1.01", 10100},
                                         VersionCase{" 2 ", 20000}, VersionCase{"0", 0}, VersionCase{"", -1},
                                         VersionCase{"one", -1}, VersionCase{"1.2.3", -1},
                                         VersionCase{"-1", -1}, VersionCase{"1.", -1},
                                         VersionCase{"1.12345", -1}));

class UpdateFileTest : public testing::Test {
protected:
    std::vector<UpdateStep> read(const QByteArray& content) {
        folder.write("dbupdate.xml", content);
        return readUpdateFile(folder.path() + "\\dbupdate.xml");
    }
    static QByteArray step(const char* from, const char* to, const char* statement = "SELECT 1") {
        return QByteArray("<Step From=\"") + from + "\" To=\"" + to + "\"><Statement>" + statement +
               "</Statement></Step>";
    }
    static QByteArray file(const QByteArray& steps) {
        return "<DatabaseUpdates>" + steps + "</DatabaseUpdates>";
    }
    support::TempProgramFolder folder;
};

TEST_F(UpdateFileTest, StepsKeepTheirStatementsInOrder) {
    const auto steps =
        read(file("<Step From=\"1\" To=\"2\"><Statement> A </Statement><Statement>B</Statement></Step>" +
                  step("2", "2.5", "C")));
    ASSERT_EQ(steps.size(), 2U);
    EXPECT_EQ(steps[0].statements, (QStringList{"A", "B"}));
    EXPECT_EQ(steps[1].statements, QStringList{"C"});
    EXPECT_EQ(steps[1].to, "2.5");
}

TEST_F(UpdateFileTest, TheChainStartsAtTheVersionAndGoesToTheNewest) {
    const auto all = read(file(step("2", "3") + step("1", "2") + step("7", "8")));
    const auto fromOne = stepsFrom(all, versionNumber("1"));
    ASSERT_EQ(fromOne.size(), 2U);
    EXPECT_EQ(fromOne[1].to, "3");
    EXPECT_EQ(stepsFrom(all, versionNumber("2")).size(), 1U);
    EXPECT_TRUE(stepsFrom(all, versionNumber("3")).empty());
    EXPECT_TRUE(stepsFrom(all, -1).empty());
}

TEST_F(UpdateFileTest, BrokenFilesAreRefused) {
    for (const QByteArray& broken :
         {QByteArray("garbage"), QByteArray(), QByteArray("<Updates/>"), file("<Step From=\"1\"/>"),
          file(step("2", "1")), file(step("1", "1")), file(step("one", "2")), file(step("1", "2", "  ")),
          file("<Step From=\"1\" To=\"2\"/>"), file(step("1", "2") + step("1.0", "3"))})
        EXPECT_THROW(read(broken), platform::RuntimeError) << broken.constData();
}

TEST_F(UpdateFileTest, CommentsDoNotHideTheEndOfATransaction) {
    for (const char* statement : {"/* x */ COMMIT", "/**//* two\nlines */\tcommit", "-- why\n  END",
                                  "/* a */ -- b\n/* c */ ROLLBACK", "/*-*/BEGIN"})
        EXPECT_THROW(read(file(step("1", "2", statement))), platform::RuntimeError) << statement;
    for (const char* statement :
         {"/* COMMIT */ SELECT 1", "-- COMMIT\nSELECT 1", "SELECT 'COMMIT' /* END */"})
        EXPECT_NO_THROW(read(file(step("1", "2", statement)))) << statement;
}

TEST_F(UpdateFileTest, AStepWithoutAVersionIsNamedAsSuch) {
    for (const char* attributes : {"From=\"1\"", "To=\"2\"", ""}) {
        try {
            read(file(QByteArray("<Step ") + attributes + "><Statement>SELECT 1</Statement></Step>"));
            ADD_FAILURE() << attributes << " was read";
        } catch (const platform::RuntimeError& failure) {
            EXPECT_EQ(failure.description(), "dbupdate.xml: a step without From or To");
        }
    }
}

TEST_F(UpdateFileTest, TheDeliveredFileIsRead) {
    EXPECT_NO_THROW(readUpdateFile(QString(SORVANTO_SOURCE_DIR) + "/data/dbupdate.xml"));
}

}  // namespace
