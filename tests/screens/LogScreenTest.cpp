// The log screen as it shows itself: its start, the four tabs, moves, searches and tools.
#include "LogScreenTest.h"
#include "Settle.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"

#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>

using namespace Qt::StringLiterals;

using namespace sorvanto;

void LogScreenTest::seed() {
    seedLogs();
    sql("UPDATE Log SET log_Date = '2026-04-11 11:15:00' WHERE LogID = 3;"
        "UPDATE Log SET log_Mix = '<CustomMix PreGrind=\"2\" FreeSpin=\"4\"><Mix LiftRPM=\"1200\" MixRPM=\"600\""
        " MixTime=\"00:00:30\" Cycles=\"0\"/><Mix LiftRPM=\"480\" MixRPM=\"1200\" MixTime=\"00:00:00\""
        " Cycles=\"7\"/></CustomMix>' WHERE LogID = 1;");
}

QString LogScreenTest::row(const platform::RecordGrid& grid, int number) {
    QStringList cells;
    for (int column = 0; column < grid.model()->columnCount(); ++column)
        cells << grid.model()->index(number, column).data().toString();
    return cells.join('|');
}

QString LogScreenTest::results() const {
    QStringList values;
    for (const char* name :
         {"ID", "JarSize", "Type", "Cycles", "Interuption", "Pregrind", "PrepNum", "TotalRev", "Version"})
        values << control<QLabel>(logs, u"lbldisp_"_s + name).text();
    return values.join('|');
}

QString LogScreenTest::stored(int key) const {
    return sqlText(u"SELECT FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType,"
                   u" log_Quantity, log_JarSize, log_NDC, log_Date, log_Lot, log_Results, log_Version,"
                   u" log_AWP, log_Cost, log_Mix FROM Log WHERE LogID = %1"_s.arg(key));
}

namespace {

class NoLogsTest : public LogScreenTest {
    void seed() override { seedFormulas(); }
};

TEST_F(LogScreenTest, StartsLockedOnTheFirstBatchAndItsFirstTab) {
    openScreen();
    EXPECT_TRUE(log().formLocked());
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
    EXPECT_EQ(control<QTabWidget>(logs, "tabLog").currentIndex(), 0);
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Logs  :  Cooling Gel");
}

TEST_F(LogScreenTest, Captions) {
    openScreen();
    const std::pair<const char*, const char*> labels[] = {
        {"lbllog_Name", "Formula Name"},
        {"lbllog_Strength", "Strength"},
        {"lbllog_Quantity", "Quantity"},
        {"lbllog_Units", "Units"},
        {"lbllog_NDC", "NDC"},
        {"lbllog_Lot", "Lot #"},
        {"lbllog_Date", "Date"},
        {"lblfrm_Cost", "Cost"},
        {"lblfrm_AWP", "AWP"},
        {"lbllog_Initials", "Logged"},
        {"lbllog_Verified", "Verified"},
        {"lbllog_Notes", "Log Notes"},
        {"lbllog_Type", "Formula Type"},
        {"lbllog_JarSize", "Jar Size"},
        {"lbllog_PreGrind", "Pre Grind"},
        {"lbllog_FreeSpin", "Free Spin"},
        {"lblfrm_ReactTime", "Reaction Time"},
        {"lblfrm_ReactRPM", "Reaction RPM"},
        {"lblID", "Mix Identification"},
        {"lblJarSize", "Jar Size"},
        {"lblType", "Formula Type"},
        {"lblCycles", "Total Cycles"},
        {"lblInteruption", "A = Without Interuption U = With Interuption"},
        {"lblPreGrind", "Number of Additional PreGrind Cycles"},
        {"lblPrepNum", "Preparation Number"},
        {"lblTotalRev", "Total Mixing Motor Revolutions"},
        {"lblVersion", "Hardware Version"},
    };
    for (const auto& [name, caption] : labels)
        EXPECT_EQ(str(control<QLabel>(logs, name).text()), caption) << name;
    const auto& tabs = control<QTabWidget>(logs, "tabLog");
    QStringList titles;
    for (int tab = 0; tab < tabs.count(); ++tab)
        titles << tabs.tabText(tab);
    EXPECT_EQ(str(titles.join('|')), "General|Ingredients|Mix Options|Mix Results");
    EXPECT_EQ(str(control<QGroupBox>(logs, "fraReaction").title()), "Reaction Options");
    QStringList columns;
    for (int column = 0; column < 7; ++column)
        columns << lines().shownCaption(column);
    EXPECT_EQ(str(columns.join('|')), "Name|Qty|Lot|Cost|AWP|NDC|Supplier");
    QStringList mix;
    for (int column = 0; column < 4; ++column)
        mix << steps().columnCaption(column);
    EXPECT_EQ(str(mix.join('|')), "Lift RPM|Mix RPM|Time|Cycles");
}

TEST_F(LogScreenTest, ShowsTheBatch) {
    openScreen();
    const std::pair<const char*, const char*> boxes[] = {
        {"txtlog_Name", "Cooling Gel"},
        {"txtlog_Strength", "2 %"},
        {"txtlog_Quantity", "20"},
        {"txtlog_Units", "GMS"},
        {"txtlog_NDC", "777-01"},
        {"txtlog_Lot", "AB0010"},
        {"txtlog_Date", "1/5/2026 9:30:00 AM"},
        {"txtlog_Cost", "$ 20.10"},
        {"txtlog_AWP", "$ 33.20"},
        {"txtlog_Initials", "RK"},
        {"txtlog_Verified", "LM"},
        {"txtlog_Notes", "first"},
        {"txtlog_PreGrind", "2"},
        {"txtlog_FreeSpin", "4"},
        {"txtReactTime", ""},
        {"txtReactRPM", ""},
    };
    for (const auto& [name, text] : boxes)
        EXPECT_EQ(str(shown(name)), text) << name;
    EXPECT_EQ(str(shown("txtlog_JarSize")), str(basMain::JarSizes.at(2)));
    EXPECT_EQ(str(shown("txtlog_Type")), str(basMain::MixTypes.at(9)));
}

TEST_F(LogScreenTest, ListsTheFrozenLinesWithTheirPrices) {
    openScreen();
    ASSERT_EQ(lines().model()->rowCount(), 2);
    EXPECT_EQ(str(row(lines(), 0)), "Camphor|2.469|L300|$ 4.94|$ 11.11|333-33|Harbor");
    EXPECT_EQ(str(row(lines(), 1)), "Menthol|10|L400|$ 11.00|$ 22.00|444-44|Harbor");
    sql("UPDATE Chemical SET chm_Name = 'Other', chm_Lot = 'X', chm_Cost = 99;");
    click("cmdFirst");
    EXPECT_EQ(str(row(lines(), 0)), "Camphor|2.469|L300|$ 4.94|$ 11.11|333-33|Harbor");
}

TEST_F(LogScreenTest, ListsTheStepsOfTheProgramme) {
    openScreen();
    ASSERT_EQ(steps().count(), 2);
    EXPECT_EQ(str(steps().row(0).join('|')), "1200|600|00:00:30|0");
    EXPECT_EQ(str(steps().row(1).join('|')), "480|1200|00:00:00|7");
    click("cmdNext");
    EXPECT_EQ(steps().count(), 0);
}

TEST_F(LogScreenTest, WithoutAProgrammeTheDefaultsStand) {
    openScreen();
    click("cmdLast");
    EXPECT_EQ(str(shown("txtlog_FreeSpin")), "1");
    EXPECT_EQ(str(shown("txtlog_PreGrind")), "0");
}

TEST_F(LogScreenTest, AProgrammeLackingAnAttributeIsReportedAndEndsThere) {
    sql("UPDATE Log SET log_Mix = '<CustomMix FreeSpin=\"8\"><Mix LiftRPM=\"1\"/></CustomMix>' WHERE LogID = 2");
    openScreen();
    click("cmdNext");
    expectReport("frmLog:populateMix");
    EXPECT_EQ(str(shown("txtlog_FreeSpin")), "8");
    EXPECT_EQ(str(shown("txtlog_PreGrind")), "2") << "as it was before";
    EXPECT_EQ(steps().count(), 0);
    EXPECT_EQ(str(results()), "AB|3|9|42|No|2|0012|007|S-2") << "the results follow all the same";
}

TEST_F(LogScreenTest, ShowsTheResultsAndNineEmptyLabelsWithout) {
    openScreen();
    EXPECT_EQ(str(results()), "AB|3|9|42|No|2|0010|007|S-2");
    click("cmdLast");
    EXPECT_EQ(str(results()), "||||||||");
}

TEST_F(LogScreenTest, ADocumentWhoseRootIsNoResultsLeavesTheNineLabelsEmptyToo) {
    sql("UPDATE Log SET log_Results = replace(log_Results, 'Results', 'Result') WHERE LogID = 2");
    openScreen();
    EXPECT_EQ(str(results()), "AB|3|9|42|No|2|0010|007|S-2");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0012");
    EXPECT_EQ(str(results()), "||||||||");
}

TEST_F(LogScreenTest, AStoppedBatchSaysSoOnItsFirstTab) {
    sql("UPDATE Log SET log_Results = replace(log_Results, '\"No\"', '\"U\"') WHERE LogID = 1;"
        "UPDATE Log SET log_Results = replace(log_Results, '\"No\"', '\"A\"') WHERE LogID = 2;"
        "UPDATE Log SET log_Results = '' WHERE LogID = 3;");
    openScreen();
    const auto& badge = control<QLabel>(logs, "lblInterrupted");
    EXPECT_EQ(str(results()), "AB|3|9|42|U|2|0010|007|S-2");
    EXPECT_TRUE(badge.isVisible()) << "without looking for the fourth tab";
    EXPECT_EQ(str(badge.text()), "interrupted");
    click("cmdNext");
    EXPECT_FALSE(badge.isVisible()) << "ran to its end";
    click("cmdPrevious");
    EXPECT_TRUE(badge.isVisible());
    click("cmdLast");
    EXPECT_FALSE(badge.isVisible()) << "without results nothing is known";
    QCoreApplication::processEvents();
    click("cmdFirst");
    QCoreApplication::processEvents();
    const QRect quantity = control<platform::NumberBox>(logs, "txtlog_Quantity").geometry();
    EXPECT_GT(badge.geometry().left(), quantity.right()) << "beside the quantity, not over it";
}

TEST_F(LogScreenTest, TheMarkOfAStoppedBatchIsWholeInANarrowWindowAndALongWord) {
    sql("UPDATE Log SET log_Results = replace(log_Results, '\"No\"', '\"U\"') WHERE LogID = 1;");
    openScreen();
    auto& badge = control<QLabel>(logs, "lblInterrupted");
    badge.setText("was interrupted");
    window->resize(window->minimumSizeHint());
    support::settle();
    const QRect quantity = control<platform::NumberBox>(logs, "txtlog_Quantity").geometry();
    EXPECT_GT(badge.geometry().left(), quantity.right());
    EXPECT_GE(badge.width(), badge.sizeHint().width());
}

TEST_F(LogScreenTest, ResultsLackingANodeAreReportedAndKeepTheFormerValuesFromThere) {
    sql("UPDATE Log SET log_Results = '<Results Value=\"ZZ\"><Size Value=\"7\"/><Type Value=\"1\"/>"
        "<Interuption Value=\"U\"/></Results>' WHERE LogID = 2;"
        "UPDATE Log SET log_Results = '<Results Value=\"YY\"><Size/></Results>' WHERE LogID = 3;");
    openScreen();
    click("cmdNext");
    expectReport("frmLog:populateResults");
    EXPECT_EQ(str(results()), "ZZ|7|1|42|No|2|0010|007|S-2");
    click("cmdNext");
    expectReport("frmLog:populateResults");
    EXPECT_EQ(str(results()), "YY|7|1|42|No|2|0010|007|S-2");
}

TEST_F(LogScreenTest, AJarCodeOutsideTheTableIsReported) {
    sql("UPDATE Log SET log_JarSize = 12 WHERE LogID = 2");
    openScreen();
    click("cmdNext");
    expectReport("frmLog:refreshForm");
    EXPECT_EQ(str(shown("txtlog_Initials")), "RK");
}

TEST_F(LogScreenTest, ToolStates) {
    openScreen();
    const QStringList locked = toolStates();
    click("cmdEdit");
    const QStringList unlocked = toolStates();
    click("cmdCancel");
    EXPECT_EQ(toolStates(), locked);
    sql("DELETE FROM LogChem; DELETE FROM Log;");
    log().getData();
    click("cmdLogs");
    support::expectGolden("screens/tool_states_log.txt",
                          stateTable({{"locked", locked}, {"unlocked", unlocked}, {"empty", toolStates()}}));
}

TEST_F(LogScreenTest, EditingOpensThreeBoxesAlone) {
    openScreen();
    const QString locked = lockStates(logs);
    click("cmdEdit");
    support::expectGolden("screens/log_locks.txt", "locked\n" + locked + "\nunlocked\n" + lockStates(logs));
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Logs  :  Cooling Gel  (Edit)");
}

TEST_F(LogScreenTest, TheIdentifiersAreReadWithoutAnOrder) {
    openScreen();
    clearStatements();
    log().getData();
    EXPECT_EQ(str(statements.join('\n')), "SELECT LogID FROM Log");
}

TEST_F(LogScreenTest, MovesStopAtTheEndsAndOpenTheBatchOnce) {
    openScreen();
    const auto opened = [&](const char* toolName) {
        clearStatements();
        click(toolName);
        return statements.filter("WHERE ([Log.LogID]").size();
    };
    struct Move {
        const char* tool;
        const char* lot;
    };
    for (const Move& move :
         {Move{"cmdPrevious", "AB0010"}, Move{"cmdNext", "AB0012"}, Move{"cmdNext", "AB0011"},
          Move{"cmdNext", "AB0011"}, Move{"cmdPrevious", "AB0012"}, Move{"cmdLast", "AB0011"},
          Move{"cmdFirst", "AB0010"}}) {
        EXPECT_EQ(opened(move.tool), 1) << move.tool;
        EXPECT_EQ(str(shown("txtlog_Lot")), move.lot) << move.tool;
    }
}

TEST_F(LogScreenTest, ASearchShowsTheBatchWithItsOwnLines) {
    openScreen();
    search("?AB0012");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0012");
    ASSERT_EQ(lines().model()->rowCount(), 2);
    EXPECT_EQ(str(row(lines(), 0)), "Camphor|3.086|L300|$ 6.17|$ 13.89|333-33|Harbor");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0012") << "the set still stood on the first batch";
}

TEST_F(LogScreenTest, ACodeFindsManyAndTheNewestIsFirst) {
    openScreen();
    asker.expectModal("frmSearchRS", [](QWidget& list) {
        auto& grid = *support::child<platform::RecordGrid>(list, "TDBList1");
        grid.selectRow(0);
        QTest::keyClick(&grid, Qt::Key_Return);
        list.close();
    });
    search("#777");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0011");
}

TEST_F(LogScreenTest, ASearchThatFindsNothingLeavesTheBatchOnView) {
    openScreen();
    asker.expectMsgBox("No Records");
    search("zzz");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
    EXPECT_EQ(lines().model()->rowCount(), 2);
    asker.expectModal("frmSearchRS", [](QWidget& list) { list.close(); });
    search("Cool");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
    EXPECT_EQ(lines().model()->rowCount(), 2);
    search("O'B");
    expectReport("clsLog:openLog");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
}

TEST_F(NoLogsTest, AnEmptyLogLeavesTheFormEmptyAndAllToolsOff) {
    openScreen();
    EXPECT_EQ(str(shown("txtlog_Name")), "");
    EXPECT_EQ(str(shown("txtlog_Date")), "");
    EXPECT_EQ(str(shown("txtlog_Cost")), "$ 0.00");
    EXPECT_EQ(str(results()), "||||||||");
    EXPECT_EQ(lines().model()->rowCount(), 0);
    EXPECT_TRUE(log().formLocked());
    for (const QString& name : recordTools())
        EXPECT_EQ(on(name), name == "cmdOptions") << str(name);
    log().moveNext();
    expectReport("frmLog:moveNext");
    log().movePrevious();
    expectReport("frmLog:movePrevious");
    log().moveFirst();
    log().moveLast();
}

TEST_F(LogScreenTest, ALotIsFoundWhateverItHolds) {
    openScreen();
    EXPECT_TRUE(log().isLogged("AB0012"));
    EXPECT_FALSE(log().isLogged("AB001"));
    EXPECT_FALSE(log().isLogged("O'B"));
    sql("UPDATE Log SET log_Lot = 'O''B' WHERE LogID = 3");
    EXPECT_TRUE(log().isLogged("O'B"));
}

}  // namespace
