// What Cancel throws away is said, and can be had back.
#include "DraftsTest.h"

#include "Announced.h"
#include "platform/widgets/Boxes.h"

#include <optional>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class CancelTest : public DraftsTest {
protected:
    void TearDown() override {
        m_heard.reset();
        DraftsTest::TearDown();
    }
    /// Starts the program and hears what it announces.
    void start() {
        load();
        m_heard.emplace();
    }
    const support::Announced& heard() const { return *m_heard; }
    platform::TextBox& name(ScreenNumber number, const char* box) const {
        return control<platform::TextBox>(number, QString::fromLatin1(box));
    }
    /// Presses what was announced last.
    void haveBack() const {
        ASSERT_FALSE(heard().texts().isEmpty());
        ASSERT_EQ(heard().last().actions.size(), 1U);
        EXPECT_EQ(str(heard().last().actions.front().text), "Bring back");
        EXPECT_TRUE(heard().last().actions.front().once);
        const auto run = heard().last().actions.front().run;
        run();
    }
    std::string heardTexts() const { return str(heard().texts().join(u'|')); }
    QString count(const char* table) const { return sqlText(u"SELECT COUNT(*) FROM %1"_s.arg(table)); }

private:
    std::optional<support::Announced> m_heard;
};

TEST_F(CancelTest, NothingIsSaidWhereNothingWasTyped) {
    start();
    click("cmdPatients");
    click("cmdEdit");
    click("cmdCancel");
    click("cmdNew");
    click("cmdCancel");
    EXPECT_EQ(heardTexts(), "");
}

TEST_F(CancelTest, ChangesOfEachScreenAreHadBackUnsaved) {
    start();
    click("cmdChemicals");
    click("cmdCancel");
    for (const ScreenNumber number : {formulas, chemicals, logs, patients}) {
        click(button(number));
        click("cmdEdit");
        const QString before = notes(number).text();
        type(number, "stir well");
        click("cmdCancel");
        ASSERT_EQ(notes(number).text(), before);
        files(0);
        click("cmdLast");
        click("cmdCurrent");
        haveBack();
        EXPECT_EQ(window->current(), number);
        EXPECT_EQ(str(notes(number).text()), "stir well");
        EXPECT_FALSE(browsing(number).formLocked());
        EXPECT_TRUE(on("cmdSave"));
        EXPECT_EQ(str(offer()), "");
        click("cmdCancel");
    }
    EXPECT_TRUE(heard().texts().contains("Changes thrown away: \"Doe, Jane\"")) << heardTexts();
}

TEST_F(CancelTest, ANewRecordIsAddedOnceMoreWithAllThatWasTyped) {
    start();
    click(button(chemicals));
    click("cmdCancel");
    click("cmdNew");
    QTest::keyClicks(&name(chemicals, "txtchm_Name"), "Dexpanthenol");
    type(chemicals, "keep cool");
    click("cmdCancel");
    EXPECT_EQ(str(count("Chemical")), "4") << "its row is deleted, as ever";
    EXPECT_EQ(heardTexts(), "New record thrown away: \"Dexpanthenol\"");
    haveBack();
    EXPECT_EQ(str(count("Chemical")), "5");
    EXPECT_EQ(str(text(chemicals, "txtchm_Name")), "Dexpanthenol");
    EXPECT_EQ(str(notes(chemicals).text()), "keep cool");
    EXPECT_TRUE(browsing(chemicals).hasTypedText());
    click("cmdCancel");
    EXPECT_EQ(str(count("Chemical")), "4") << "it is a new record again";
    haveBack();
    click("cmdSave");
    EXPECT_EQ(str(sqlText("SELECT chm_Notes FROM Chemical WHERE chm_Name = 'Dexpanthenol'")), "keep cool");
    EXPECT_EQ(str(offer()), "");
}

TEST_F(CancelTest, ANewFormulaComesBackWithItsIngredients) {
    start();
    click(button(formulas));
    click("cmdNew");
    QTest::keyClicks(&name(formulas, "txtfrm_Name"), "Night Cream");
    control<QLineEdit>(formulas, "txtfrm_Quantity").setFocus();
    control<QLineEdit>(formulas, "txtfrm_Quantity").selectAll();
    QTest::keyClicks(&control<QLineEdit>(formulas, "txtfrm_Quantity"), "30");
    control<platform::ChoiceBox>(formulas, "cbofrm_Type").setListIndex(3);
    asker.expectInputBox("Enter all or part of chemical name", "Menthol", "Search Chemical");
    asker.expectInputBox("Input desired quantity for chemical", "2.5", "");
    control<QPushButton>(formulas, "cmdAdd").click();  // saves what was typed so far
    type(formulas, "stir well");
    click("cmdCancel");
    EXPECT_EQ(str(count("Formula")), "3");
    EXPECT_EQ(str(count("FormChem")), "4");
    EXPECT_EQ(heardTexts(), "Saved 2:05 PM|New record thrown away: \"Night Cream\"");
    haveBack();
    EXPECT_EQ(str(text(formulas, "txtfrm_Name")), "Night Cream");
    EXPECT_EQ(str(notes(formulas).text()), "stir well");
    EXPECT_EQ(control<platform::ChoiceBox>(formulas, "cbofrm_Type").listIndex(), 3);
    EXPECT_EQ(str(sqlText("SELECT chm_Name, fch_Qty FROM FormChem JOIN Chemical USING (ChemicalID) "
                          "WHERE FormulaID = (SELECT max(FormulaID) FROM Formula)")),
              "Menthol|2.5");
    EXPECT_EQ(control<platform::RecordGrid>(formulas, "grdIngredients").model()->rowCount(), 1);
    click("cmdSave");
    EXPECT_EQ(str(sqlText("SELECT frm_Name, frm_Quantity FROM Formula WHERE FormulaID > 3")),
              "Night Cream|30");
}

TEST_F(CancelTest, WhereTheRecordHasChangedTheTextIsOfferedToBeRead) {
    start();
    click("cmdPatients");
    click("cmdEdit");
    type(patients, "stir well");
    click("cmdCancel");
    sql("UPDATE Patient SET pat_Notes = 'shaken' WHERE PatientID = 1");
    haveBack();
    EXPECT_EQ(str(notes(patients).text()), "shaken");
    EXPECT_EQ(str(offer()), "Unsaved text of \"Doe, Jane\" was replaced.");
    files(1);
}

TEST_F(CancelTest, WhatIsTypedMeanwhileIsNotLost) {
    start();
    click("cmdPatients");
    click("cmdEdit");
    type(patients, "stir well");
    click("cmdCancel");
    click("cmdLast");
    click("cmdEdit");
    type(patients, "another text");
    haveBack();
    EXPECT_EQ(str(notes(patients).text()), "stir well");
    EXPECT_NE(str(offer()), "");
}

TEST_F(CancelTest, TheAnnouncementOutlivesTheWindow) {
    start();
    click("cmdPatients");
    click("cmdEdit");
    type(patients, "stir well");
    click("cmdCancel");
    const auto again = heard().last().actions.front().run;
    window.reset();
    again();
}

TEST_F(CancelTest, EscapeCancelsNoRecordThatIsBeingAdded) {
    start();
    click(button(patients));
    click("cmdNew");
    for (auto* box : window->screen(patients)->findChildren<QLineEdit*>()) {
        if (!box->isVisible() || box->isReadOnly())
            continue;
        box->setFocus();
        QTest::keyClicks(box, "1");
        QTest::keyClick(box, Qt::Key_Escape);
        EXPECT_FALSE(browsing(patients).formLocked()) << str(box->objectName());
    }
    EXPECT_EQ(str(count("Patient")), str(sqlText("SELECT count(*) FROM Patient")));
    EXPECT_TRUE(on("cmdCancel"));
    EXPECT_EQ(heardTexts(), "");
}

}  // namespace
