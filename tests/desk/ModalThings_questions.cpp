// Message boxes, questions and lines to type, each opened as a user opens it.
#include "MatrixTest.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "records/GUIDFactory.h"
#include "screens/BrowsingScreen.h"

#include <QDateTimeEdit>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {
const QString box = u"AskDialog"_s;
}  // namespace

std::vector<ModalThing> MatrixTest::questions() {
    using D = MatrixTest;
    const auto pressOn = [](D& d, ScreenNumber screen, const char* button) {
        child<QPushButton>(*d.window->screen(screen), button)->click();
    };
    const auto addPatient = [](D& d) {
        d.sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (2, 'Bo', 'Ray')");
        d.screen<BrowsingScreen>(patients).getData();
    };
    const auto deletion = [](const QString& screen) {
        return [screen](D& d) {
            d.click(screen);
            d.happensIn(box, u"Cancel"_s);
            d.click(u"cmdDelete"_s);
        };
    };
    const auto refusedSave = [](const QString& screen, ScreenNumber number, const QString& field) {
        return [=](D& d) {
            d.unlock(screen);
            d.control<QLineEdit>(number, field).clear();
            d.happensIn(box, u"OK"_s);
            d.click(u"cmdSave"_s);
        };
    };
    return {
        {"Delete a batch", {u"records/RecordStatements MsgBox"_s}, deletion(u"cmdLogs"_s)},
        {"Delete a formula", {}, deletion(u"cmdFormulas"_s)},
        {"Delete a chemical", {}, deletion(u"cmdChemicals"_s)},
        {"Delete a patient", {}, deletion(u"cmdPatients"_s)},
        {"A chemical in use",
         {u"records/RecordStatements MsgBox"_s},
         [](D& d) {
             d.click(u"cmdChemicals"_s);
             d.click(u"cmdLast"_s);
             d.pass(box, u"Yes"_s);
             d.happensIn(box, u"OK"_s);
             d.click(u"cmdDelete"_s);
         }},
        {"Nothing found",
         {u"records/clsSearch MsgBox"_s},
         [](D& d) {
             d.click(u"cmdLogs"_s);
             d.happensIn(box, u"OK"_s);
             d.search(u"zzz"_s);
         }},
        {"No row chosen in a list",
         {u"records/frmSearchRS MsgBox"_s},
         [](D& d) {
             d.click(u"cmdLogs"_s);
             d.whileOpen(u"frmSearchRS"_s, [](QWidget& list) {
                 child<platform::RecordGrid>(list, "TDBList1")->clearSelection();
                 child<QPushButton>(list, "cmdOK")->click();
                 child<QPushButton>(list, "cmdCancel")->click();
             });
             d.happensIn(box, u"OK"_s);
             d.search(u"cool"_s);
         }},
        {"Formula name is required",
         {u"screens/RecordFields MsgBox"_s},
         refusedSave(u"cmdFormulas"_s, formulas, u"txtfrm_Name"_s)},
        {"Quantity is required",
         {},
         [](D& d) {
             d.unlock(u"cmdFormulas"_s);
             d.control<platform::NumberBox>(formulas, u"txtfrm_Quantity"_s).setValue(0.0);
             d.happensIn(box, u"OK"_s);
             d.click(u"cmdSave"_s);
         }},
        {"Chemical name is required", {}, refusedSave(u"cmdChemicals"_s, chemicals, u"txtchm_Name"_s)},
        {"First name is required", {}, refusedSave(u"cmdPatients"_s, patients, u"txtpat_FName"_s)},
        {"Last name is required", {}, refusedSave(u"cmdPatients"_s, patients, u"txtpat_LName"_s)},
        {"Chemical to add",
         {u"screens/frmFormula InputBox"_s},
         [=](D& d) {
             d.unlock(u"cmdFormulas"_s);
             d.typed(formulas, u"txtfrm_Desc"_s);
             d.happensIn(box, u"Cancel"_s);
             d.pass(box, u"OK"_s);  // an empty answer finds nothing
             pressOn(d, formulas, "cmdAdd");
         }},
        {"Remove a chemical",
         {u"screens/frmFormula MsgBox"_s},
         [=](D& d) {
             d.unlock(u"cmdFormulas"_s);
             d.typed(formulas, u"txtfrm_Desc"_s);
             d.happensIn(box, u"No"_s);
             pressOn(d, formulas, "cmdRemove");
         }},
        {"Typed before prices",
         {u"screens/frmChemicalPrices MsgBox"_s},
         [](D& d) {
             d.unlock(u"cmdChemicals"_s);
             d.typed(chemicals, u"txtchm_Notes"_s);
             d.happensIn(box, u"OK"_s);
             d.click(u"cmdImport"_s);
         }},
        {"Combination mix",
         {u"screens/frmFormulaMix MsgBox"_s},
         [](D& d) {
             d.unlock(u"cmdFormulas"_s);
             auto& types = d.control<platform::ChoiceBox>(formulas, u"cbofrm_Type"_s);
             d.happensIn(box, u"OK"_s);
             const int row = types.findText(u"Combination"_s, Qt::MatchContains);
             EXPECT_GE(row, 0);
             types.setCurrentIndex(row);
             emit types.activated(row);
         }},
        {"Invalid mix parameters",
         {u"screens/frmFormulaMix MsgBox"_s},
         [=](D& d) {
             d.unlock(u"cmdFormulas"_s);
             d.happensIn(box, u"OK"_s);
             pressOn(d, formulas, "cmdAddMix");
         }},
        {"Batch to prescribe",
         {u"screens/frmPatientRX InputBox"_s},
         [=](D& d) {
             d.unlock(u"cmdPatients"_s);
             d.typed(patients, u"txtpat_Notes"_s);
             d.happensIn(box, u"Cancel"_s);
             pressOn(d, patients, "cmdAddRX");
         }},
        {"Delete a prescription",
         {u"screens/frmPatientRX MsgBox"_s},
         [=](D& d) {
             d.unlock(u"cmdPatients"_s);
             d.typed(patients, u"txtpat_Notes"_s);
             d.happensIn(box, u"No"_s);
             pressOn(d, patients, "cmdDeleteRX");
         }},
        {"No prescription selected",
         {u"screens/frmPatientRX MsgBox"_s},
         [](D& d) {
             d.click(u"cmdPatients"_s);
             d.happensIn(box, u"OK"_s);
             d.click(u"cmdMake"_s);
         }},
        {"The formula of a prescription is gone",
         {u"screens/frmPatientRX MsgBox"_s},
         [](D& d) {
             d.sql("INSERT INTO Log (LogID, FormulaID, log_Name) VALUES (900, 1, 'Cooling Gel');"
                   "UPDATE RXs SET LogID = 900");
             d.click(u"cmdPatients"_s);
             d.click(u"cmdFirst"_s);
             d.control<platform::RecordGrid>(patients, u"grdRXs"_s).selectRow(0);
             d.sql("PRAGMA foreign_keys = OFF; DELETE FROM Log WHERE LogID = 900");
             d.happensIn(box, u"OK"_s);
             d.click(u"cmdMake"_s);
             d.sql("UPDATE RXs SET LogID = 2");  // whole again for the copy of the day
         }},
        {"Discard all unsaved texts",
         {u"core/DraftOffers MsgBox"_s},
         [](D& d) {
             d.happensIn(box, u"No"_s);
             child<QPushButton>(*d.window, "cmdDiscardAll")->click();
         },
         false,
         [](D& d) {
             d.unlock(u"cmdChemicals"_s);
             for (int texts = 0; texts < 2; ++texts) {
                 d.typed(chemicals, u"txtchm_Notes"_s);
                 d.click(u"cmdChemicals"_s);
             }
             d.click(u"cmdCancel"_s);
         }},
        {"No formula to print",
         {u"screens/frmCurrFormulaPrint MsgBox"_s},
         [](D& d) {
             d.click(u"cmdCurrent"_s);
             d.happensIn(box, u"OK"_s);
             d.click(u"mnuWorksheet"_s);
         }},
        {"No GUID to be had",
         {u"records/GUIDFactory MsgBox"_s},
         [](D& d) {
             d.click(u"cmdFormulas"_s);
             d.happensIn(box, u"OK"_s);
             GUIDFactory::setSource(
                 [](Guid&) -> std::int32_t { throw platform::RuntimeError(5, u"none"_s); });
             GUIDFactory().CreateGUID();
             GUIDFactory::setSource({});
         }},
        {"Quit while mixing",
         {u"core/frmMain MsgBox"_s},
         [](D& d) {
             d.happensIn(box, u"No"_s);
             d.window->close();
         }},
        {"Another start while mixing",
         {u"core/frmMain_server MsgBox"_s},
         [](D& d) {
             d.happensIn(box, u"OK"_s);
             d.serverWays.readCopy();
         }},
        {"Quantity of a chemical",
         {u"records/clsFormula InputBox"_s},
         [=](D& d) {
             d.unlock(u"cmdFormulas"_s);
             d.whileOpen(box, [](QWidget& line) {
                 line.findChild<QLineEdit*>()->setText(u"Menthol"_s);
                 child<QPushButton>(line, "OK")->click();
             });
             d.happensIn(box, u"OK"_s);
             pressOn(d, formulas, "cmdAdd");
         },
         false,
         {},
         true},
        {"A cell refused",
         {u"platform/widgets/RecordModel MsgBox"_s},
         [](D& d) {
             d.openCell(u"abc"_s);
             d.happensIn(box, u"OK"_s);
             auto& grid = d.control<platform::RecordGrid>(formulas, u"grdIngredients"_s);
             grid.commitEdit();
             grid.dropEdit();
         }},
        {"No records of that time",
         {u"reports/DateRange MsgBox"_s},
         [](D& d) {
             d.click(u"cmdLogs"_s);
             d.whileOpen(u"frmReportDate"_s, [](QWidget& form) {
                 const QDateTime past(QDate(1990, 1, 1), QTime(0, 0));
                 child<QDateTimeEdit>(form, "dtBegin")->setDateTime(past);
                 child<QDateTimeEdit>(form, "dtEnd")->setDateTime(past.addDays(1));
                 child<QPushButton>(form, "cmdOK")->click();
             });
             d.happensIn(box, u"OK"_s);
             d.click(u"mnuReport"_s);
         }},
        {"No prescription to print",
         {u"screens/frmPatientPrint MsgBox"_s},
         [](D& d) {
             d.click(u"cmdPatients"_s);
             d.click(u"cmdLast"_s);
             d.happensIn(box, u"OK"_s);
             d.click(u"mnuLabel"_s);
         },
         false,
         addPatient},
        {"No prescriptions",
         {u"screens/frmPatientRX MsgBox"_s},
         [](D& d) {
             d.click(u"cmdPatients"_s);
             d.click(u"cmdLast"_s);
             d.happensIn(box, u"OK"_s);
             d.click(u"cmdMake"_s);
         },
         false,
         addPatient},
        {"Put a mix aside",
         {u"mixer/MixerPanelShow MsgBox"_s},
         [](D& d) {
             d.happensIn(box, u"No"_s);
             d.panelButton("mixerPutAside")->click();
         },
         false,
         [](D& d) {
             d.cancelSigning();
             d.startMix();
             d.endMix();
             EXPECT_TRUE(test::waitFor([&] { return d.offers().size() == 1 && !modalOnShow(); }));
         }},
        {"Log a mix without a record",
         {u"screens/frmLog MsgBox"_s},
         [](D& d) {
             d.happensIn(box, u"Yes"_s);
             d.signUnnamed();
             d.pass(u"frmMake"_s, u"OKButton"_s);
             EXPECT_TRUE(test::waitFor([&] { return d.logCount() > d.logsBefore && !modalOnShow(); }));
         },
         true,
         {},
         false,
         0},
        {"Quantity of a mix without a record",
         {},
         [](D& d) {
             d.pass(box, u"Yes"_s);
             d.signUnnamed();
             d.happensIn(u"frmMake"_s, u"OKButton"_s);
             EXPECT_TRUE(test::waitFor([&] { return d.logCount() > d.logsBefore && !modalOnShow(); }));
         },
         true,
         {},
         false,
         0},
    };
}
