// The program-wide values, the version, and translation before the language store exists.
#include "shared/basMain.h"

#include "shared/Translator.h"
#include "support/TestProgram.h"

#include <QRegularExpression>

namespace basMain = sorvanto::basMain;

namespace {

class basMainTest : public support::TestProgram {};

TEST_F(basMainTest, ResetDropsEverything) {
    basMain::MixTypes = QStringList{"a"};
    basMain::labelsCancelled = basMain::reportCancelled = true;
    basMain::gConnectionString = "x";
    basMain::reset();
    EXPECT_FALSE(basMain::Options);
    EXPECT_FALSE(basMain::Language);
    EXPECT_FALSE(basMain::gConnection);
    EXPECT_FALSE(basMain::ErrorReporter);
    EXPECT_TRUE(basMain::MixTypes.isEmpty());
    EXPECT_TRUE(basMain::gConnectionString.isEmpty());
    EXPECT_FALSE(basMain::labelsCancelled || basMain::reportCancelled);
    EXPECT_FALSE(basMain::databaseLocation);
    EXPECT_FALSE(basMain::editOptions);
}

TEST_F(basMainTest, TheVersionIsThatOfTheBuild) {
    QFile build(SORVANTO_SOURCE_DIR "/CMakeLists.txt");
    ASSERT_TRUE(build.open(QIODevice::ReadOnly));
    const auto match =
        QRegularExpression("VERSION (\\d+\\.\\d+\\.\\d+)").match(QString::fromUtf8(build.readAll()));
    EXPECT_EQ(sorvanto::programVersion(), match.captured(1));
}

TEST_F(basMainTest, WithoutALanguageStoreATextStaysAsItIs) {
    basMain::Language.reset();
    EXPECT_EQ(sorvanto::translated(" Version: "), " Version: ");
}

TEST_F(basMainTest, TheLanguageStoreTrims) { EXPECT_EQ(sorvanto::translated(" Version: "), "Version:"); }

TEST_F(basMainTest, EndingAtOnceSavesNothing) {
    const QByteArray before = folder.read("options.xml");
    EXPECT_EXIT(
        {
            const auto options = basMain::Options;
            basMain::reset();
            basMain::Options = options;
            basMain::endProgram();
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(folder.read("options.xml"), before);
}

}  // namespace
