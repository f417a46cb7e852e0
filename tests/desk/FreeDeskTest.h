// A mix that ends in a window with real dialogs, and looks at whether it waits.
#pragma once

#include "DeskTest.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/FreshKeys.h"

class FreeDeskTest : public DeskTest {
protected:
    void TearDown() override {
        platform::setTypingRest(std::chrono::milliseconds(0));
        DeskTest::TearDown();
    }
    platform::MemoBox& notes() const {
        return control<platform::MemoBox>(sorvanto::logs, QStringLiteral("txtlog_Notes"));
    }
    /// Several looks at the desk come and go without a dialog.
    void expectNothingOpens(bool mixWaits = true) {
        QWidget* const before = modalOnShow();
        int looks = 0;
        QTimer looking;
        QObject::connect(&looking, &QTimer::timeout, &looking, [&] { ++looks; });
        looking.start(250);
        ASSERT_TRUE(sorvanto::test::waitFor([&] { return looks == 3; }));
        EXPECT_EQ(modalOnShow(), before);
        EXPECT_EQ(waits(), mixWaits);
    }
    bool isSigned() {
        return sorvanto::test::waitFor(
            [&] { return shown.contains(QStringLiteral("frmInitials")) && !modalOnShow(); });
    }
};
