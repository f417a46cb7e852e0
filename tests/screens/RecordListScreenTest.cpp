// The record list beside the real screens: what it holds, how it moves the set, when it is off, how it is kept
// up to date, where it stands in a wide and in a narrow window.
#include "ScreenTest.h"
#include "Settle.h"
#include "Waiting.h"
#include "core/BenchWatch.h"
#include "core/RecordListPlace.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordList.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using support::settle;

constexpr QSize wide(1700, 900);
constexpr QSize narrow(1366, 768);

class RecordListScreenTest : public ScreenTest {
protected:
    void seed() override { seedLogs(); }
    void SetUp() override {
        ScreenTest::SetUp();
        load();
    }
    void show(QSize size, const QString& button) {
        window->resize(size);
        click(button);
        waitForRows();
    }
    void waitForRows() {
        settle();
        ASSERT_TRUE(support::waitFor([this] { return !list().isVisible() || !count().isEmpty(); }));
        settle();
    }
    platform::RecordList& list() const {
        return *support::child<platform::RecordList>(*window, u"recordList"_s);
    }
    QString count() const { return support::child<QLabel>(*window, u"lblListCount"_s)->text(); }
    QToolButton& toggle() const { return *support::child<QToolButton>(*window, u"cmdRecordList"_s); }
    QStringList names(int column = 0) const {
        QStringList result;
        for (int row = 0; row < list().model().rowCount(); ++row)
            result << list().model().index(row, column).data().toString();
        return result;
    }
    void choose(std::int64_t key) {
        emit list().chosen(key);
        settle();
    }
    void filter(const QString& text) {
        list().startFiltering();
        auto& box = *support::child<QLineEdit>(*window, u"txtListFilter"_s);
        box.clear();
        QTest::keyClicks(&box, text);
    }
};

TEST_F(RecordListScreenTest, StandsBesideTheFormWhereThereIsRoom) {
    show(wide, u"cmdChemicals"_s);
    EXPECT_TRUE(list().isVisible());
    EXPECT_TRUE(window->screen(chemicals)->isVisible());
    EXPECT_TRUE(toggle().isChecked());
    EXPECT_EQ(names(), (QStringList{u"Aspirin"_s, u"Borax"_s, u"Camphor"_s, u"Menthol"_s}));
    EXPECT_EQ(str(count()), "4 chemicals");
}

TEST_F(RecordListScreenTest, HoldsTheRecordsOfTheScreenOnShow) {
    show(wide, u"cmdFormulas"_s);
    EXPECT_EQ(names(), (QStringList{u"Arnica Salve"_s, u"Cooling Gel"_s, u"Plain Base"_s}));
    show(wide, u"cmdLogs"_s);
    EXPECT_EQ(list().model().rowCount(), 3);
    EXPECT_EQ(list().model().keyAt(0), 2) << "the newest batch stands first";
    EXPECT_EQ(list().model().keyAt(1), 3);
    EXPECT_EQ(list().model().keyAt(2), 1);
    show(wide, u"cmdCurrent"_s);
    EXPECT_FALSE(list().isVisible()) << "the current formula is no record of a set";
    EXPECT_FALSE(toggle().isEnabled());
}

TEST_F(RecordListScreenTest, AChosenRowMovesTheSet) {
    show(wide, u"cmdChemicals"_s);
    click(u"cmdEdit"_s);
    click(u"cmdCancel"_s);
    choose(2);
    EXPECT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Borax");
    EXPECT_EQ(list().currentKey(), 2);
    click(u"cmdNext"_s);
    EXPECT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Camphor") << "the moves go on from there";
    EXPECT_EQ(list().currentKey(), 3) << "and the list follows them";
}

TEST_F(RecordListScreenTest, ARowThatTheSetDoesNotHoldIsOpenedAsASearchWould) {
    show(wide, u"cmdFormulas"_s);
    choose(1);
    sql(u"INSERT INTO Formula SELECT 77, 'Late Comer', frm_Desc, frm_Strength, frm_Units, frm_Instructions, frm_Quantity,"
        " frm_JarSize, frm_FormType, frm_AWP, frm_NDC, 'g77', frm_Mix FROM Formula WHERE FormulaID = 2"_s);
    click(u"cmdFirst"_s);
    click(u"cmdNext"_s);
    const QString before = caption();
    if (context.connection->isServer())
        window->findChild<RecordListPlace*>()->followOthers();
    delete window->findChild<BenchWatch*>();  // its next look would take the new row into the set
    waitForRows();
    EXPECT_TRUE(names().contains(u"Late Comer"_s))
        << "what another program adds is seen at the next click, of a server at the next look at other benches";
    choose(77);
    EXPECT_TRUE(caption().endsWith(u"Late Comer"_s)) << str(caption());
    click(u"cmdPrevious"_s);
    click(u"cmdNext"_s);
    EXPECT_EQ(str(caption()), str(before)) << "the set stays where it was";
    click(u"cmdFirst"_s);
    choose(77);
    click(u"cmdNext"_s);
    EXPECT_EQ(str(caption()), str(before)) << "also where that was the first record";
}

TEST_F(RecordListScreenTest, IsOffWhileTheMovesAreOff) {
    show(wide, u"cmdFormulas"_s);
    EXPECT_TRUE(list().isEnabled());
    click(u"cmdEdit"_s);
    EXPECT_FALSE(list().isEnabled());
    click(u"cmdCancel"_s);
    EXPECT_TRUE(list().isEnabled());
}

TEST_F(RecordListScreenTest, ShowsWhatWasSavedAndDeleted) {
    show(wide, u"cmdFormulas"_s);
    choose(2);
    click(u"cmdEdit"_s);
    control<QLineEdit>(formulas, u"txtfrm_Name"_s).setText(u"Renamed Base"_s);
    click(u"cmdSave"_s);
    waitForRows();
    EXPECT_EQ(names(), (QStringList{u"Arnica Salve"_s, u"Cooling Gel"_s, u"Renamed Base"_s}));
    EXPECT_EQ(list().currentKey(), 2);
}

TEST_F(RecordListScreenTest, TheFilterLeavesTheRecordOnShowAlone) {
    show(wide, u"cmdFormulas"_s);
    choose(3);
    filter(u"plain"_s);
    EXPECT_EQ(names(), (QStringList{u"Plain Base"_s}));
    EXPECT_EQ(str(count()), "1 of 3 formulas");
    EXPECT_TRUE(caption().endsWith(u"Arnica Salve"_s));
    QTest::keyClick(support::child<QLineEdit>(*window, u"txtListFilter"_s), Qt::Key_Return);
    EXPECT_TRUE(caption().endsWith(u"Plain Base"_s));
}

TEST_F(RecordListScreenTest, TakesTheFormsPlaceInANarrowWindowForOneChoice) {
    show(narrow, u"cmdFormulas"_s);
    EXPECT_FALSE(list().isVisible());
    toggle().click();
    waitForRows();
    EXPECT_TRUE(list().isVisible());
    EXPECT_FALSE(window->screen(formulas)->isVisible());
    choose(3);
    EXPECT_FALSE(list().isVisible());
    EXPECT_TRUE(window->screen(formulas)->isVisible());
    EXPECT_TRUE(caption().endsWith(u"Arnica Salve"_s));
}

TEST_F(RecordListScreenTest, WhatWasChosenInTheFormsPlaceHandsTheKeysToTheForm) {
    for (const auto& [button, number] : {std::pair(u"cmdFormulas"_s, formulas), {u"cmdLogs"_s, logs}}) {
        show(narrow, button);
        toggle().click();
        waitForRows();
        filter(u"a"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        ASSERT_FALSE(list().isVisible()) << str(button);
        ASSERT_TRUE(QApplication::focusWidget()) << str(button);
        EXPECT_TRUE(window->screen(number)->isAncestorOf(QApplication::focusWidget()))
            << str(button) << ": " << str(QApplication::focusWidget()->objectName());
    }
}

TEST_F(RecordListScreenTest, InANarrowWindowEditingBringsTheFormBack) {
    show(narrow, u"cmdFormulas"_s);
    toggle().click();
    click(u"cmdEdit"_s);
    EXPECT_TRUE(window->screen(formulas)->isVisible());
    EXPECT_FALSE(list().isVisible());
}

TEST_F(RecordListScreenTest, HiddenInAWideWindowItStaysHidden) {
    show(wide, u"cmdFormulas"_s);
    toggle().click();
    EXPECT_FALSE(list().isVisible());
    show(wide, u"cmdChemicals"_s);
    EXPECT_FALSE(list().isVisible());
    window.reset();
    load();
    show(wide, u"cmdFormulas"_s);
    EXPECT_FALSE(list().isVisible()) << "also at the next start";
    toggle().click();
    EXPECT_TRUE(list().isVisible());
}

TEST_F(RecordListScreenTest, ItsKeysWorkFromTheForm) {
    show(narrow, u"cmdFormulas"_s);
    window->activateWindow();
    ASSERT_TRUE(support::becomesActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(list().isVisible());
    EXPECT_TRUE(support::child<QLineEdit>(*window, u"txtListFilter"_s)->hasFocus());
    QTest::keyClick(support::child<QLineEdit>(*window, u"txtListFilter"_s), Qt::Key_Escape);
    EXPECT_FALSE(list().isVisible());
    QTest::keyClick(window.get(), Qt::Key_F9);
    EXPECT_TRUE(list().isVisible());
}

TEST_F(RecordListScreenTest, ABatchSaysWhetherItWasInterruptedOrSimulated) {
    sql(u"UPDATE Log SET log_Results = replace(log_Results, '<Interuption Value=\"No\"', '<Interuption Value=\"U\"')"
        " WHERE LogID = 1"_s);
    sql(u"UPDATE Log SET log_Results = replace(log_Results, '<HardwareVersion Value=\"', '<HardwareVersion Value=\"SIM-')"
        " WHERE LogID = 2"_s);
    show(wide, u"cmdLogs"_s);
    constexpr int remark = 6;
    QStringList remarks;
    for (const int key : {1, 2, 3})
        remarks << list().model().index(list().model().rowOf(key), remark).data().toString();
    EXPECT_EQ(remarks, (QStringList{u"interrupted"_s, u"simulated"_s, QString()}));
}

TEST_F(RecordListScreenTest, TheLogHasARangeOfDaysAndTheOthersHaveNone) {
    for (const QString& key : {u"1"_s, u"2"_s, u"3"_s})
        sql(u"UPDATE Log SET log_Date = '2026-03-0%1 10:00:00' WHERE LogID = %1"_s.arg(key));
    show(wide, u"cmdLogs"_s);
    auto& from = *support::child<platform::DateBox>(*window, u"txtListFrom"_s);
    EXPECT_TRUE(from.isVisible());
    EXPECT_EQ(names(2), (QStringList{u"3/3/2026"_s, u"3/2/2026"_s, u"3/1/2026"_s}));
    QTest::keyClicks(from.findChild<QLineEdit*>(), u"3/2/2026"_s);
    EXPECT_EQ(names(2), (QStringList{u"3/3/2026"_s, u"3/2/2026"_s}));
    EXPECT_EQ(str(count()), "2 of 3 batches");
    show(wide, u"cmdFormulas"_s);
    EXPECT_FALSE(from.isVisible());
    show(wide, u"cmdLogs"_s);
    EXPECT_EQ(list().model().rowCount(), 3);
}

TEST_F(RecordListScreenTest, NoListIsScrolledSidewaysAt1920) {
    constexpr int rows = 60;  // so many that it is scrolled downwards
    for (const char* insert :
         {"INSERT INTO Formula (frm_Name) VALUES ('x')", "INSERT INTO Chemical (chm_Name) VALUES ('x')",
          "INSERT INTO Log (log_Name) VALUES ('x')", "INSERT INTO Patient (pat_LName) VALUES ('x')"})
        sql(QStringList(rows, QLatin1String(insert)).join(u"; "_s));
    for (const char* button : {"cmdFormulas", "cmdChemicals", "cmdLogs", "cmdPatients"}) {
        show({1920, 1080}, QLatin1String(button));
        const auto& bar = *support::child<QTableView>(*window, u"grdRecordList"_s)->horizontalScrollBar();
        ASSERT_GE(list().model().rowCount(), rows) << button;
        EXPECT_EQ(bar.maximum(), 0) << button;
    }
}

/// Looks at the list while the question is open.
class LookingAsker : public platform::Asker {
public:
    LookingAsker(const platform::RecordList& list, platform::Answer answer) : m_list(list), m_answer(answer) {
        platform::setAsker(this);
    }
    platform::Answer messageBox(const QString&, platform::BoxStyle style, const QString&) override {
        ++questions;
        marked = m_list.marksDeletion();
        low = style.low;
        shown = m_list.currentKey();
        return m_answer;
    }
    QString inputBox(const QString&, const QString&, const QString&, const platform::LineGuide&) override {
        return {};
    }
    QString openFile(const QString&, const QString&) override { return {}; }
    void showModal(QObject&, const std::function<void()>&) override {}

    int questions = 0;
    bool marked = false, low = false;
    std::int64_t shown = 0;

private:
    const platform::RecordList& m_list;
    platform::Answer m_answer;
};

TEST_F(RecordListScreenTest, MarksTheRecordThatIsAskedToBeDeleted) {
    show(wide, "cmdFormulas");
    choose(2);
    LookingAsker looking(list(), platform::Answer::No);
    click("cmdDelete");
    platform::setAsker(&asker);
    EXPECT_EQ(looking.questions, 1);
    EXPECT_EQ(looking.shown, 2);
    EXPECT_TRUE(looking.marked);
    EXPECT_TRUE(looking.low) << "the record would stand behind the question";
    EXPECT_FALSE(list().marksDeletion());
}

}  // namespace
