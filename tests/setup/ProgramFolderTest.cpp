// Which folder is the program's own, place after place.
#include "setup/ProgramFolder.h"

#include "SetupTest.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

class ProgramFolderTest : public setup_test::SetupTest {
protected:
    void SetUp() override {
        SetupTest::SetUp();
        ASSERT_TRUE(QDir(path("bin")).mkpath("."));
    }
    Surroundings all() const {
        return {"/asked", path("bin"), "/from/environment", "/user/data", delivered()};
    }
};

TEST_F(ProgramFolderTest, AnArgumentGoesFirst) {
    write("bin/options.xml", "");
    EXPECT_EQ(chooseProgramFolder(all()).path, "/asked");
    EXPECT_TRUE(chooseProgramFolder(all()).fromDelivered);
}

TEST_F(ProgramFolderTest, ThenTheExecutablesFolderWhereOneOfTheProgramsFilesLies) {
    Surroundings surroundings = all();
    surroundings.argument.clear();
    EXPECT_EQ(chooseProgramFolder(surroundings).path, "/from/environment");
    for (const char* name : {"options.xml", "dbupdate.xml", "sorvanto.mdb", "GermanTranslation.xml"}) {
        write(u"bin/"_s + QLatin1String(name), "");
        EXPECT_EQ(chooseProgramFolder(surroundings).path, path("bin")) << name;
        EXPECT_FALSE(chooseProgramFolder(surroundings).fromDelivered) << name;
        ASSERT_TRUE(QFile::remove(path(u"bin/"_s + QLatin1String(name))));
    }
}

TEST_F(ProgramFolderTest, ThenTheEnvironmentsAndAtLastTheUsersData) {
    Surroundings surroundings = all();
    surroundings.argument.clear();
    EXPECT_EQ(chooseProgramFolder(surroundings).path, "/from/environment");
    EXPECT_TRUE(chooseProgramFolder(surroundings).fromDelivered);
    surroundings.environment.clear();
    EXPECT_EQ(chooseProgramFolder(surroundings).path, "/user/data/sorvanto");
    EXPECT_TRUE(chooseProgramFolder(surroundings).fromDelivered);
}

TEST_F(ProgramFolderTest, ABareExecutableWithoutAnInstallationStaysByItself) {
    const Surroundings bare{{}, path("bin"), {}, "/user/data", {}};
    EXPECT_EQ(chooseProgramFolder(bare).path, path("bin"));
    EXPECT_FALSE(chooseProgramFolder(bare).fromDelivered);
    const Surroundings asked{"/asked", path("bin"), {}, "/user/data", {}};
    EXPECT_EQ(chooseProgramFolder(asked).path, "/asked");
    EXPECT_FALSE(chooseProgramFolder(asked).fromDelivered);
}

TEST_F(ProgramFolderTest, FoldersOfTheProcessAreAbsolute) {
    ASSERT_TRUE(qputenv("SORVANTO_FOLDER", "some/../where"));
    const Surroundings surroundings = Surroundings::ofProcess("asked/");
    qunsetenv("SORVANTO_FOLDER");
    EXPECT_EQ(surroundings.argument, QDir::currentPath() + "/asked");
    EXPECT_EQ(surroundings.environment, QDir::currentPath() + "/where");
    EXPECT_EQ(surroundings.executable, tools());
    EXPECT_TRUE(QFile::exists(surroundings.delivered + "/GermanTranslation.xml"));
    EXPECT_TRUE(Surroundings::ofProcess({}).argument.isEmpty());
    EXPECT_TRUE(Surroundings::ofProcess({}).environment.isEmpty());
}

}  // namespace
}  // namespace sorvanto
