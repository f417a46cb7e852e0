// The three screens whose records are typed in, side by side: what their tools do to typed text, to the form
// and to a new record.
#include "ScreenTest.h"

#include "platform/ask/Ask.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "screens/frmChemical.h"
#include "screens/frmFormula.h"
#include "screens/frmPatient.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

/// Each screen with a field of its own.
class TypedScreensTest : public ScreenTest {
protected:
    struct Case {
        ScreenNumber number;
        const char *tool, *entry, *table, *field, *required;
    };
    static constexpr Case cases[] = {
        {formulas, "cmdFormulas", "mnuFormulas", "Formula", "txtfrm_Strength", "txtfrm_Name"},
        {chemicals, "cmdChemicals", "mnuChemicals", "Chemical", "txtchm_Lot", "txtchm_Name"},
        {patients, "cmdPatients", "mnuPatients", "Patient", "txtpat_City", "txtpat_FName"}};

    void seed() override {
        seedFormulas();
        sql("DELETE FROM FormChem; INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES"
            " (1, 'Jane', 'Doe'), (2, 'Ole', 'Lie');");
    }
    /// Comes up locked, whatever the screen's first state is.
    void show(const Case& screen) const {
        click(screen.tool);
        if (on("cmdCancel"))
            click("cmdCancel");
    }
    platform::TextBox& field(const Case& screen) const {
        return control<platform::TextBox>(screen.number, screen.field);
    }
    BrowsingScreen& form(const Case& screen) const { return this->screen<BrowsingScreen>(screen.number); }
    static QString closingQuestion(const Case& screen) {
        return u"%1 data not saved! Save Changes?"_s.arg(screen.table);
    }
    QString rows(const Case& screen) const { return sqlText(u"SELECT count(*) FROM %1"_s.arg(screen.table)); }
};

TEST_F(TypedScreensTest, TheScreensOwnToolAndMenuEntryShowTheRecordAgain) {
    load();
    for (const Case& screen : cases) {
        show(screen);
        const QString before = field(screen).text();
        click("cmdEdit");
        for (const char* toolName : {screen.tool, screen.entry}) {
            field(screen).setText("typed");
            click(toolName);
            EXPECT_EQ(str(field(screen).text()), str(before)) << toolName;
        }
        click("cmdCancel");
    }
}

TEST_F(TypedScreensTest, AnyOtherToolShowsAPatientAgainAndLeavesTheOthersAsTyped) {
    load();
    for (const Case& screen : cases) {
        show(screen);
        click("cmdEdit");
        field(screen).setText("typed");
        click("mnuUpdate");
        EXPECT_EQ(field(screen).text() == "typed", screen.number != patients) << screen.tool;
        click("cmdCancel");
    }
}

TEST_F(TypedScreensTest, ARefusedSaveARefreshAndUnlockingEnableTheForm) {
    load();
    for (const Case& screen : cases) {
        show(screen);
        form(screen).setEnabled(false);
        form(screen).unlockForm();
        EXPECT_TRUE(form(screen).isEnabled()) << screen.tool;
        form(screen).setEnabled(false);
        form(screen).refreshForm();
        EXPECT_TRUE(form(screen).isEnabled()) << screen.tool;
        click(screen.tool);  // the tools follow the lock again
        control<platform::TextBox>(screen.number, screen.required).clear();
        const QString told = screen.number == formulas    ? "Formula Name is required"
                             : screen.number == chemicals ? "Chemical Name is required"
                                                          : "First Name is required";
        asker.expectMsgBox(told);
        form(screen).setEnabled(false);
        form(screen).m_frmMain_btnClick("cmdSave", QString());
        EXPECT_TRUE(form(screen).isEnabled()) << screen.tool;
        EXPECT_FALSE(form(screen).formLocked()) << screen.tool;
        click("cmdCancel");
    }
}

TEST_F(TypedScreensTest, ADeletionEndsTheStateOfANewRecord) {
    load();
    for (const Case& screen : cases) {
        show(screen);
        click("cmdNew");
        const QString before = rows(screen);
        asker.expectMsgBox(screen.number == patients ? "Delete , ?" : "Delete ?", platform::deletionStyle,
                           platform::Answer::No);
        force("cmdDelete");
        EXPECT_TRUE(form(screen).formLocked()) << screen.tool;
        click("cmdEdit");
        click("cmdCancel");
        EXPECT_EQ(str(rows(screen)), str(before)) << "the cancel deletes nothing: " << screen.tool;
    }
}

// Where another screen keeps the program open, Cancel takes back what was typed since and not the record.
TEST_F(TypedScreensTest, ARecordSavedByTheClosingQuestionIsNoLongerNew) {
    load();
    for (const Case& screen : cases) {
        show(screen);
        click("cmdNew");
        if (screen.number == formulas)
            control<platform::NumberBox>(formulas, "txtfrm_Quantity").setText("20");
        if (screen.number == patients)
            control<platform::TextBox>(patients, "txtpat_LName").setText("Kept");
        control<platform::TextBox>(screen.number, screen.required).setText("Kept");
        const QString before = rows(screen);
        asker.expectMsgBox(closingQuestion(screen),
                           {platform::Buttons::YesNoCancel, platform::Icon::Exclamation, false, true},
                           "Save Data?", platform::Answer::Yes);
        EXPECT_EQ(form(screen).closeForm(), 6);
        field(screen).setText("typed");
        click("cmdCancel");
        EXPECT_EQ(str(rows(screen)), str(before)) << screen.tool;
        EXPECT_EQ(str(control<platform::TextBox>(screen.number, screen.required).text()), "Kept");
        EXPECT_EQ(str(field(screen).text()), "");
        EXPECT_TRUE(form(screen).formLocked()) << screen.tool;
    }
}

}  // namespace
