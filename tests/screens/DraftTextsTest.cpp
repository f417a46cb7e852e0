// Which texts a draft holds, and the ways in which each screen loses them: choices, steps of the mix, numbers
// and dates that can't be read, half-typed cells, new records, refused saves, reports and a finished mix.
#include "DraftsTest.h"
#include "support/Waiting.h"

#include "mixing/frmMake.h"
#include "platform/widgets/ReportList.h"
#include "screens/frmChemical.h"
#include "screens/frmFormula.h"
#include "screens/frmLog.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class DraftTextsTest : public DraftsTest {
protected:
    template <class Control>
    Control& formulaBox(const QString& name) const {
        return control<Control>(formulas, name);
    }
    platform::ReportList& steps() const { return formulaBox<platform::ReportList>("lstCustom"); }
    /// "control=typed<replaced" of each field of the only draft.
    QStringList kept() const {
        QStringList lines;
        const Draft only = files(1).at(0);
        for (const DraftField& field : only.fields)
            lines << field.control + "=" + field.typed + "<" + field.replaced;
        return lines;
    }
};

TEST_F(DraftTextsTest, ChoicesAndTheStepsOfTheMixAreTypedToo) {
    editAt(formulas);
    const QString type = basMain::MixTypes.at(4);
    formulaBox<platform::UpDown>("updPreGrind").setValue(3);
    formulaBox<platform::UpDown>("updCustTime").setValue(60);
    formulaBox<QPushButton>("cmdAddMix").click();
    ASSERT_EQ(steps().count(), 2);
    formulaBox<platform::ChoiceBox>("cbofrm_Type").setListIndex(4);
    const QString listed = steps().row(0).join('\t') + "\n" + steps().row(1).join('\t');
    const QString typeBefore = basMain::MixTypes.at(9);
    click("cmdCurrent");
    click("cmdFormulas");
    EXPECT_EQ(steps().count(), 1);
    QStringList texts = kept();
    texts.sort();
    EXPECT_EQ(texts, (QStringList{"cbofrm_Type=" + type + "<" + typeBefore, "lblSetPreGrind=3<15",
                                  "lstCustom=" + listed + "<" + steps().row(0).join('\t')}));
    bringBack();
    EXPECT_EQ(steps().count(), 2);
    EXPECT_EQ(steps().row(1).join('\t'), listed.section('\n', 1));
    EXPECT_EQ(text(formulas, "lblSetPreGrind"), "3");
    EXPECT_EQ(text(formulas, "cbofrm_Type"), type);
    click("cmdSave");
    EXPECT_EQ(
        sqlText("SELECT frm_FormType FROM Formula WHERE FormulaID = 3 AND frm_Mix LIKE '%PreGrind=\"3\"%'"),
        "4");
    files(0);
}

// The choice of a jar stands in the record at once: a refresh shows it again, and it is not saved yet.
TEST_F(DraftTextsTest, AChosenJarThatIsShownAgainIsNotLost) {
    editAt(formulas);
    formulaBox<platform::ChoiceBox>("cbofrm_JarSize").setListIndex(1);
    type(formulas, "stir well");
    click("cmdFormulas");
    EXPECT_EQ(text(formulas, "cbofrm_JarSize"), basMain::JarSizes.at(2));
    EXPECT_TRUE(browsing(formulas).hasTypedText());
    files(2);
    discard();
    EXPECT_EQ(kept(),
              QStringList{"cbofrm_JarSize=" + basMain::JarSizes.at(2) + "<" + basMain::JarSizes.at(9)});
    click("cmdSave");
    files(0);
}

TEST_F(DraftTextsTest, WhatCantBeReadAsANumberComesBackAsItWasTyped) {
    editAt(chemicals);
    auto& price = control<platform::NumberBox>(chemicals, "txtchm_Cost");
    price.setFocus();
    price.selectAll();
    QTest::keyClicks(&price, "1.2.3");
    ASSERT_NE(price.problem(), "");
    click("cmdChemicals");
    EXPECT_EQ(price.problem(), "");
    EXPECT_EQ(kept(), QStringList{"txtchm_Cost=1.2.3<0.5"});
    bringBack();
    EXPECT_EQ(price.QLineEdit::text(), "1.2.3");
    EXPECT_NE(price.problem(), "") << "it is judged as typing is: nothing is guessed";
    click("cmdSave");
    EXPECT_EQ(sqlText("SELECT chm_Cost FROM Chemical WHERE ChemicalID = 1"), "0.5");
}

TEST_F(DraftTextsTest, ANumberComesBackAsThatNumber) {
    editAt(chemicals);
    auto& price = control<platform::NumberBox>(chemicals, "txtchm_Cost");
    price.setFocus();
    price.selectAll();
    QTest::keyClicks(&price, "1.25");
    click("cmdChemicals");
    bringBack();
    EXPECT_EQ(price.value(), QVariant(1.25));
    click("cmdSave");
    EXPECT_EQ(sqlText("SELECT chm_Cost FROM Chemical WHERE ChemicalID = 1"), "1.25");
}

TEST_F(DraftTextsTest, DatesComeBackReadableOrNot) {
    for (const char* typed : {"2/29/1984", "2/31/1984"}) {
        editAt(patients);
        typeBirthDate(typed);
        click("cmdPatients");
        EXPECT_EQ(shown("txtpat_BDay"), "10/31/1980");
        bringBack();
        EXPECT_EQ(shown("txtpat_BDay"), typed);
        click("cmdCancel");
        window.reset();
    }
}

TEST_F(DraftTextsTest, AHalfTypedCellIsKeptAndNeverWritten) {
    editAt(patients);
    typeIntoCell(1, "Consult", "call tomor");
    EXPECT_TRUE(patient().hasTypedText());
    patient().keepTypedText();
    EXPECT_FALSE(patient().hasTypedText());
    EXPECT_EQ(str(rx("rxs_Consult")), "call");
    EXPECT_EQ(kept(), QStringList{"grdRXs=call tomor<call"});
    EXPECT_EQ(offerButton(), "Read");
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_EQ(str(readerText("lblReason")), "The text was typed into a list. It can be read and copied.");
    EXPECT_TRUE(readerText("txtDraft").contains("Cooling Gel: Consult\ncall tomor\nBefore: call"))
        << str(readerText("txtDraft"));
    discard();
    files(0);
}

TEST_F(DraftTextsTest, AScreenFilledAnewKeepsTheHalfTypedCellBesideTheBoxes) {
    editAt(patients);
    type(patients, "stir well");
    typeIntoCell(1, "Consult", "call tomor");
    patient().refreshForm();
    EXPECT_EQ(str(rx("rxs_Consult")), "call");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(files(2).size(), 2U);
}

TEST_F(DraftTextsTest, AfterACrashBoxesComeBackAndTheCellStaysToBeRead) {
    editAt(patients);
    type(patients, "stir well");
    typeIntoCell(1, "Consult", "call tomor");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return QDir(folder.path("drafts")).exists() && files(1).at(0).fields.size() == 2; }, 10'000));
    const Draft left = files(1).at(0);
    click("cmdCancel");
    window.reset();
    writeDraft(left);
    load();
    bringBack();
    EXPECT_EQ(notes(patients).text(), "stir well");
    EXPECT_EQ(str(rx("rxs_Consult")), "call");
    EXPECT_EQ(str(offerButton()), "Read") << "what is left is the cell";
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_TRUE(readerText("txtDraft").contains("Consult\ncall tomor")) << str(readerText("txtDraft"));
    EXPECT_EQ(files(2).size(), 2U);
}

TEST_F(DraftTextsTest, AnOpenCellThatIsCancelledLeavesNothing) {
    editAt(patients);
    typeIntoCell(1, "Consult", "call tomor");
    click("cmdCancel");
    files(0);
    EXPECT_EQ(str(offer()), "");
    EXPECT_EQ(str(rx("rxs_Consult")), "call");
}

TEST_F(DraftTextsTest, TheTextOfANewRecordComesBackAndCancelThenKeepsTheRow) {
    openAt(formulas);
    click("cmdNew");
    const int rows = sqlText("SELECT count(*) FROM Formula").toInt();
    formulaBox<platform::TextBox>("txtfrm_Name").setText("Magic Mouthwash");
    click("cmdCurrent");
    click("cmdFormulas");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Magic Mouthwash\" was replaced.");
    bringBack();
    EXPECT_EQ(str(text(formulas, "txtfrm_Name")), "Magic Mouthwash");
    click("cmdCancel");
    EXPECT_EQ(sqlText("SELECT count(*) FROM Formula").toInt(), rows)
        << "the record is an old one now, and Cancel deletes none of these";
}

TEST_F(DraftTextsTest, ANewRecordThatIsCancelledLeavesNothing) {
    for (const ScreenNumber number : {formulas, chemicals, patients}) {
        openAt(number);
        if (number == chemicals)
            click("cmdCancel");
        click("cmdNew");
        type(number, "stir well");
        keepNow(number);
        click("cmdCancel");
        files(0);
        EXPECT_EQ(str(offer()), "");
        window.reset();
    }
}

TEST_F(DraftTextsTest, ARefusedSaveThatRefreshesKeepsTheText) {
    editAt(patients);
    type(patients, "stir well");
    box("txtpat_FName").clear();
    asker.expectMsgBox("First Name is required");
    click("cmdSave");
    EXPECT_NE(notes(patients).text(), "stir well");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Doe, Jane\" was replaced.");
    bringBack();
    EXPECT_EQ(notes(patients).text(), "stir well");
    EXPECT_EQ(shown("txtpat_FName"), "");
}

TEST_F(DraftTextsTest, ASaveThatFailsKeepsTheText) {
    editAt(logs);
    type(logs, "stir well");
    failStatement("UPDATE [Log]");
    click("cmdSave");
    dropReports();
    EXPECT_TRUE(screen<frmLog>(logs).hasTypedText()) << "shown by the record, in no database";
    openDB()->setTrace({});
    click("cmdLast");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Cooling Gel\" was replaced.");
    bringBack();
    click("cmdSave");
    EXPECT_EQ(str(sqlText("SELECT log_Notes FROM Log WHERE LogID = 1")), "stir well");
    files(0);
}

TEST_F(DraftTextsTest, ASaveThatFailsKeepsTheTextOnTheOtherScreensToo) {
    const std::pair<ScreenNumber, const char*> saves[] = {
        {formulas, "UPDATE Formula"}, {chemicals, "UPDATE Chemical"}, {patients, "UPDATE Patient"}};
    for (const auto& [number, statement] : saves) {
        SCOPED_TRACE(statement);
        editAt(number);
        type(number, "stir well");
        failStatement(statement);
        click("cmdSave");
        dropReports();
        openDB()->setTrace({});
        EXPECT_TRUE(offer().isEmpty() == browsing(number).hasTypedText()) << "in its box or on offer";
        keepNow(number);
        EXPECT_TRUE(kept().value(0).contains("=stir well<"));
        window.reset();
        dropReports();
        QDir(folder.path("drafts")).removeRecursively();
    }
}

TEST_F(DraftTextsTest, AWorksheetThatEndsInARefreshKeepsTheText) {
    editAt(formulas);
    type(formulas, "stir well");
    asker.expectModal("frmMake",
                      [](QWidget& form) { support::child<QPushButton>(form, "CancelButton")->click(); });
    click("mnuWorksheet");
    EXPECT_NE(notes(formulas).text(), "stir well");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Arnica Salve\" was replaced.");
}

TEST_F(DraftTextsTest, AnIngredientAddedToAFormulaWithoutANameKeepsTheText) {
    editAt(formulas);
    type(formulas, "stir well");
    formulaBox<platform::TextBox>("txtfrm_Name").clear();
    asker.expectInputBox("Enter all or part of chemical name", "Borax", "Search Chemical");
    asker.expectInputBox("Input desired quantity for chemical", "5", QString());
    asker.expectMsgBox("Formula Name is required");
    formulaBox<QPushButton>("cmdAdd").click();
    EXPECT_EQ(str(offer()), "Unsaved text of \"Arnica Salve\" was replaced.");
    EXPECT_EQ(files(1).at(0).fields.size(), 2U);
}

TEST_F(DraftTextsTest, TextLostTwiceIsOfferedTwiceTheNewestFirst) {
    editAt(patients);
    type(patients, "first");
    click("cmdPatients");
    clock.advance(1);
    type(patients, "second");
    click("cmdPatients");
    files(2);
    bringBack();
    EXPECT_EQ(notes(patients).text(), "second");
    EXPECT_NE(offer(), "");
    bringBack();
    EXPECT_EQ(notes(patients).text(), "first");
    EXPECT_NE(offer(), "") << "the second text was replaced by the first";
    files(2);
}

TEST_F(DraftTextsTest, BringingBackKeepsWhatIsBeingTypedOnThatScreen) {
    editAt(patients);
    type(patients, "first");
    click("cmdPatients");
    click("cmdCancel");
    click("cmdNext");
    click("cmdEdit");
    clock.advance(1);
    box("txtpat_City").setText("Oslo");
    bringBack();
    EXPECT_EQ(notes(patients).text(), "first");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Lie, Ole\" was replaced.");
}

TEST_F(DraftTextsTest, ARecordSavedWithoutTypingOrJustLookedAtLeavesNothing) {
    for (const ScreenNumber number : {formulas, chemicals, logs, patients}) {
        editAt(number);
        click("cmdSave");
        click("cmdNext");
        click("cmdEdit");
        click("cmdCancel");
        EXPECT_EQ(mark(number), "");
        window.reset();
        EXPECT_FALSE(QFileInfo::exists(folder.path("drafts"))) << number;
    }
}

TEST_F(DraftTextsTest, AFolderThatCantBeWrittenHindersNobody) {
    folder.write("drafts", "in the way");
    editAt(patients);
    type(patients, "stir well");
    click("cmdPatients");
    ASSERT_TRUE(support::waitFor([&] { return !reporter->calls.empty(); }));
    expectReport("DraftStore:write");
    bringBack();
    EXPECT_EQ(notes(patients).text(), "stir well");
    click("cmdSave");
    EXPECT_EQ(str(stored("pat_Notes")), "stir well");
}

class DraftsWithoutPatients : public DraftsTest {
    QByteArray optionsXml() const override {
        return DraftsTest::optionsXml().replace("<ShowPatients>1<", "<ShowPatients>0<");
    }
};

TEST_F(DraftsWithoutPatients, TextOfAScreenThatIsSwitchedOffCanBeRead) {
    writeDraft({.id = {},
                .database = {},
                .identity = {},
                .record = {"Patient", 1, {}, "Doe, Jane"},
                .time = clock.now(),
                .fields = {{"txtpat_Notes", "Notes", "stir well", {}}}});
    load();
    dropReports();
    EXPECT_EQ(str(offerButton()), "Read");
    bringBack();
    ASSERT_TRUE(reader());
    EXPECT_EQ(str(readerText("lblReason")), "The record cannot be opened. The text can be read and copied.");
}

}  // namespace
