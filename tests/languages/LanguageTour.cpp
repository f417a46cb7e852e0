// Place by place; what a step needs from an earlier one it makes itself.
#include "LanguageTour.h"

#include "TourSteps.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "records/frmSearchRS.h"

#include <QFile>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using support::child;

namespace languages {
namespace {

/// What the box says against the text shows beside it.
void typeWrongQuantities(QWidget& form) {
    for (const char* text : {"x", "1,234.5.6", "1.5", "1,500", "0", "99999", "10"})
        typeOver(*child<QLineEdit>(form, "txtQTY"), text);
    child<QPushButton>(form, "OKButton")->click();
}

}  // namespace

void LanguageTour::SetUp() {
    if (hasFile())
        folder.write(QString(names[language()]) + "Translation.xml", deliveredFile(language()));
    ScreenTest::SetUp();
    m_asker.look = [this](QWidget& shown, const QString& name) { look(shown, name); };
    platform::setAsker(&m_asker);
}

void LanguageTour::TearDown() {
    while (closePreview()) {
    }
    platform::setAsker(&asker);
    ScreenTest::TearDown();
}

QByteArray LanguageTour::optionsXml() const {
    const QByteArray number = QByteArray::number(language());
    return ScreenTest::optionsXml().replace("<Language>0<", "<Language>" + number + "<");
}

void LanguageTour::seed() {
    QFile sample(QString(SORVANTO_SOURCE_DIR) + "/data/sample.sql");
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
    sql(QString::fromUtf8(sample.readAll()));
    QFile history(QString(SORVANTO_SOURCE_DIR) + "/data/history.sql");
    ASSERT_TRUE(history.open(QIODevice::ReadOnly));
    sql(QString::fromUtf8(history.readAll()));
}

void LanguageTour::tour() {
    load();
    formulaScreen();
    formulaMessages();
    ingredientMessages();
    mixMessages();
    makeAndCurrent();
    chemicalScreen();
    logScreen();
    patientScreen();
    prescriptionMessages();
    searchLists();
    printing();
    dialogs();
    otherBenches();
    boxProblems();
    unsaved();
    errorReports();
}

void LanguageTour::main(const QString& name) {
    QCoreApplication::processEvents();
    look(*window, name);
}

void LanguageTour::tabs(ScreenNumber number, const QString& tabWidget, const QString& name) {
    auto& pages = control<QTabWidget>(number, tabWidget);
    for (int tab = 0; tab < pages.count(); ++tab) {
        pages.setCurrentIndex(tab);
        main(u"%1-%2"_s.arg(name).arg(tab + 1));
    }
    pages.setCurrentIndex(0);
}

void LanguageTour::press(ScreenNumber number, const QString& button) {
    control<QPushButton>(number, button).click();
    QCoreApplication::processEvents();
}

void LanguageTour::formulaScreen() {
    tabs(formulas, "tabFormula", "formulas");
    click("cmdEdit");
    tabs(formulas, "tabFormula", "formulas-edit");
    click("cmdCancel");
}

void LanguageTour::formulaMessages() {
    click("cmdNew");
    main("formula-new");
    click("cmdSave");  // without a name
    control<QLineEdit>(formulas, "txtfrm_Name").setText("Tour");
    typeOver(control<QLineEdit>(formulas, "txtfrm_Quantity"), "0");
    click("cmdSave");
    click("cmdCancel");
    click("cmdPrevious");
    m_asker.answer = platform::Answer::No;
    click("cmdDelete");
    m_asker.answer = platform::Answer::Yes;
}

void LanguageTour::ingredientMessages() {
    click("cmdEdit");
    auto& pages = control<QTabWidget>(formulas, "tabFormula");
    pages.setCurrentIndex(1);
    m_asker.lines = {"a", "2"};
    m_asker.scripts["frmSearchRS"] = takeFirst;
    press(formulas, "cmdAdd");
    m_asker.scripts.remove("frmSearchRS");
    m_asker.answer = platform::Answer::No;
    control<platform::RecordGrid>(formulas, "grdIngredients").selectRow(0);
    press(formulas, "cmdRemove");
    m_asker.answer = platform::Answer::Yes;
    pages.setCurrentIndex(0);
    click("cmdCancel");
}

void LanguageTour::mixMessages() {
    click("cmdEdit");
    auto& types = control<platform::ChoiceBox>(formulas, "cbofrm_Type");
    types.setListIndex(0);  // the combination
    types.setListIndex(9);
    auto& pages = control<QTabWidget>(formulas, "tabFormula");
    pages.setCurrentIndex(2);
    main("formula-mix");
    press(formulas, "cmdAddMix");  // neither time nor cycles
    pages.setCurrentIndex(0);
    click("cmdCancel");
}

void LanguageTour::makeAndCurrent() {
    click("cmdCurrent");
    click("mnuWorksheet");  // nothing is loaded
    main("current-empty");
    click("cmdFormulas");
    m_asker.scripts["frmMake"] = typeWrongQuantities;
    click("cmdMake");
    main("current");
    click("cmdFormulas");
    // A mix of a formula, and one that the program knows nothing of.
    for (const char* id : {"1", "0"}) {
        const QString formula = "<Formula><ID>%1</ID><Type>9</Type><Size>3</Size><Make>25</Make>"
                                "<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/></Formula>";
        emit window->mixer().mixDone(document(formula.arg(id)), document(resultsXml()));
    }
    click("cmdFormulas");
}

void LanguageTour::chemicalScreen() {
    click("cmdChemicals");
    main("chemicals-edit");
    control<QLineEdit>(chemicals, "txtchm_Name").clear();
    click("cmdSave");
    click("cmdCancel");
    main("chemicals");
    click("cmdDelete");  // it is in a formula
    click("cmdNew");
    click("cmdCancel");
}

void LanguageTour::logScreen() {
    click("cmdLogs");
    tabs(logs, "tabLog", "logs");
    click("cmdEdit");
    tabs(logs, "tabLog", "logs-edit");
    click("cmdCancel");
    click("cmdDelete");  // a prescription has it
}

void LanguageTour::patientScreen() {
    click("cmdPatients");
    tabs(patients, "tabPatient", "patients");
    click("cmdEdit");
    tabs(patients, "tabPatient", "patients-edit");
    control<QLineEdit>(patients, "txtpat_FName").clear();
    click("cmdSave");
    control<QLineEdit>(patients, "txtpat_FName").setText("Ann");
    control<QLineEdit>(patients, "txtpat_LName").clear();
    click("cmdSave");
    click("cmdCancel");
}

void LanguageTour::prescriptionMessages() {
    click("cmdEdit");
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
    m_asker.lines = {"a"};
    press(patients, "cmdAddRX");
    control<platform::RecordGrid>(patients, "grdRXs").selectRow(0);
    m_asker.answer = platform::Answer::No;
    press(patients, "cmdDeleteRX");
    m_asker.answer = platform::Answer::Yes;
    click("cmdCancel");
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(0);
    search(sqlText("SELECT pat_LName FROM Patient WHERE PatientID NOT IN (SELECT PatientID FROM RXs) "
                   "AND pat_LName NOT LIKE '%''%' LIMIT 1"));
    click("cmdMake");  // there is none to make
    search(sqlText("SELECT pat_LName FROM Patient WHERE PatientID = 1"));
    control<platform::RecordGrid>(patients, "grdRXs").clearSelection();
    click("cmdMake");
}

}  // namespace languages
