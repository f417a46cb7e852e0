// Type, jar, the up-downs and the programme's document on the formula screen.
#include "FormulaScreenTest.h"

#include "config/clsOptions.h"
#include "platform/widgets/StepEntry.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::ChoiceBox;

namespace {

const platform::BoxStyle information{platform::Buttons::Ok, platform::Icon::Information};

class MixSettingsTest : public FormulaScreenTest {
protected:
    /// The screen as it is before any record has been shown.
    std::unique_ptr<frmFormula> fresh() {
        load();
        sql("DELETE FROM FormChem; DELETE FROM Formula;");
        auto made = std::make_unique<frmFormula>(context);
        made->Form_Load();
        return made;
    }
    QString custom() const { return formula().makeCustomXML()->xml(); }
    void populate(const QString& xml) const { formula().populateMix(document(xml)); }
    QString rows() const {
        QStringList lines;
        for (int row = 0; row < steps().count(); ++row)
            lines << steps().row(row).join('|');
        return lines.join('\n');
    }
    /// A formula without steps, its type made the custom mix.
    void editCustom() {
        edit("Plain Base");
        box<ChoiceBox>("cbofrm_Type").setListIndex(9);
    }
    void addStep(int lift, int speed, int time, int cycles) const {
        upDown("updCustRPM").setValue(lift);
        upDown("updCustSpeed").setValue(speed);
        upDown("updCustTime").setValue(time);
        upDown("updCustCycles").setValue(cycles);
        press("cmdAddMix");
    }
};

TEST_F(MixSettingsTest, UpDownsAsDesigned) {
    const auto screen = fresh();
    struct Row {
        const char *upDown, *label;
        int minimum, maximum, step, value;
        const char *designed, *atMaximum;
    };
    const Row rows[] = {
        {"updCustRPM", "lblCustRPM", 1, 120, 1, 50, "1200", "2880"},
        {"updCustSpeed", "lblCustSpeed", 1, 250, 1, 100, "1200", "3000"},
        {"updCustTime", "lblCustTime", 0, 255, 1, 0, "00:00:00", "01:00:00"},
        {"updCustCycles", "lblCustCycles", 0, 255, 1, 0, "0", "255"},
        {"updPreGrind", "lblSetPreGrind", 0, 15, 1, 0, "0", "15"},
        {"updFreeSpin", "lblSetFreeSpin", 1, 16, 1, 1, "0", "16"},
        {"updReactRPM", "lblReactRPM", 300, 600, 10, 300, "300", "600"},
        {"updReactTime", "lblReactTime", 166, 255, 1, 166, "00:10:00", "01:00:00"},
    };
    for (const Row& row : rows) {
        auto* upDown = support::child<platform::UpDown>(*screen, row.upDown);
        auto* label = support::child<QLabel>(*screen, row.label);
        EXPECT_EQ(upDown->minimum(), row.minimum) << row.upDown;
        EXPECT_EQ(upDown->maximum(), row.maximum) << row.upDown;
        EXPECT_EQ(upDown->step(), row.step) << row.upDown;
        EXPECT_EQ(upDown->value(), row.value) << row.upDown;
        EXPECT_EQ(str(label->text()), row.designed) << row.label;
        upDown->setValue(row.maximum);
        EXPECT_EQ(str(label->text()), row.atMaximum) << row.label;
    }
}

TEST_F(MixSettingsTest, ATypedSpeedThatCannotBeSetStopsTheStepAndTheSave) {
    editCustom();
    box<QTabWidget>("tabFormula").setCurrentIndex(2);
    upDown("updCustTime").setValue(3);
    auto& speed = upDown("updCustSpeed");
    QTest::keyClicks(&speed, u"1"_s);
    const auto entries = formula().findChildren<platform::StepEntry*>();
    const auto open =
        std::find_if(entries.begin(), entries.end(), [](auto* entry) { return !entry->isHidden(); });
    ASSERT_NE(open, entries.end());
    QTest::keyClicks(*open, u"000"_s);
    box<QTabWidget>("tabFormula").setCurrentIndex(0);
    press("cmdAddMix");
    EXPECT_EQ(str(rows()), "");
    EXPECT_EQ(box<QTabWidget>("tabFormula").currentIndex(), 2) << "the field comes up";
    EXPECT_FALSE(formula().saveForm());
    (*open)->setText(u"1008"_s);
    press("cmdAddMix");
    EXPECT_EQ(str(rows()), "1200|1008|00:00:03|0");
}

TEST_F(MixSettingsTest, SpeedsAreShownInRevolutions) {
    edit("Cooling Gel");
    upDown("updCustRPM").setValue(1);
    upDown("updCustSpeed").setValue(1);
    EXPECT_EQ(str(shown("lblCustRPM")), "24");
    EXPECT_EQ(str(shown("lblCustSpeed")), "12");
    upDown("updReactRPM").stepUp();
    EXPECT_EQ(str(shown("lblReactRPM")), "310");
}

TEST_F(MixSettingsTest, CaptionsOfTheTab) {
    load();
    EXPECT_EQ(str(shown("cmdAddMix")), "Add Mix");
    EXPECT_EQ(str(shown("cmdDelete")), "Delete Mix");
    EXPECT_EQ(str(shown("lblPreGrind")), "Pre Grind");
    EXPECT_EQ(str(shown("lblFreeSpin")), "Free Spin");
    EXPECT_EQ(str(shown("lblfrm_ReactRPM")), "Mix RPM");
    EXPECT_EQ(str(shown("lblfrm_ReactTime")), "Mix Time");
    EXPECT_EQ(str(box<QWidget>("fraCustom").property("title").toString()), "Optional precision settings");
    EXPECT_EQ(str(box<QWidget>("fraReaction").property("title").toString()), "Reaction Options");
    QStringList columns;
    for (int column = 0; column < 4; ++column)
        columns << steps().columnCaption(column);
    EXPECT_EQ(columns, QStringList({"Lift RPM", "Mix RPM", "Time", "Cycles"}));
}

TEST_F(MixSettingsTest, SwitchingTheTabOffDoesNotHideTheListThatIsOnShow) {
    loadAt("Cooling Gel");
    tabs().setCurrentIndex(2);
    ASSERT_TRUE(steps().isVisible());
    search("Plain");  // a preset
    EXPECT_FALSE(tabs().isTabEnabled(2));
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_TRUE(steps().isVisible());
    search("Arnica");  // a custom mix
    EXPECT_TRUE(tabs().isTabEnabled(2));
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_EQ(str(rows()), "2880|3000|00:10:00|0");
}

TEST_F(MixSettingsTest, TheTabIsOpenForTypeNineAlone) {
    edit("Cooling Gel");
    auto& type = box<ChoiceBox>("cbofrm_Type");
    for (int index = 1; index < type.count(); ++index) {
        type.setListIndex(index);
        EXPECT_EQ(tabs().isTabEnabled(2), index == 9) << index;
    }
    type.setListIndex(9);
    type.setListIndex(-1);
    EXPECT_FALSE(tabs().isTabEnabled(2));
}

TEST_F(MixSettingsTest, ACombinationMixIsRefusedAndLeavesTheTabAsItWas) {
    edit("Cooling Gel");
    auto& type = box<ChoiceBox>("cbofrm_Type");
    asker.expectMsgBox("Combination Mix is unsupported at this time");
    type.setListIndex(0);
    EXPECT_EQ(str(type.boxText()), "Select Type");
    EXPECT_EQ(type.listIndex(), -1);
    EXPECT_TRUE(tabs().isTabEnabled(2));
    click("cmdSave");
    EXPECT_EQ(str(stored("frm_FormType", 1)), "-1");
}

TEST_F(MixSettingsTest, ARecordOfTypeZeroShowsTheMessageEachTime) {
    sql("UPDATE Formula SET frm_FormType = 0 WHERE FormulaID = 2");
    load();
    for (int times = 0; times < 2; ++times) {
        asker.expectMsgBox("Combination Mix is unsupported at this time");
        search("Plain");
    }
    EXPECT_EQ(str(shown("cbofrm_Type")), "Select Type");
}

TEST_F(MixSettingsTest, APresetKeepsTheStepsOfItsList) {
    edit("Cooling Gel");
    box<ChoiceBox>("cbofrm_Type").setListIndex(3);
    EXPECT_EQ(steps().count(), 2);
    const QString before = stored("frm_Mix", 1);
    click("cmdSave");
    EXPECT_EQ(str(stored("frm_Mix", 1)), str(before));
    EXPECT_EQ(str(stored("frm_FormType", 1)), "3");
}

TEST_F(MixSettingsTest, TheJarLimitsTheSpeed) {
    edit("Cooling Gel");
    auto& jar = box<ChoiceBox>("cbofrm_JarSize");
    const int limits[] = {208, 208, 208, 191, 191, 191, 175, 175, 166};
    for (int row = 0; row < 9; ++row) {
        // From a jar of another limit, since a jar outside the rule leaves the limit as it is.
        jar.setListIndex(row < 3 ? 8 : 0);
        ASSERT_NE(upDown("updCustSpeed").maximum(), limits[row]);
        jar.setListIndex(row);
        EXPECT_EQ(upDown("updCustSpeed").maximum(), limits[row]) << row + 1;
        EXPECT_EQ(upDown("updCustRPM").maximum(), 120);
    }
}

TEST_F(MixSettingsTest, ACodeOutsideTheRuleLeavesTheLimit) {
    sql("UPDATE Formula SET frm_JarSize = 0 WHERE FormulaID = 2");
    load();  // on jar 9
    EXPECT_EQ(upDown("updCustSpeed").maximum(), 166);
    search("Plain");
    EXPECT_EQ(upDown("updCustSpeed").maximum(), 166);
    EXPECT_EQ(box<ChoiceBox>("cbofrm_JarSize").listIndex(), -1);
}

TEST_F(MixSettingsTest, TheOverrideCountsAtTheNextRunOfTheRule) {
    edit("Arnica Salve");
    basMain::Options->OverrideSpeed(1);
    EXPECT_EQ(upDown("updCustSpeed").maximum(), 166) << "not at once";
    box<ChoiceBox>("cbofrm_JarSize").setListIndex(8);
    EXPECT_EQ(upDown("updCustSpeed").maximum(), 250);
    basMain::Options->OverrideSpeed(0);
    click("cmdFormulas");
    EXPECT_EQ(upDown("updCustSpeed").maximum(), 166);
}

TEST_F(MixSettingsTest, AnythingButZeroOverridesTheLimit) {
    edit("Arnica Salve");
    const std::pair<std::int16_t, int> table[] = {{-1, 250}, {0, 166}, {7, 250}};
    for (const auto& [stored, limit] : table) {
        basMain::Options->OverrideSpeed(stored);
        box<ChoiceBox>("cbofrm_JarSize").setListIndex(8);
        EXPECT_EQ(upDown("updCustSpeed").maximum(), limit) << stored;
    }
}

TEST_F(MixSettingsTest, TheLimitLeavesValueLabelAndStepsAlone) {
    edit("Cooling Gel");
    basMain::Options->OverrideSpeed(1);
    auto& jar = box<ChoiceBox>("cbofrm_JarSize");
    jar.setListIndex(0);
    upDown("updCustSpeed").setValue(250);
    basMain::Options->OverrideSpeed(0);
    jar.setListIndex(8);
    EXPECT_EQ(upDown("updCustSpeed").value(), 250);
    EXPECT_EQ(str(shown("lblCustSpeed")), "3000");
    addStep(50, 250, 1, 0);
    upDown("updCustSpeed").stepUp();
    EXPECT_LE(upDown("updCustSpeed").value(), 250);
    EXPECT_EQ(steps().count(), 3);
    upDown("updCustSpeed").stepDown();
    EXPECT_LE(upDown("updCustSpeed").value(), 166);
}

TEST_F(MixSettingsTest, AStoredSpeedAboveTheLimitStaysAndIsSavedAgain) {
    edit("Arnica Salve");
    EXPECT_EQ(str(rows()), "2880|3000|00:10:00|0");
    const QString before = stored("frm_Mix", 3);
    click("cmdSave");
    EXPECT_EQ(str(stored("frm_Mix", 3)), str(before));
}

TEST_F(MixSettingsTest, AStepRunsForATimeOrForCycles) {
    editCustom();
    const std::pair<int, int> invalid[] = {{0, 0}, {1, 1}, {255, 255}};
    for (const auto& [time, cycles] : invalid) {
        asker.expectMsgBox("Invalid mix parameters", information);
        addStep(50, 100, time, cycles);
        EXPECT_EQ(steps().count(), 0);
    }
    addStep(50, 100, 1, 0);
    addStep(20, 40, 0, 1);
    EXPECT_EQ(str(rows()), "1200|1200|00:00:01|0\n480|480|00:00:00|1");
    EXPECT_EQ(upDown("updCustCycles").value(), 1) << "the controls keep their values";
}

TEST_F(MixSettingsTest, SpeedsOfZeroAreInvalid) {
    editCustom();
    for (const char* name : {"updCustRPM", "updCustSpeed"}) {
        upDown(name).setBounds(0, 120);
        upDown("updCustRPM").setValue(50);
        upDown("updCustSpeed").setValue(50);
        upDown("updCustTime").setValue(1);
        upDown(name).setValue(0);
        asker.expectMsgBox("Invalid mix parameters", information);
        press("cmdAddMix");
        EXPECT_EQ(steps().count(), 0);
    }
}

TEST_F(MixSettingsTest, SixteenStepsAndASilentSeventeenth) {
    editCustom();
    for (int step = 1; step <= 17; ++step)
        addStep(step, 10, 0, step);
    ASSERT_EQ(steps().count(), 16);
    EXPECT_EQ(steps().row(15).first(), "384");
    asker.expectMsgBox("Invalid mix parameters", information);
    addStep(1, 10, 0, 0);
    click("cmdSave");
    EXPECT_EQ(stored("frm_Mix", 2).count("<Mix "), 16);
}

TEST_F(MixSettingsTest, TheLineBelowCountsStepsTimeAndCyclesAndSaysThatTheListIsFull) {
    edit("Cooling Gel");
    steps().removeRow(1);
    steps().removeRow(0);
    const QLabel& line = box<QLabel>("lblSteps");
    EXPECT_EQ(str(line.text()), "0 of 16 steps");
    upDown("updCustTime").setValue(166);
    press("cmdAddMix");
    EXPECT_EQ(str(line.text()), "1 of 16 steps  \u00B7  00:10:00 in all");
    upDown("updCustTime").setValue(0);
    upDown("updCustCycles").setValue(20);
    for (int step = 2; step <= 16; ++step)
        press("cmdAddMix");
    EXPECT_EQ(str(line.text()),
              "16 of 16 steps  \u00B7  00:10:00 in all + 300 cycles  \u00B7  The list is full.");
    steps().setCurrentRow(0);
    press("cmdDelete");
    EXPECT_EQ(str(line.text()), "15 of 16 steps  \u00B7  300 cycles");
}

TEST_F(MixSettingsTest, ATimeThatCannotBeReadLeavesTheSumAway) {
    loadAt("Plain Base");
    steps().addRow({"24", "12", "soon", "0"});
    EXPECT_EQ(str(box<QLabel>("lblSteps").text()), "1 of 16 steps");
}

TEST_F(MixSettingsTest, ANewStepComesIntoView) {
    edit("Cooling Gel");
    tabs().setCurrentIndex(2);
    steps().setMaximumHeight(150);
    upDown("updCustCycles").setValue(1);
    for (int step = 3; step <= 16; ++step) {
        press("cmdAddMix");
        const QRect last = steps().visualItemRect(steps().topLevelItem(steps().count() - 1));
        EXPECT_TRUE(steps().viewport()->rect().contains(last)) << step;
    }
    EXPECT_EQ(steps().currentRow(), -1) << "Delete Mix takes no step that nobody chose";
}

TEST_F(MixSettingsTest, DeleteTakesTheSelectedStep) {
    edit("Cooling Gel");
    press("cmdDelete");
    EXPECT_EQ(steps().count(), 2) << "nothing is selected";
    steps().setCurrentRow(0);
    press("cmdDelete");
    EXPECT_EQ(str(rows()), "480|1200|00:00:00|7");
    press("cmdDelete");
    press("cmdDelete");
    EXPECT_EQ(steps().count(), 0);
}

TEST_F(MixSettingsTest, TheDocumentToTheLetter) {
    editCustom();
    EXPECT_EQ(str(custom()), "<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>");
    upDown("updPreGrind").setValue(2);
    upDown("updCustTime").setValue(166);
    press("cmdAddMix");
    EXPECT_EQ(str(custom()), "<CustomMix PreGrind=\"2\" FreeSpin=\"1\"><Mix LiftRPM=\"1200\" MixRPM=\"1200\" "
                             "MixTime=\"00:10:00\" Cycles=\"0\"/></CustomMix>");
    click("cmdSave");
    EXPECT_EQ(str(stored("frm_Mix", 2)), str(custom()));
}

TEST_F(MixSettingsTest, ShowsAnyNumberOfStepsAnywhereInTheDocument) {
    edit("Plain Base");
    QString xml = "<Old><Mix LiftRPM=\"a\" MixRPM=\"99999\" MixTime=\"never\" Cycles=\"-1\"/><Group>";
    for (int step = 0; step < 19; ++step)
        xml += u"<Mix LiftRPM=\"%1\" MixRPM=\"2\" MixTime=\"3\" Cycles=\"4\"/>"_s.arg(step);
    populate(xml + "</Group></Old>");
    EXPECT_EQ(steps().count(), 20);
    EXPECT_EQ(steps().row(0), QStringList({"a", "99999", "never", "-1"}));
    EXPECT_EQ(str(shown("lblSetFreeSpin")), "1");
    EXPECT_EQ(str(shown("lblSetPreGrind")), "0");
}

TEST_F(MixSettingsTest, AnEmptyDocumentShowsTheDefaults) {
    sql("UPDATE Formula SET frm_Mix = '' WHERE FormulaID = 1");
    loadAt("Cooling Gel");
    EXPECT_EQ(str(shown("lblSetFreeSpin")), "1");
    EXPECT_EQ(str(shown("lblSetPreGrind")), "0");
    EXPECT_EQ(steps().count(), 0);
}

TEST_F(MixSettingsTest, ShowingARecordLeavesTheUpDowns) {
    edit("Cooling Gel");
    upDown("updPreGrind").setValue(9);
    upDown("updCustCycles").setValue(5);
    click("cmdCancel");
    search("Arnica");
    EXPECT_EQ(str(shown("lblSetPreGrind")), "15");
    EXPECT_EQ(str(shown("lblSetFreeSpin")), "16");
    EXPECT_EQ(upDown("updPreGrind").value(), 9);
    EXPECT_EQ(str(shown("lblCustCycles")), "5");
    upDown("updPreGrind").stepUp();
    EXPECT_EQ(str(shown("lblSetPreGrind")), "10") << "goes on from its own old value";
}

TEST_F(MixSettingsTest, TheLabelsAreSavedAndNotTheUpDowns) {
    edit("Arnica Salve");
    EXPECT_EQ(upDown("updPreGrind").value(), 0);
    EXPECT_TRUE(custom().startsWith("<CustomMix PreGrind=\"15\" FreeSpin=\"16\">")) << str(custom());
}

TEST_F(MixSettingsTest, ReactionSettingsAreNotStored) {
    edit("Cooling Gel");
    const QString before = custom();
    upDown("updReactRPM").setValue(500);
    upDown("updReactTime").setValue(200);
    EXPECT_EQ(str(custom()), str(before));
    click("cmdSave");
    EXPECT_EQ(upDown("updReactRPM").value(), 500);
}

TEST_F(MixSettingsTest, AProgrammeWithoutAnAttributeIsAFailure) {
    edit("Plain Base");
    populate("<CustomMix PreGrind=\"3\"/>");
    expectReport("frmFormula:populateMix");
    EXPECT_EQ(str(shown("lblSetPreGrind")), "0") << "not reached";
    populate("<CustomMix FreeSpin=\"5\"/>");
    expectReport("frmFormula:populateMix");
    EXPECT_EQ(str(shown("lblSetFreeSpin")), "5");
}

TEST_F(MixSettingsTest, ABrokenStepStaysAsFarAsItGot) {
    edit("Plain Base");
    populate(
        "<CustomMix PreGrind=\"3\" FreeSpin=\"4\"><Mix LiftRPM=\"24\" MixRPM=\"12\" MixTime=\"t\" Cycles=\"1\"/>"
        "<Mix LiftRPM=\"48\" MixTime=\"t\" Cycles=\"1\"/><Mix LiftRPM=\"72\" MixRPM=\"12\" MixTime=\"t\""
        " Cycles=\"1\"/></CustomMix>");
    expectReport("frmFormula:populateMix");
    EXPECT_EQ(str(rows()), "24|12|t|1\n48|||");
    populate(
        "<CustomMix PreGrind=\"3\" FreeSpin=\"4\"><Mix MixRPM=\"12\" MixTime=\"t\" Cycles=\"1\"/></CustomMix>");
    expectReport("frmFormula:populateMix");
    EXPECT_EQ(steps().count(), 0);
}

TEST_F(MixSettingsTest, NoDocumentAtAllIsAFailure) {
    load();
    formula().populateMix(nullptr);
    expectReport("frmFormula:populateMix");
}

/// Every document that the screen can write is shown again as it was.
TEST_F(MixSettingsTest, DocumentsSurviveTheWayThroughTheScreen) {
    edit("Plain Base");
    for (int count = 0; count <= 16; count += 4) {
        QString xml = u"<CustomMix PreGrind=\"%1\" FreeSpin=\"%2\""_s.arg(count % 16).arg(1 + count % 16);
        QString mixes;
        for (int step = 0; step < count; ++step)
            mixes +=
                u"<Mix LiftRPM=\"%1\" MixRPM=\"%2\" MixTime=\"%3\" Cycles=\"%4\"/>"_s.arg(24 * (1 + step))
                    .arg(12 * (1 + step * 15))
                    .arg(basMain::MixTimes[step * 16])
                    .arg(step);
        xml += mixes.isEmpty() ? "/>" : ">" + mixes + "</CustomMix>";
        populate(xml);
        EXPECT_EQ(str(custom()), str(xml));
    }
}

}  // namespace
