// When the desk is free, as the mixer asks before it speaks up.
#include "core/DeskWatch.h"
#include "TestProgram.h"
#include "platform/widgets/FreshKeys.h"
#include "shared/TypedText.h"

#include <QTest>
#include <QWidget>
#include <QWindow>

namespace {

using namespace sorvanto;

class Screen : public TypedText {
public:
    bool hasTypedText() const override { return typed; }
    void keepTypedText() override { ++kept; }
    bool typed = false;
    int kept = 0;
};

class DeskWatchTest : public support::TestProgram {
protected:
    void TearDown() override {
        platform::setTypingRest(std::chrono::milliseconds(0));
        TestProgram::TearDown();
    }

    Screen screen;
    TypedText* onShow = &screen;
    bool clicking = false;
    QWidget window;
    DeskWatch watch{{[this] { return clicking; }, [this] { return onShow; }, [] {}}};
};

TEST_F(DeskWatchTest, IsFreeWhereNothingIsUnderWay) {
    EXPECT_TRUE(watch.isFree());
    clicking = true;
    EXPECT_FALSE(watch.isFree());
    clicking = false;
    screen.typed = true;
    EXPECT_FALSE(watch.isFree());
    EXPECT_TRUE(watch.canOpenDialog()) << "the user may ask for it";
    onShow = nullptr;
    EXPECT_TRUE(watch.isFree()) << "a screen without boxes";
}

TEST_F(DeskWatchTest, KeepsTheTextOfTheScreenOnShow) {
    watch.keepTypedText();
    EXPECT_EQ(screen.kept, 1);
    onShow = nullptr;
    watch.keepTypedText();
    EXPECT_EQ(screen.kept, 1);
}

// The system's own dialogs are windows without a widget.
TEST_F(DeskWatchTest, AModalWindowWithoutAWidgetIsADialogToo) {
    QWindow dialog;
    dialog.setModality(Qt::ApplicationModal);
    dialog.show();
    EXPECT_FALSE(watch.canOpenDialog());
    EXPECT_FALSE(watch.isFree());
    dialog.close();
    EXPECT_TRUE(watch.isFree());
}

TEST_F(DeskWatchTest, AKeyAndAHeldButtonAreWaitedFor) {
    window.show();
    QTest::mousePress(&window, Qt::LeftButton);
    EXPECT_FALSE(watch.isFree());
    QTest::mouseRelease(&window, Qt::LeftButton);
    EXPECT_TRUE(watch.isFree());
    platform::setTypingRest(std::chrono::milliseconds(600'000));
    QTest::keyClick(&window, Qt::Key_Shift);
    EXPECT_FALSE(watch.isFree());
}

}  // namespace
