// The bar as a program uses it and as a user clicks it.
#include "Gallery.h"
#include "SampleRows.h"
#include "Settle.h"
#include "Waiting.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/BarButton.h"
#include "platform/widgets/BarKeys.h"
#include "platform/widgets/EnterKey.h"
#include "platform/widgets/Theme.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

class Bar : public testing::Test {
protected:
    Bar() {
        support::buildSampleBar(bar);
        window.resize(1200, 600);
        bar.attach(window, "Panel");
        first = new QPushButton("first", &window);
        second = new QPushButton("second", &window);
        bar.band("Formulas").tool("frmFormula").setForm(first);
        bar.band("Chemicals").tool("frmChemical").setForm(second);
        bar.band("Chemicals").setVisible(false);
        QObject::connect(&bar, &CommandBar::toolClick, &window,
                         [this](Tool& tool) { clicks << tool.name(); });
        QObject::connect(&bar, &CommandBar::toolKeyPress, &window,
                         [this](Tool& tool, int key) { keys << tool.name() + ":" + QString::number(key); });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(support::becomesActive(&window));
    }
    static void pressF6(Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, modifiers);
    }
    Tool& tool(const char* name) { return bar.band("MainBar").tool(name); }
    BarButton* button(const char* name) { return window.findChild<BarButton*>(name); }
    QLineEdit* search() { return window.findChild<QLineEdit*>("searchBox"); }
    QMenu* menu(const char* name) { return window.menuBar()->findChild<QMenu*>(name); }
    QAction* entry(const char* menuName, const char* name) {
        for (QAction* action : menu(menuName)->actions())
            if (action->objectName() == name)
                return action;
        return nullptr;
    }

    QMainWindow window;
    CommandBar bar;
    QPushButton *first, *second;
    QStringList clicks, keys;
};

TEST_F(Bar, FindsBandsAndToolsByName) {
    EXPECT_EQ(tool("cmdSave").name(), "cmdSave");
    EXPECT_EQ(tool("cmdSave").category(), "Navigation");
    EXPECT_EQ(tool("cmdPrint").subBand(), "mnuPrint");
    EXPECT_EQ(bar.band("Forms").childBand("Formulas").tool("frmFormula").kind(), ToolKind::Host);
    EXPECT_EQ(bar.band("mnuFile").tool("mnuPrint").subBand(), "mnuPrint");
    EXPECT_THROW(bar.band("Nothing"), RuntimeError);
    EXPECT_THROW(tool("Nothing"), RuntimeError);
    EXPECT_THROW(bar.band("Forms").childBand("Nothing"), RuntimeError);
}

TEST_F(Bar, AClickOnAPictureRaisesItsTool) {
    QTest::mouseClick(button("cmdSave"), Qt::LeftButton);
    QTest::mouseClick(button("cmdFormulas"), Qt::LeftButton);
    EXPECT_EQ(clicks, QStringList({"cmdSave", "cmdFormulas"}));
}

TEST_F(Bar, AScreenReaderPressesAPictureAsAMouseDoes) {
    for (const char* name : {"cmdSave", "cmdFormulas"}) {
        QAccessibleActionInterface& actions =
            *QAccessible::queryAccessibleInterface(button(name))->actionInterface();
        actions.doAction(actions.actionNames().front());
    }
    EXPECT_TRUE(support::waitFor([&] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks, QStringList({"cmdSave", "cmdFormulas"}));
    EXPECT_FALSE(button("cmdFormulas")->isChecked()) << "whether it is on is the program's to say";
}

TEST_F(Bar, WhatIsOffOrHiddenIsNotClicked) {
    tool("cmdSave").setEnabled(false);
    EXPECT_FALSE(button("cmdSave")->isEnabled());
    QTest::mouseClick(button("cmdSave"), Qt::LeftButton);
    bar.click(tool("cmdSave"));
    tool("cmdEdit").setVisible(false);
    EXPECT_FALSE(button("cmdEdit")->isVisible());
    bar.click(tool("cmdEdit"));
    EXPECT_TRUE(clicks.isEmpty());
    tool("cmdSave").setEnabled(true);
    EXPECT_TRUE(button("cmdSave")->isEnabled());
    tool("cmdEdit").setVisible(true);
    EXPECT_TRUE(button("cmdEdit")->isVisible());
}

TEST_F(Bar, TheCheckedStateIsTheTools) {
    Tool& formulas = bar.band("FormBar").tool("cmdFormulas");
    formulas.setChecked(true);
    EXPECT_TRUE(button("cmdFormulas")->isChecked());
    QTest::mouseClick(button("cmdFormulas"), Qt::LeftButton);
    EXPECT_TRUE(button("cmdFormulas")->isChecked());
    QTest::mouseClick(button("cmdLogs"), Qt::LeftButton);
    EXPECT_FALSE(button("cmdLogs")->isChecked());
    formulas.setChecked(false);
    EXPECT_FALSE(button("cmdFormulas")->isChecked());
}

TEST_F(Bar, ButtonAndEntryAreTheToolsAction) {
    EXPECT_EQ(button("cmdSave")->defaultAction(), &tool("cmdSave").action());
    EXPECT_EQ(entry("mnuFile", "mnuExit"), &bar.band("mnuFile").tool("mnuExit").action());
    tool("cmdSave").action().trigger();
    EXPECT_EQ(clicks, QStringList("cmdSave"));
    EXPECT_TRUE(bar.hasTool("cmdSave"));
    EXPECT_FALSE(bar.hasTool("cmdSafe"));
}

TEST_F(Bar, TipsAreShownAsTheyWereSetAndNamesLeaveTheMarkOut) {
    EXPECT_EQ(tool("cmdMake").toolTip(), "&Make Formula");
    EXPECT_EQ(button("cmdMake")->toolTip(), "&Make Formula (Ctrl+M)");
    EXPECT_EQ(button("cmdMake")->accessibleName(), "Make Formula");
    tool("cmdMake").setToolTip("Rezeptur && Gefäß &machen");
    EXPECT_EQ(button("cmdMake")->accessibleName(), u"Rezeptur & Gefäß machen"_s);
}

TEST_F(Bar, EveryPictureButtonHasANameAndAPicture) {
    for (const auto* each : window.findChildren<BarButton*>()) {
        EXPECT_FALSE(each->accessibleName().isEmpty()) << each->objectName().toStdString();
        EXPECT_FALSE(each->icon().isNull()) << each->objectName().toStdString();
        EXPECT_TRUE(each->text().isEmpty());
    }
    EXPECT_EQ(search()->accessibleName(), "Find");
}

TEST_F(Bar, ShortcutsClickTheirTool) {
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(clicks, QStringList("cmdSave"));
    tool("cmdSave").setEnabled(false);
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(clicks.size(), 1);
    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search()->hasFocus());
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(Bar, MenusOpenTheBandsTheyName) {
    EXPECT_EQ(window.menuBar()->actions().size(), 3);
    EXPECT_EQ(window.menuBar()->actions().at(1)->text(), "&Activities");
    entry("mnuFile", "mnuExit")->trigger();
    entry("mnuActivities", "mnuFormulas")->trigger();
    EXPECT_EQ(clicks, QStringList({"mnuExit", "mnuFormulas"}));
    EXPECT_TRUE(entry("mnuFile", "mnuExit"));
    EXPECT_EQ(entry("mnuFile", "mnuExit")->text(), "E&xit");
}

TEST_F(Bar, AMenuEntryFollowsItsTool) {
    Tool& exit = bar.band("mnuFile").tool("mnuExit");
    exit.setCaption("&Beenden");
    exit.setEnabled(false);
    EXPECT_EQ(entry("mnuFile", "mnuExit")->text(), "&Beenden");
    EXPECT_FALSE(entry("mnuFile", "mnuExit")->isEnabled());
    exit.setVisible(false);
    EXPECT_FALSE(entry("mnuFile", "mnuExit")->isVisible());
}

TEST_F(Bar, OneBandOpensFromTwoPlacesInOneState) {
    Tool& label = bar.band("mnuPrint").tool("mnuLabel");
    label.setEnabled(false);
    QAction* inFile = nullptr;
    for (QAction* action : menu("mnuPrint")->actions())
        if (action->objectName() == "mnuLabel")
            inFile = action;
    ASSERT_NE(inFile, nullptr);
    EXPECT_FALSE(inFile->isEnabled());
    for (QAction* action : button("cmdPrint")->menu()->actions()) {
        if (action->objectName() == "mnuLabel") {
            EXPECT_FALSE(action->isEnabled());
        }
    }
}

TEST_F(Bar, AnOpenerOnTheToolBarIsClickedAndShowsItsMenu) {
    QTimer::singleShot(0, &window, [this] {
        QMenu* shown = button("cmdPrint")->menu();
        EXPECT_TRUE(shown->isVisible());
        QTest::keyClick(shown, Qt::Key_Down);
        QTest::keyClick(shown, Qt::Key_Return);
    });
    QTest::mousePress(button("cmdPrint"), Qt::LeftButton);
    EXPECT_EQ(clicks, QStringList({"cmdPrint", "mnuWorksheet"}));
}

TEST_F(Bar, AnOpenerThatIsOffStaysClosed) {
    tool("cmdPrint").setEnabled(false);
    QTest::mouseClick(button("cmdPrint"), Qt::LeftButton);
    EXPECT_FALSE(button("cmdPrint")->menu()->isVisible());
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(Bar, AccessKeysOpenTheMenus) {
    QTimer::singleShot(0, &window, [this] {
        EXPECT_TRUE(menu("mnuActivities")->isVisible());
        QTest::keyClick(menu("mnuActivities"), Qt::Key_C);
    });
    QTest::keyClick(&window, Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(support::waitFor([this] { return clicks.contains("mnuChemicals"); }));
    EXPECT_EQ(clicks, QStringList({"mnuActivities", "mnuChemicals"}));
}

TEST_F(Bar, EnterInTheSearchBoxIsThirteenOnBothKeys) {
    search()->setFocus();
    QTest::keyClicks(search(), "hy");
    EXPECT_EQ(tool("txtSearch").text(), "hy");
    QTest::keyClick(search(), Qt::Key_Return);
    QTest::keyClick(search(), Qt::Key_Enter);
    EXPECT_EQ(keys, QStringList({"txtSearch:104", "txtSearch:121", "txtSearch:13", "txtSearch:13"}));
    EXPECT_TRUE(clicks.isEmpty());
    EXPECT_EQ(search()->text(), "hy");
}

TEST_F(Bar, AHandlerMayEmptyTheSearchBox) {
    QObject::connect(&bar, &CommandBar::toolKeyPress, &window, [](Tool& box, int key) {
        if (key == 13)
            box.setText({});
    });
    QTest::keyClicks(search(), "abc");
    QTest::keyClick(search(), Qt::Key_Return);
    EXPECT_EQ(search()->text(), "");
    EXPECT_EQ(tool("txtSearch").text(), "");
}

TEST_F(Bar, TheVisibleBandShowsItsWindow) {
    EXPECT_TRUE(first->isVisible());
    EXPECT_FALSE(second->isVisible());
    bar.band("Formulas").setVisible(false);
    EXPECT_FALSE(first->isVisible());
    bar.band("Chemicals").setVisible(true);
    EXPECT_TRUE(second->isVisible());
    EXPECT_FALSE(first->isVisible());
}

TEST_F(Bar, PlacingAWindowTakesItFromItsFormerTool) {
    Tool& child = bar.band("Forms").childBand("Formulas").tool("frmFormula");
    child.setForm(first);
    EXPECT_EQ(child.form(), first);
    EXPECT_EQ(bar.band("Formulas").tool("frmFormula").form(), nullptr);
    EXPECT_FALSE(first->isVisible());
    bar.band("Formulas").tool("frmFormula").setForm(first);
    EXPECT_EQ(child.form(), nullptr);
    EXPECT_TRUE(first->isVisible());
}

TEST_F(Bar, TheBandAtTheRightStaysBesideTheScreens) {
    auto* panel = new QPushButton("panel");
    bar.band("Panel").tool("frmPanel").setForm(panel);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_GT(panel->mapTo(&window, QPoint()).x(), first->mapTo(&window, QPoint(first->width(), 0)).x() - 1);
    const QWidget* column = panel->parentWidget();
    while (column && !qobject_cast<const QScrollArea*>(column))
        column = column->parentWidget();
    ASSERT_TRUE(column);
    EXPECT_GE(column->width(), 312);  // in any look; what its frame takes of that is the look's own
    bar.band("Formulas").setVisible(false);
    bar.band("Chemicals").setVisible(true);
    EXPECT_TRUE(panel->isVisible());
    bar.band("Panel").setVisible(false);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(Bar, ADestroyedWindowLeavesAnEmptyTool) {
    delete first;
    EXPECT_EQ(bar.band("Formulas").tool("frmFormula").form(), nullptr);
    bar.recalcLayout();
}

TEST_F(Bar, AStripStandsAboveTheScreens) {
    auto* strip = new QLabel("A report");
    bar.addStrip(*strip);
    strip->show();
    support::settle();
    EXPECT_LT(strip->mapTo(&window, QPoint()).y(), first->mapTo(&window, QPoint()).y());
}

TEST_F(Bar, ABandOfToolsCanBeHidden) {
    bar.band("MainBar").setVisible(false);
    EXPECT_FALSE(button("cmdSave")->isVisible());
    bar.band("MainBar").setVisible(true);
    EXPECT_TRUE(button("cmdSave")->isVisible());
}

TEST_F(Bar, F6WalksThroughTheAreasAndArrowsAlongABar) {
    first->setFocus();
    QTest::keyClick(first, Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdFirst"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdPrevious"));
    tool("cmdNext").setEnabled(false);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdLast"));
    const EnterKey enter(nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(clicks, QStringList("cmdLast"));
    pressF6();
    EXPECT_EQ(QApplication::focusWidget(), search());
    pressF6();
    EXPECT_EQ(QApplication::focusWidget(), button("cmdCurrent"));
    pressF6();
    EXPECT_EQ(QApplication::focusWidget(), first);
    pressF6(Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdCurrent"));
    pressF6(Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), search());
    tool("txtSearch").setEnabled(false);
    first->setFocus();
    pressF6(Qt::ShiftModifier);
    pressF6(Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdFirst")) << "a box that is off is passed over";
}

TEST_F(Bar, F6BeginsWhereNobodyHasTheKeyboard) {
    first->setFocus();
    first->clearFocus();
    ASSERT_EQ(QApplication::focusWidget(), nullptr);
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdFirst"));
}

TEST_F(Bar, F6StopsAtWhatAnAreaHasMarkedWhileItCanBeUsed) {
    auto* panel = new QWidget;
    auto* start = new QPushButton("start", panel);
    auto* sign = new QPushButton("sign", panel);
    sign->setProperty(BarKeys::firstStop, true);
    bar.band("Panel").tool("frmPanel").setForm(panel);
    first->setFocus();
    pressF6();
    EXPECT_EQ(QApplication::focusWidget(), sign);
    sign->hide();
    first->setFocus();
    pressF6();
    EXPECT_EQ(QApplication::focusWidget(), start);
}

TEST_F(Bar, F6ReachesAStripAndTheStatusLine) {
    auto* strip = new QPushButton("strip");
    auto* row = new QFrame;
    strip->setParent(row);
    bar.addStrip(*row);
    row->show();
    auto* state = new QPushButton("state");
    window.statusBar()->addPermanentWidget(state);
    window.statusBar()->show();
    first->setFocus();
    pressF6(Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), strip);
    first->setFocus();
    pressF6();
    EXPECT_EQ(QApplication::focusWidget(), state);
}

TEST_F(Bar, TheArrowsReachAButtonAtTheEndOfTheBar) {
    auto* end = new QToolButton;
    end->setFocusPolicy(Qt::NoFocus);
    bar.addAtEnd("MainBar", *end);
    support::settle();
    button("cmdExport")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), end);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    EXPECT_EQ(QApplication::focusWidget(), button("cmdExport"));
}

TEST_F(Bar, EnterOnAnOpenerBringsItsMenuUpAtTheFirstEntryThatIsOn) {
    const EnterKey enter(nullptr);
    bar.band("mnuPrint").tool("mnuWorksheet").setEnabled(false);
    button("cmdPrint")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QMenu* shown = button("cmdPrint")->menu();
    ASSERT_TRUE(shown->isVisible());
    ASSERT_TRUE(shown->activeAction());
    EXPECT_TRUE(shown->activeAction()->isEnabled());
    EXPECT_NE(shown->activeAction()->objectName(), "mnuWorksheet");
    shown->close();
}

TEST_F(Bar, AClickOnTheBarLeavesTheFocusInTheScreen) {
    first->setFocus();
    QTest::mouseClick(button("cmdSave"), Qt::LeftButton);
    EXPECT_TRUE(first->hasFocus());
}

TEST(BarKeysOfOpeners, BringUpTheirMenuAndAreOneClick) {
    QMainWindow window;
    CommandBar bar;
    QStringList clicks;
    QObject::connect(&bar, &CommandBar::toolClick, &window, [&](Tool& tool) { clicks << tool.name(); });
    bar.addBand(u"mnuPrint"_s, BandKind::Menu)
        .addTool(ToolKind::MenuEntry, u"mnuLabel"_s, {}, {}, {}, u"Ctrl+L"_s)
        .setCaption(u"&Label"_s);
    bar.addBand(u"MainBar"_s, BandKind::ToolBar)
        .addTool(ToolKind::SubMenu, u"cmdPrint"_s, {}, u"print"_s, u"mnuPrint"_s, u"Ctrl+P"_s);
    bar.attach(window, {});
    window.show();
    window.activateWindow();
    ASSERT_TRUE(support::becomesActive(&window));
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    QMenu* menu = window.findChild<BarButton*>(u"cmdPrint"_s)->menu();
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(clicks, QStringList(u"cmdPrint"_s));
    EXPECT_EQ(menu->actions().first(), &bar.band(u"mnuPrint"_s).tool(u"mnuLabel"_s).action());
    EXPECT_EQ(menu->actions().first()->shortcut(), QKeySequence(u"Ctrl+L"_s));
    menu->close();
    bar.band(u"MainBar"_s).tool(u"cmdPrint"_s).setEnabled(false);
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(clicks.size(), 1);
}

TEST(BarKeysOfEntries, AreShownInTheMenuAndInTheTipOfTheButton) {
    QMainWindow window;
    CommandBar bar;
    QStringList clicks;
    QObject::connect(&bar, &CommandBar::toolClick, &window, [&](Tool& tool) { clicks << tool.name(); });
    auto& file = bar.addBand(u"mnuFile"_s, BandKind::Menu);
    file.addTool(ToolKind::MenuEntry, u"mnuOptions"_s, {}, {}, {}, u"Ctrl+,"_s).setCaption(u"&Options"_s);
    file.addTool(ToolKind::SubMenu, u"mnuPrint"_s, {}, {}, u"mnuLabels"_s, u"Ctrl+P"_s);
    bar.addBand(u"mnuLabels"_s, BandKind::Menu).addTool(ToolKind::MenuEntry, u"mnuLabel"_s);
    bar.addBand(u"mnuMain"_s, BandKind::MenuBar)
        .addTool(ToolKind::SubMenu, u"mnuFile"_s, {}, {}, u"mnuFile"_s)
        .setCaption(u"&File"_s);
    auto& tools = bar.addBand(u"MainBar"_s, BandKind::ToolBar);
    Tool& options = tools.addTool(ToolKind::Button, u"cmdOptions"_s, {}, u"options"_s);
    Tool& print = tools.addTool(ToolKind::SubMenu, u"cmdPrint"_s, {}, u"print"_s, u"mnuLabels"_s);
    options.setKeysOf(file.tool(u"mnuOptions"_s));
    print.setKeysOf(file.tool(u"mnuPrint"_s));
    bar.attach(window, {});
    options.setToolTip(u"Options"_s);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(support::becomesActive(&window));
    EXPECT_EQ(options.action().toolTip(), u"Options (Ctrl+,)"_s);
    EXPECT_TRUE(options.action().shortcut().isEmpty()) << "a second owner would make the keys ambiguous";
    QTest::keyClick(&window, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(clicks, QStringList(u"mnuOptions"_s));
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    QMenu* menu = window.findChild<BarButton*>(u"cmdPrint"_s)->menu();
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    print.setEnabled(false);
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    EXPECT_FALSE(menu->isVisible());
}

TEST(BarModel, WorksWithoutAWindow) {
    CommandBar bar;
    support::buildSampleBar(bar);
    QStringList clicks;
    QObject::connect(&bar, &CommandBar::toolClick, &bar, [&clicks](Tool& tool) { clicks << tool.name(); });
    Tool& save = bar.band("MainBar").tool("cmdSave");
    save.setEnabled(false);
    bar.click(save);
    save.setEnabled(true);
    save.setChecked(true);
    save.setDescription("Saves");
    bar.click(save);
    bar.click(bar.band("MainBar").tool("cmdPrint"));
    bar.recalcLayout();
    EXPECT_EQ(clicks, QStringList({"cmdSave", "cmdPrint"}));
    EXPECT_TRUE(save.checked());
    EXPECT_EQ(save.description(), "Saves");
    bar.band("mnuFile").setCaption("&Datei");
    EXPECT_EQ(bar.band("mnuFile").caption(), "&Datei");
}

TEST(BarModel, OutlivesItsWindow) {
    CommandBar bar;
    support::buildSampleBar(bar);
    {
        QMainWindow window;
        bar.attach(window, "Panel");
        window.show();
    }
    bar.band("MainBar").tool("cmdSave").setEnabled(false);
    bar.band("Formulas").setVisible(false);
    bar.recalcLayout();
}

}  // namespace
