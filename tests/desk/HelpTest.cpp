// The manual beside real work: it blocks no dialog and no mix, and breaks neither.
#include "DeskTest.h"
#include "support/Waiting.h"

#include "manual/ManualWindow.h"
#include "platform/widgets/Boxes.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QToolButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class HelpDeskTest : public DeskTest {
protected:
    static ManualWindow* manual() {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (auto* found = qobject_cast<ManualWindow*>(each))
                return found;
        }
        return nullptr;
    }
    static bool isRead() { return manual() && manual()->isVisible(); }
    /// Through its window, as the desktop delivers them: a blocked one takes none.
    static bool takesClicks() {
        auto* larger = support::child<QToolButton>(*manual(), u"cmdLarger"_s);
        QSignalSpy clicks(larger, &QToolButton::clicked);
        return test::waitFor([&] {
            QTest::mouseClick(manual()->windowHandle(), Qt::LeftButton, {},
                              larger->mapTo(manual(), larger->rect().center()));
            return clicks.size() > 0;
        });
    }
    void read() const {
        click(u"mnuManual"_s);
        ASSERT_TRUE(isRead());
        ASSERT_TRUE(support::becomesActive(manual()));
    }
};

TEST_F(HelpDeskTest, ADialogGoesOnWhereItWas) {
    click(u"cmdFormulas"_s);
    whileOpen(u"frmMake"_s, [](QWidget& form) {
        auto* quantity = support::child<QLineEdit>(form, "txtQTY");
        quantity->setText(u"25"_s);
        QTest::keyClick(quantity, Qt::Key_F1);
        EXPECT_TRUE(isRead());
        EXPECT_TRUE(support::becomesActive(manual()));
        EXPECT_TRUE(takesClicks());
        QTest::keyClick(manual()->focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(isRead());
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(str(quantity->text()), "25");
        support::child<QPushButton>(form, "OKButton")->click();
    });
    click(u"cmdMake"_s);
    EXPECT_EQ(shown, QStringList{u"frmMake"_s});
    EXPECT_EQ(window->current(), currentFormula) << "the batch goes on";
}

TEST_F(HelpDeskTest, OpenAlreadyItIsReadBesideADialog) {
    click(u"cmdFormulas"_s);
    read();
    whileOpen(u"frmMake"_s, [](QWidget& form) {
        EXPECT_TRUE(takesClicks());
        EXPECT_TRUE(form.isVisible());
        support::child<QPushButton>(form, "OKButton")->click();
    });
    click(u"cmdMake"_s);
    EXPECT_EQ(window->current(), currentFormula) << "the batch goes on";
    EXPECT_TRUE(isRead());
}

TEST_F(HelpDeskTest, TheManualStaysWhenTheDialogBelowIsAnswered) {
    click(u"cmdFormulas"_s);
    whileOpen(u"frmMake"_s, [](QWidget& form) {
        QTest::keyClick(&form, Qt::Key_F1);
        support::child<QPushButton>(form, "CancelButton")->click();
    });
    click(u"cmdMake"_s);
    EXPECT_TRUE(isRead());
    read();
}

TEST_F(HelpDeskTest, AMixThatEndsWhileItIsReadIsSigned) {
    startMix();
    read();
    const int before = logCount();
    sign();
    endMix();
    EXPECT_TRUE(test::waitFor([&] { return logCount() == before + 1 && !modalOnShow(); }));
    EXPECT_TRUE(isRead());
}

TEST_F(HelpDeskTest, ItIsReadWhileABatchIsSigned) {
    startMix();
    whileOpen(u"frmInitials"_s, [](QWidget& form) {
        QTest::keyClick(&form, Qt::Key_F1);
        EXPECT_TRUE(isRead());
        manual()->close();
        support::child<platform::TextBox>(form, "txtInitials")->setText(u"RK"_s);
        support::child<platform::TextBox>(form, "txtVerified")->setText(u"LM"_s);
        support::child<QPushButton>(form, "cmdOK")->click();
    });
    const int before = logCount();
    endMix();
    EXPECT_TRUE(test::waitFor([&] { return logCount() == before + 1 && !modalOnShow(); }));
}

}  // namespace
