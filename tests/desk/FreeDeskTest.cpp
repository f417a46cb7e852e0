// A finished mix is put before the user when the desk is free, and not before.
//   SignNowTest.cpp   what the user does about it
#include "FreeDeskTest.h"

#include "platform/data/Engine.h"
#include "platform/widgets/LongWork.h"
#include "screens/BrowsingScreen.h"

#include <QMenu>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {

/// Hears a click, and takes its time.
class SlowListener : public ToolListener {
public:
    explicit SlowListener(std::function<void()> work) : m_work(std::move(work)) {}
    void m_frmMain_btnClick(const QString&, const QString&) override { m_work(); }

private:
    std::function<void()> m_work;
};

TEST_F(FreeDeskTest, AMixThatEndsOnAFreeDeskIsSignedAtOnce) {
    click(u"cmdLogs"_s);
    sign();
    startMix();
    endMix();
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
    EXPECT_EQ(window->current(), formulas);
    EXPECT_FALSE(waits());
}

TEST_F(FreeDeskTest, TheUnlockedChemicalsInWhichNothingWasTypedAreFree) {
    click(u"cmdChemicals"_s);
    ASSERT_FALSE(screen<BrowsingScreen>(chemicals).formLocked());
    sign();
    startMix();
    endMix();
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
}

TEST_F(FreeDeskTest, AListStaysAloneAndItsRowIsOpenedAfterwards) {
    click(u"cmdLogs"_s);
    startMix();
    whileOpen(u"frmSearchRS"_s, [&](QWidget& list) {
        endMix();
        EXPECT_TRUE(waits());
        EXPECT_EQ(modalOnShow(), &list);
        auto* rows = child<platform::RecordGrid>(list, "TDBList1");
        rows->selectRow(2);
        child<QPushButton>(list, "cmdOK")->click();
    });
    sign();
    search(u"cool"_s);
    const QString found = text(logs, u"txtlog_Lot"_s);
    EXPECT_TRUE(found.startsWith("AB001"_L1)) << str(found);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
    EXPECT_EQ(shown, (QStringList{u"frmSearchRS"_s, u"frmInitials"_s}));
}

TEST_F(FreeDeskTest, ADeletionAsksAndDeletesOneThingAlone) {
    click(u"cmdLogs"_s);
    startMix();
    const QString name = text(logs, u"txtlog_Name"_s);
    whileOpen(u"AskDialog"_s, [&](QWidget& box) {
        endMix();
        EXPECT_TRUE(waits());
        child<QPushButton>(box, "Yes")->click();
    });
    whileOpen(u"AskDialog"_s, [&](QWidget& box) {  // the first move still runs on the set of before
        EXPECT_TRUE(waits());
        child<QPushButton>(box, "OK")->click();
    });
    sign();
    click(u"cmdDelete"_s);
    EXPECT_EQ(logCount(), 2);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 3);
    EXPECT_EQ(sqlText(u"SELECT COUNT(*) FROM Formula"_s), u"3"_s);
    EXPECT_EQ(shown.size(), 3) << str(shown.join(u' '));
}

TEST_F(FreeDeskTest, AMessageOnThePatientsIsNotFollowedByAQuantity) {
    click(u"cmdPatients"_s);
    startMix();
    whileOpen(u"AskDialog"_s, [&](QWidget& box) {
        endMix();
        EXPECT_TRUE(waits());
        child<QPushButton>(box, "OK")->click();
    });
    sign();
    force(u"cmdMake"_s);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(shown, (QStringList{u"AskDialog"_s, u"frmInitials"_s}));
}

TEST_F(FreeDeskTest, AHalfTypedNoteIsWaitedForUntilItIsSaved) {
    click(u"cmdLogs"_s);
    click(u"cmdEdit"_s);
    startMix();
    QTest::keyClicks(&notes(), u"stir well"_s);
    endMix();
    EXPECT_TRUE(waits());
    expectNothingOpens();
    EXPECT_TRUE(notes().text().contains("stir well"_L1));
    sign();
    click(u"cmdSave"_s);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
    EXPECT_EQ(sqlText(u"SELECT COUNT(*) FROM Log WHERE log_Notes LIKE '%stir well%'"_s), u"1"_s);
}

TEST_F(FreeDeskTest, AnotherLookAtTheNoteAfterCancelIsFree) {
    click(u"cmdLogs"_s);
    click(u"cmdEdit"_s);
    startMix();
    notes().setText(u"typed"_s);
    endMix();
    EXPECT_TRUE(waits());
    sign();
    click(u"cmdCancel"_s);
    ASSERT_TRUE(isSigned());
}

TEST_F(FreeDeskTest, AnOpenCellIsNeitherCommittedNorInterrupted) {
    click(u"cmdFormulas"_s);
    click(u"cmdNext"_s);
    click(u"cmdEdit"_s);
    auto& grid = control<platform::RecordGrid>(formulas, u"grdIngredients"_s);
    child<QTabWidget>(*window->screen(formulas), "tabFormula")->setCurrentIndex(1);
    const QString before = sqlText(u"SELECT fch_Qty FROM FormChem ORDER BY FormChemID"_s);
    startMix();
    typeInCell(grid, 0, u"fch_Qty"_s, u"99"_s);
    endMix();
    EXPECT_TRUE(waits());
    expectNothingOpens();
    EXPECT_TRUE(grid.isCellOpen());
    sign();
    panelButton("mixerSign")->click();
    ASSERT_TRUE(isSigned());
    EXPECT_FALSE(grid.isCellOpen());
    EXPECT_EQ(str(sqlText(u"SELECT fch_Qty FROM FormChem ORDER BY FormChemID"_s)), str(before));
}

TEST_F(FreeDeskTest, LongWorkThatReadsOneMomentIsNotInterrupted) {
    startMix();
    {
        const auto look = openDB()->engine().beginLook();
        const platform::LongWork work(u"Comparing prices"_s);
        endMix();
        EXPECT_TRUE(waits());
        expectNothingOpens();
    }
    sign();
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
}

TEST_F(FreeDeskTest, AToolThatIsPressedInTheMiddleOfLongWorkDoesNothing) {
    click(u"cmdFormulas"_s);
    const QString before = caption();
    {
        const platform::LongWork work(u"Comparing prices"_s);
        tool(u"cmdNext"_s).action().trigger();
        EXPECT_EQ(caption(), before);
    }
    tool(u"cmdNext"_s).action().trigger();
    EXPECT_NE(caption(), before);
}

TEST_F(FreeDeskTest, AMenuIsLeftAlone) {
    startMix();
    QMenu menu;
    menu.addAction(u"x"_s);
    menu.popup({200, 200});
    endMix();
    EXPECT_TRUE(waits());
    expectNothingOpens();
    sign();
    menu.close();
    ASSERT_TRUE(isSigned());
}

TEST_F(FreeDeskTest, AHeldMouseButtonIsWaitedFor) {
    startMix();
    QTest::mousePress(window->screen(formulas), Qt::LeftButton);
    endMix();
    EXPECT_TRUE(waits());
    expectNothingOpens();
    sign();
    QTest::mouseRelease(window->screen(formulas), Qt::LeftButton);
    ASSERT_TRUE(isSigned());
}

TEST_F(FreeDeskTest, AKeyPressedLatelyIsWaitedFor) {
    startMix();
    platform::setTypingRest(std::chrono::milliseconds(600'000));
    QTest::keyClick(window->screen(formulas), Qt::Key_Shift);
    endMix();
    EXPECT_TRUE(waits());
    expectNothingOpens();
    platform::setTypingRest(std::chrono::milliseconds(1));
    QTest::keyClick(window->screen(formulas), Qt::Key_Shift);
    sign();
    ASSERT_TRUE(isSigned());
}

TEST_F(FreeDeskTest, AClickThatIsStillDeliveredIsWaitedFor) {
    startMix();
    SlowListener listener([&] {
        endMix();
        expectNothingOpens();
    });
    window->connectListener(listener);
    sign();
    click(u"mnuUpdate"_s);
    window->releaseListener(listener);
    ASSERT_TRUE(isSigned());
    EXPECT_EQ(logCount(), 4);
}

}  // namespace
