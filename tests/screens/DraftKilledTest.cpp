// The program killed in the midst of typing: a child runs the real window, types and is killed; the program
// started next in the same folder offers the text.
#include "DraftsTest.h"

#include "platform/basic/Paths.h"

#include <QProcess>
#include <cstdio>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

constexpr const char* folderVariable = "SORVANTO_TEST_TYPES_IN";

class DraftKilled : public DraftsTest {
protected:
    /// Kills the child as soon as what it types lies in the folder.
    void killTheTyping() {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(folderVariable, folder.path());
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=DraftKilledChild.*"});
        QByteArray said;
        while (!said.contains("typed") && child.waitForReadyRead(30'000))
            said += child.readAllStandardOutput();
        ASSERT_TRUE(said.contains("typed")) << said.constData();
        files(1);
        child.kill();
        child.waitForFinished();
        ASSERT_EQ(child.exitStatus(), QProcess::CrashExit);
    }
};

TEST_F(DraftKilled, TheNextStartOffersTheText) {
    killTheTyping();
    load();
    EXPECT_EQ(str(offer()), "Unsaved text of \"Arnica Salve\" was kept.");
    bringBack();
    EXPECT_EQ(str(notes(formulas).text()), "stir well");
    EXPECT_FALSE(browsing(formulas).formLocked());
    EXPECT_EQ(str(sqlText("SELECT frm_Instructions FROM Formula WHERE FormulaID = 3")), "");
    click("cmdSave");
    EXPECT_EQ(str(sqlText("SELECT frm_Instructions FROM Formula WHERE FormulaID = 3")), "stir well");
    files(0);
}

// The child's part; without the variable there is nothing to do.
TEST(DraftKilledChild, TypesAndWaitsToBeKilled) {
    const QString folder = qEnvironmentVariable(folderVariable);
    if (folder.isEmpty())
        return;
    platform::setProgramFolder(folder);
    support::ScriptedAsker asker;
    frmMain window(realParts(basMain::context()));
    window.Form_Load();
    window.show();
    window.bar().click(window.bar().band("MainBar").tool("cmdEdit"));
    QTest::keyClicks(support::child<platform::MemoBox>(window, "frmFormula/txtfrm_Instructions"),
                     "stir well");
    std::puts("typed");
    std::fflush(stdout);
    QTest::qWait(30'000);
}

}  // namespace
