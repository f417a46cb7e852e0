// Where the main window was last.
#include "core/WindowPlace.h"
#include "TempProgramFolder.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace sorvanto;

TEST(WindowPlace, IsRememberedInAFileOfItsOwn) {
    const support::TempProgramFolder folder;
    QWidget window;
    restoreWindowPlace(window);
    EXPECT_FALSE(folder.has("window.ini"));
    window.setGeometry(40, 30, 500, 400);
    saveWindowPlace(window);
    EXPECT_TRUE(folder.has("window.ini"));
    EXPECT_FALSE(folder.has("options.xml"));
    QWidget next;
    restoreWindowPlace(next);
    EXPECT_EQ(next.size(), QSize(500, 400));
}

TEST(WindowPlace, APipeInTheFilesPlaceCountsAsNone) {
    const support::TempProgramFolder folder;
    ASSERT_EQ(::mkfifo(folder.path("window.ini").toLocal8Bit().constData(), 0600), 0);
    QWidget window;
    restoreWindowPlace(window);
    EXPECT_GE(window.width(), 640);
    EXPECT_TRUE(windowSetting("list/beside", true));
    EXPECT_NO_THROW(saveWindowPlace(window));
}

TEST(WindowPlace, AFirstStartFitsTheScreenAndABrokenFileCountsAsNone) {
    const support::TempProgramFolder folder;
    folder.write("window.ini", "[window]\ngeometry=garbage\n");
    QWidget window;
    restoreWindowPlace(window);
    EXPECT_LE(window.width(), 1366);
    EXPECT_GE(window.width(), 640);
}

}  // namespace
