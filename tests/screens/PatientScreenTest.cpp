// The patient screen as it shows itself: its start, captions, prescriptions, moves, searches and tools.
#include "PatientScreenTest.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

using namespace sorvanto;

void PatientScreenTest::seed() {
    seedLogs();
    sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State,"
        " pat_Zip, pat_Country, pat_BDay, pat_Phone, pat_Fax, pat_Notes) VALUES"
        " (1, 'Jane', 'Doe', '1 Elm St.', 'Flat 2', 'Fenwick', 'ZZ', '54321', 'USA', '1980-10-31 00:00:00',"
        "  '555-0101', '555-0102', 'no gluten'),"
        " (2, 'Ole', 'Lie', '', '', '', '', '', '', NULL, '555-0202', '', ''),"
        " (3, 'Mary', 'O''Hara', '', '', '', '', '', '', NULL, '555-0303', '', '');"
        "INSERT INTO RXs (RXsID, LogID, PatientID, rxs_Date, rxs_QTY, rxs_Cost, rxs_Price, rxs_Consult,"
        " rxs_Doctor) VALUES"
        " (31, 1, 1, '2026-01-06 00:00:00', 20, 33.2, 20.1, 'call', 'Dr. Ash'),"
        " (32, 2, 1, '2026-03-02 00:00:00', 25, 41.5, 25.2, NULL, '');");
}

void PatientScreenTest::typeBirthDate(const QString& keys) const {
    auto& line = *birthDate().findChild<QLineEdit*>();
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, keys);
}

QString PatientScreenTest::row(int number) const {
    QStringList cells;
    for (int column = 0; column < grid().model()->columnCount(); ++column)
        cells << grid().model()->index(number, column).data().toString();
    return cells.join('|');
}

void PatientScreenTest::typeIntoCell(int rowNumber, const QString& caption, const QString& keys) const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // an editor just closed
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
    QApplication::setActiveWindow(window.get());
    grid().setFocus();
    grid().setCurrentIndex(grid().model()->index(rowNumber, grid().columnByCaption(caption)));
    QTest::keyClick(&grid(), Qt::Key_F2);
    auto* editor = grid().viewport()->findChild<QLineEdit*>("cellEditor");
    ASSERT_NE(editor, nullptr) << str(caption);
    editor->selectAll();
    QTest::keyClicks(editor, keys);
}

namespace {

class NoPatientsTest : public PatientScreenTest {
    void seed() override { seedLogs(); }
};

class TranslatedPatientTest : public PatientScreenTest {
    QByteArray optionsXml() const override {
        folder.write(
            "GermanTranslation.xml",
            "<Translations Language=\"German\"><Translate English=\"Rx Date\" Translated=\"RP-Datum\"/>"
            "<Translate English=\"RX Date\" Translated=\"never\"/>"
            "<Translate English=\"RXID\" Translated=\"never\"/>"
            "<Translate English=\"Add RX\" Translated=\"Rezept dazu\"/></Translations>");
        return PatientScreenTest::optionsXml()
            .replace("<Language>0<", "<Language>2<")
            .replace("<DefCurrency>$<", "<DefCurrency>€<");
    }
};

TEST_F(PatientScreenTest, StartsLockedOnTheFirstPatientAndItsFirstTab) {
    openScreen();
    EXPECT_TRUE(patient().formLocked());
    EXPECT_EQ(control<QTabWidget>(patients, "tabPatient").currentIndex(), 0);
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  Doe, Jane");
    click("cmdEdit");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  Doe, Jane  (Edit)");
}

TEST_F(PatientScreenTest, Captions) {
    openScreen();
    const std::pair<const char*, const char*> labels[] = {
        {"lblpat_FName", "First Name"},   {"lblpat_LName", "Last Name"}, {"lblpat_Address1", "Address 1"},
        {"lblpat_Address2", "Address 2"}, {"lblpat_City", "City"},       {"lblpat_State", "State"},
        {"lblpat_Zip", "Zip Code"},       {"lblpat_Country", "Country"}, {"lblpat_BDay", "Birthdate"},
        {"lblpat_Phone", "Phone"},        {"lblpat_Fax", "Fax"},         {"lblpat_Notes", "Notes"},
    };
    for (const auto& [name, caption] : labels)
        EXPECT_EQ(str(control<QLabel>(patients, name).text()), caption) << name;
    const auto& tabs = control<QTabWidget>(patients, "tabPatient");
    EXPECT_EQ(str(tabs.tabText(0) + "|" + tabs.tabText(1)), "Patient|Prescriptions");
    EXPECT_EQ(str(shown("cmdAddRX") + "|" + shown("cmdDeleteRX")), "Add|Delete");
    EXPECT_EQ(str(control<QPushButton>(patients, "cmdAddRX").toolTip()), "Add RX");
    EXPECT_EQ(str(control<QPushButton>(patients, "cmdDeleteRX").toolTip()), "Delete RX");
    QStringList columns;
    for (int column = 0; column < grid().model()->columnCount(); ++column)
        columns << grid().shownCaption(column);
    EXPECT_EQ(str(columns.join('|')),
              "RXID|Name|Strength|Qty|Cost|Price|Lot|Log Date|Rx Date|Consult|Doctor");
}

TEST_F(TranslatedPatientTest, ColumnsAreTranslatedByTheirKeysAndThePricesBearTheCurrency) {
    openScreen();
    EXPECT_EQ(str(grid().shownCaption(8)), "RP-Datum");
    EXPECT_EQ(str(grid().shownCaption(0)), "RXID");
    EXPECT_EQ(grid().columnByCaption("RX Date"), 8);
    EXPECT_EQ(str(control<QPushButton>(patients, "cmdAddRX").toolTip()), "Rezept dazu");
    EXPECT_EQ(str(row(1).section('|', 4, 5)), "€ 33.20|€ 20.10");
}

TEST_F(PatientScreenTest, ShowsThePatientAndThePrescriptionsNewestFirst) {
    openScreen();
    const std::pair<const char*, const char*> boxes[] = {
        {"txtpat_FName", "Jane"},      {"txtpat_LName", "Doe"},    {"txtpat_Address1", "1 Elm St."},
        {"txtpat_Address2", "Flat 2"}, {"txtpat_City", "Fenwick"}, {"txtpat_State", "ZZ"},
        {"txtpat_Zip", "54321"},       {"txtpat_Country", "USA"},  {"txtpat_BDay", "10/31/1980"},
        {"txtpat_Phone", "555-0101"},  {"txtpat_Fax", "555-0102"}, {"txtpat_Notes", "no gluten"},
    };
    for (const auto& [name, text] : boxes)
        EXPECT_EQ(str(shown(name)), text) << name;
    ASSERT_EQ(prescriptions(), 2);
    EXPECT_EQ(str(row(0)), "32|Cooling Gel|2 %|25|$ 41.50|$ 25.20|AB0012|3/1/2026 4:00:00 PM|3/2/2026||");
    EXPECT_EQ(str(row(1)),
              "31|Cooling Gel|2 %|20|$ 33.20|$ 20.10|AB0010|1/5/2026 9:30:00 AM|1/6/2026|call|Dr. Ash");
}

TEST_F(PatientScreenTest, ToolStates) {
    openScreen();
    const QStringList locked = toolStates();
    click("cmdEdit");
    const QStringList unlocked = toolStates();
    click("cmdCancel");
    EXPECT_EQ(toolStates(), locked);
    sql("DELETE FROM RXs; DELETE FROM Patient;");
    patient().getData();
    click("cmdPatients");
    const QStringList empty = toolStates();
    click("cmdNew");
    const QStringList adding = toolStates();
    support::expectGolden(
        "screens/tool_states_patient.txt",
        stateTable(
            {{"locked", locked}, {"unlocked", unlocked}, {"empty", empty}, {"adding the first", adding}}));
}

TEST_F(PatientScreenTest, LockingGoesByTheControlsNames) {
    openScreen();
    const QString locked = lockStates(patients);
    click("cmdEdit");
    support::expectGolden("screens/patient_locks.txt",
                          "locked\n" + locked + "\nunlocked\n" + lockStates(patients));
}

TEST_F(PatientScreenTest, TheIdentifiersAreReadWithoutAnOrder) {
    openScreen();
    clearStatements();
    patient().getData();
    EXPECT_EQ(str(statements.join('\n')), "SELECT PatientID FROM Patient");
}

TEST_F(PatientScreenTest, MovesStopAtTheEndsAndOpenTheRecordTwiceThere) {
    openScreen();
    const auto opened = [&](const char* toolName) {
        clearStatements();
        click(toolName);
        return statements.filter("FROM [Patient] WHERE").size();
    };
    EXPECT_EQ(opened("cmdLast"), 1);
    EXPECT_EQ(str(shown("txtpat_LName")), "O'Hara");
    EXPECT_EQ(opened("cmdNext"), 2);
    EXPECT_EQ(str(shown("txtpat_LName")), "O'Hara");
    EXPECT_EQ(opened("cmdPrevious"), 1);
    EXPECT_EQ(str(shown("txtpat_LName")), "Lie");
    EXPECT_EQ(str(shown("txtpat_BDay")), "") << "the zero date shows as an empty box";
    EXPECT_EQ(prescriptions(), 0);
    EXPECT_EQ(opened("cmdFirst"), 1);
    EXPECT_EQ(opened("cmdPrevious"), 2);
    EXPECT_EQ(str(shown("txtpat_LName")), "Doe");
}

TEST_F(PatientScreenTest, SearchesByLastNameAndPhone) {
    openScreen();
    for (const auto& [typed, found] :
         {std::pair("li", "Lie"), std::pair("555#-03", "O'Hara"), std::pair("d_e", "Doe")}) {
        search(typed);
        EXPECT_EQ(str(shown("txtpat_LName")), found) << typed;
    }
    click("cmdNext");
    EXPECT_EQ(str(shown("txtpat_LName")), "Lie") << "the set still stood on the first";
    asker.expectMsgBox("No Records");
    search("Ole");
    EXPECT_EQ(str(shown("txtpat_LName")), "");
    EXPECT_EQ(prescriptions(), 0);
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  , ");
}

TEST_F(PatientScreenTest, ACommaTestsTheLastNameAgainstTheRightEndOfTheText) {
    openScreen();
    asker.expectMsgBox("No Records");
    search("Doe, Jane");
    sql("UPDATE Patient SET pat_LName = 'aneway', pat_FName = ' Jane' WHERE PatientID = 3");
    search("Doe, Jane");
    EXPECT_EQ(str(shown("txtpat_LName")), "aneway");
}

TEST_F(PatientScreenTest, AnApostropheBreaksASearchAndTheRefreshGoesOn) {
    openScreen();
    search("O'Hara");
    expectReport("clsPatient:openPatient");
    expectReports("frmPatient:refreshForm");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtpat_LName")), "Lie");
}

TEST_F(NoPatientsTest, AnEmptyTableOffersNewAlone) {
    openScreen();
    EXPECT_TRUE(patient().formLocked());
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  , ");
    for (const QString& name : recordTools())
        EXPECT_EQ(on(name), name == "cmdNew" || name == "cmdOptions") << str(name);
    click("cmdNew");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Patient")), "0");
    EXPECT_TRUE(patient().formLocked());
    EXPECT_TRUE(on("cmdNew"));
}

TEST_F(PatientScreenTest, FailuresBearTheScreensTags) {
    openScreen();
    openDB()->setTrace([](const QString&) { throw platform::RuntimeError(5, "Made to fail"); });
    patient().getData();
    expectReport("frmPatient:getData");
    openDB()->setTrace({});
    sql("DELETE FROM RXs; DELETE FROM Patient;");
    patient().getData();
    patient().moveNext();
    expectReport("frmPatient:moveNext");
    patient().movePrevious();
    expectReport("frmPatient:movePrevious");
    patient().moveFirst();
    patient().moveLast();
}

}  // namespace
