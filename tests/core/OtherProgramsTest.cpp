// What the start finds out about other programs: on its folder, on the open database, on a copy of it.
#include "TestProgram.h"
#include "core/InstanceLock.h"
#include "core/Parts.h"
#include "db/DatabaseFile.h"
#include "platform/data/Connection.h"
#include "shared/basMain.h"
#include "support/Hindrances.h"
#include "support/OtherProcess.h"

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class OtherProgramsTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        createSample(databasePath());
        openDB();
        identity = sqlText("SELECT fid_Identity FROM FileIdentity");
        qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    }
    void TearDown() override {
        qunsetenv("XDG_RUNTIME_DIR");
        TestProgram::TearDown();
    }
    InstanceState found() const { return realParts(context).previousInstance(); }

    QString identity;
};

TEST_F(OtherProgramsTest, NobodyElseMeansAllMayBeWritten) {
    EXPECT_FALSE(found().runs);
    EXPECT_EQ(found().readingOnly, "");
}

TEST_F(OtherProgramsTest, OneOnTheSameDatabaseRuns) {
    const support::OtherProcess other([&] {
        static InstanceLock lock;
        const InstanceState state = lock.takeDatabase(databasePath());
        return !state.runs && state.readingOnly.isEmpty();
    });
    EXPECT_TRUE(found().runs);
}

TEST_F(OtherProgramsTest, OneOnACopyLeavesThisOneToBeRead) {
    const support::OtherProcess other([&] {
        static InstanceLock lock;
        return lock.takeIdentity(identity).readingOnly.isEmpty();
    });
    EXPECT_FALSE(found().runs);
    EXPECT_EQ(found().readingOnly,
              "Another program has this database open under another name, or a copy of it.");
}

TEST_F(OtherProgramsTest, AFileThatCanNotBeWrittenIsOnlyRead) {
    ASSERT_EQ(::chmod(databasePath().toLocal8Bit().constData(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
    const support::OrdinaryUser user;
    basMain::gConnection = std::make_shared<platform::Connection>();
    openDB();
    EXPECT_EQ(found().readingOnly, databasePath() + " can not be written.");
}

}  // namespace
