// Failures inside the screens' procedures: each is reported under the tag of its procedure, and the window
// lives on. What makes them fail is real where it can be: a key beyond its range, a refused statement, a
// language store that fails, options or a main window that are not there.
#include "ScreenTest.h"

#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "screens/frmChemical.h"
#include "screens/frmCurrFormula.h"
#include "screens/frmFormula.h"
#include "screens/frmLog.h"
#include "screens/frmPatient.h"
#include "shared/Guard.h"
#include "support/BrokenTranslator.h"

#include <QPushButton>
#include <algorithm>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class ScreenFailuresTest : public ScreenTest {
protected:
    void seed() override {
        seedLogs();
        sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (1, 'Jane', 'Doe');"
            "INSERT INTO RXs (RXsID, LogID, PatientID, rxs_Date, rxs_QTY) VALUES"
            " (31, 1, 1, '2026-01-06 00:00:00', 20);");
    }
    /// Loads, and brings up the strip of reports while its own texts are still to be had.
    void start() {
        load();
        guarded("start", [] { throw platform::RuntimeError(5, "The first report"); });
        dropReports();
    }
    /// Whether the tag is among the reports so far; forgets them all.
    bool reported(const QString& tag) {
        const bool found = std::any_of(reporter->calls.begin(), reporter->calls.end(),
                                       [&](const support::ReportCall& call) { return call.tag == tag; });
        dropReports();
        return found;
    }
    /// Runs the action while there are no options.
    template <class Action>
    static void withoutOptions(Action&& action) {
        const auto kept = std::exchange(basMain::Options, nullptr);
        action();
        basMain::Options = kept;
    }
    /// Runs the action while there is no main window.
    template <class Action>
    static void withoutWindow(Action&& action) {
        MainWindow* const kept = std::exchange(basMain::Main, nullptr);
        action();
        basMain::Main = kept;
    }
    void tell(ScreenNumber number, const QString& toolName) const {
        dynamic_cast<ToolListener&>(*window->screen(number)).m_frmMain_btnClick(toolName, QString());
    }
    void press(ScreenNumber number, const QString& button) const {
        control<QPushButton>(number, button).click();
    }
};

struct ScreenCase {
    ScreenNumber number;
    const char* name;
    const char* table;  ///< nothing: the screen has no set of records
    const char* key;
};

const ScreenCase screens[] = {{formulas, "frmFormula", "Formula", "FormulaID"},
                              {chemicals, "frmChemical", "Chemical", "ChemicalID"},
                              {logs, "frmLog", "Log", "LogID"},
                              {patients, "frmPatient", "Patient", "PatientID"},
                              {currentFormula, "frmCurrFormula", nullptr, nullptr}};

std::unique_ptr<RecordScreen> fresh(Context& context, ScreenNumber number) {
    switch (number) {
    case formulas:
        return std::make_unique<frmFormula>(context);
    case chemicals:
        return std::make_unique<frmChemical>(context);
    case logs:
        return std::make_unique<frmLog>(context);
    case patients:
        return std::make_unique<frmPatient>(context);
    default:
        return std::make_unique<frmCurrFormula>(context);
    }
}

TEST_F(ScreenFailuresTest, AKeyBeyondItsRangeEndsTheLoading) {
    start();
    sql("DELETE FROM RXs; DELETE FROM LogChem; DELETE FROM FormChem;");
    for (const ScreenCase& screen : screens) {
        if (!screen.table)
            continue;
        sql(u"DELETE FROM %1; INSERT INTO %1 (%2) VALUES (40000);"_s.arg(screen.table, screen.key));
        fresh(context, screen.number)->Form_Load();
        EXPECT_TRUE(reported(u"%1:Form_Load"_s.arg(screen.name))) << screen.name;
    }
}

TEST_F(ScreenFailuresTest, AKeyBeyondItsRangeEndsTheCancelOfANewRecord) {
    start();
    click("cmdChemicals");
    click("cmdCancel");
    sql("DELETE FROM RXs; DELETE FROM LogChem; DELETE FROM FormChem;");
    const std::pair<ScreenCase, const char*> cases[] = {
        {screens[0], "cmdFormulas"}, {screens[1], "cmdChemicals"}, {screens[3], "cmdPatients"}};
    for (const auto& [screen, opener] : cases) {
        click(opener);
        click("cmdNew");
        sql(u"UPDATE %1 SET %2 = %2 + 40000 WHERE %2 < (SELECT max(%2) FROM %1)"_s.arg(screen.table,
                                                                                       screen.key));
        click("cmdCancel");
        EXPECT_TRUE(reported(u"%1:m_frmMain_btnClick"_s.arg(screen.name))) << screen.name;
        click("cmdCancel");  // no longer new: the screen only locks
        EXPECT_TRUE(dynamic_cast<BrowsingScreen&>(*window->screen(screen.number)).formLocked())
            << screen.name;
        dropReports();
    }
}

TEST_F(ScreenFailuresTest, AFailingTextEndsTheTranslation) {
    start();
    for (const ScreenCase& screen : screens) {
        const auto form = fresh(context, screen.number);
        {
            const support::BrokenTranslator broken;
            form->Form_Load();
        }
        // A blank chemical already needs the texts of its prompts, so that screen fails one step earlier.
        const QString procedure = screen.number == chemicals ? "Form_Load" : "translateForm";
        EXPECT_TRUE(reported(screen.name + (":" + procedure))) << screen.name;
    }
}

TEST_F(ScreenFailuresTest, WithoutAWindowTheToolsCantBeSet) {
    start();
    for (const ScreenCase& screen : screens) {
        withoutWindow([&] { tell(screen.number, "mnuUpdate"); });
        EXPECT_TRUE(reported(u"%1:setMenuOptions"_s.arg(screen.name))) << screen.name;
    }
}

TEST_F(ScreenFailuresTest, APromptThatFailsEndsTheClearing) {
    start();
    click("cmdChemicals");
    click("cmdCancel");
    for (const auto& [opener, tag] : {std::pair("cmdFormulas", "frmFormula:clearForm"),
                                      std::pair("cmdChemicals", "frmChemical:clearForm")}) {
        click(opener);
        {
            const support::BrokenTranslator broken;
            force("cmdNew");
        }
        EXPECT_TRUE(reported(tag)) << tag;
        click("cmdCancel");
        dropReports();
    }
}

TEST_F(ScreenFailuresTest, TheFormulaScreensOwnProcedures) {
    start();
    click("cmdEdit");
    auto& type = control<platform::ChoiceBox>(formulas, "cbofrm_Type");
    {
        const support::BrokenTranslator broken;
        type.setListIndex(0);
        EXPECT_TRUE(reported("frmFormula:cbofrm_Type_Click"));
        press(formulas, "cmdAddMix");  // neither time nor cycles
        EXPECT_TRUE(reported("frmFormula:cmdAddMix_Click"));
        press(formulas, "cmdAdd");
        EXPECT_TRUE(reported("frmFormula:cmdAdd_Click"));
    }
    withoutOptions([&] { control<platform::ChoiceBox>(formulas, "cbofrm_JarSize").setListIndex(2); });
    EXPECT_TRUE(reported("frmFormula:cbofrm_JarSize_Click"));
    withoutWindow([&] { tell(formulas, "cmdMake"); });
    EXPECT_TRUE(reported("frmFormula:makeFormula"));
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(ScreenFailuresTest, ThePatientScreensOwnProcedures) {
    start();
    click("cmdPatients");
    control<platform::RecordGrid>(patients, "grdRXs").selectRow(0);
    failStatement("SELECT Log.FormulaID");
    asker.expectMsgBox("Formula not found.");
    click("cmdMake");
    EXPECT_TRUE(reported("frmPatient:getFormula"));
    openDB()->setTrace({});
    control<platform::RecordGrid>(patients, "grdRXs").selectRow(0);
    withoutWindow([&] { tell(patients, "cmdMake"); });
    EXPECT_TRUE(reported("frmPatient:makeFormula"));
    failStatement("SELECT Log.log_Name");
    click("mnuLabel");
    EXPECT_TRUE(reported("frmPatient:printRX"));
    openDB()->setTrace({});
    withoutOptions([&] { tell(patients, "mnuReport"); });
    EXPECT_TRUE(reported("frmPatient:printRXReport"));
    click("cmdEdit");
    {
        const support::BrokenTranslator broken;
        press(patients, "cmdAddRX");
    }
    EXPECT_TRUE(reported("frmPatient:cmdAddRX_Click"));
}

TEST_F(ScreenFailuresTest, TheListOfChemicals) {
    start();
    click("cmdChemicals");
    click("cmdCancel");
    failStatement("FROM Chemical ORDER BY chm_Name");
    click("mnuReport");
    EXPECT_TRUE(reported("frmChemical:printChemicals"));
    EXPECT_FALSE(closePreview());
}

}  // namespace
