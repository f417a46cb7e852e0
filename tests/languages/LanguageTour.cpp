// Place by place; what a step needs from an earlier one it makes itself.
#include "LanguageTour.h"

#include "mixer/ctlSorvanto.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/LabelOffsetDialog.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "records/frmSearchRS.h"
#include "reports/rptRX8160.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QFile>
#include <QToolButton>

using namespace sorvanto;
using support::child;

namespace languages {

namespace {

/// The first row of a list of records.
void takeFirst(QWidget& list) {
    child<platform::RecordGrid>(list, "TDBList1")->selectRow(0);
    child<QPushButton>(list, "cmdOK")->click();
}

/// All time.
void takeAllDates(QWidget& form) {
    child<QDateTimeEdit>(form, "dtBegin")->setDateTime(QDateTime(QDate(2000, 1, 1), QTime(0, 0)));
    child<QDateTimeEdit>(form, "dtEnd")->setDateTime(QDateTime(QDate(2040, 1, 1), QTime(0, 0)));
    child<QPushButton>(form, "cmdOK")->click();
}

/// A time of which there is no record.
void takeNoDates(QWidget& form) {
    child<QDateTimeEdit>(form, "dtBegin")->setDateTime(QDateTime(QDate(1990, 1, 1), QTime(0, 0)));
    child<QDateTimeEdit>(form, "dtEnd")->setDateTime(QDateTime(QDate(1990, 1, 2), QTime(0, 0)));
    child<QPushButton>(form, "cmdOK")->click();
}

void takeFirstLabel(QWidget& form) {
    child<QPushButton>(form, "cmdPosition_1")->click();
}

void typeOver(QLineEdit& edit, const QString& text) {
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, text);
    QTest::keyClick(&edit, Qt::Key_Tab);
}

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
    m_asker.look = [this](QWidget& window, const QString& name) { look(window, name); };
    platform::setAsker(&m_asker);
}

void LanguageTour::TearDown() {
    while (closePreview()) {
    }
    frmSearchRS::unload();
    platform::setAsker(&asker);
    ScreenTest::TearDown();
}

QByteArray LanguageTour::optionsXml() const {
    return ScreenTest::optionsXml().replace("<Language>0<", "<Language>" + QByteArray::number(language()) + "<");
}

void LanguageTour::seed() {
    QFile sample(QString(SORVANTO_SOURCE_DIR) + "/data/sample.sql");
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
    sql(QString::fromUtf8(sample.readAll()));
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
        main(QString("%1-%2").arg(name).arg(tab + 1));
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
        const auto formula = document(QString("<Formula><ID>%1</ID><Type>9</Type><Size>3</Size><Make>25</Make>"
                                              "<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/></Formula>").arg(id));
        emit window->mixer().mixDone(formula, document(resultsXml()));
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

void LanguageTour::searchLists() {
    const std::pair<const char*, const char*> searches[] = {
        {"cmdFormulas", "Hydro"}, {"cmdChemicals", "M"}, {"cmdLogs", "Hydro"}, {"cmdPatients", "A"}};
    for (const auto& [screen, text] : searches) {
        click(screen);
        search(text);  // the list is closed without a choice
        m_asker.scripts["frmSearchRS"] = [](QWidget& list) {
            child<platform::RecordGrid>(list, "TDBList1")->clearSelection();
            child<QPushButton>(list, "cmdOK")->click();
        };
        search(text);  // OK before a choice
        m_asker.scripts["frmSearchRS"] = takeFirst;
        search(text);  // a record again; without a choice the screen is empty
        m_asker.scripts.remove("frmSearchRS");
    }
}

void LanguageTour::printed(const QString& entry, const QString& name) {
    EXPECT_TRUE(on(entry)) << str(name);
    click(entry);
    QCoreApplication::processEvents();
    int previews = 0;
    for (QWidget* found : QApplication::topLevelWidgets()) {
        auto* preview = qobject_cast<platform::PreviewWindow*>(found);
        if (!preview || !preview->isVisible())
            continue;
        ++previews;
        ASSERT_TRUE(QTest::qWaitFor([&] { return preview->isComplete(); }, 20000)) << str(name);
        preview->resize(1092, 729);  // the window's share of the smallest screen
        QCoreApplication::processEvents();
        look(*preview, "preview-" + name);
        child<QAction>(*preview, "fitWidth")->trigger();
        QCoreApplication::processEvents();
        look(*preview, "report-" + name);
        m_asker.answer = platform::Answer::No;
        child<QAction>(*preview, "print")->trigger();  // on a computer without a printer
        m_asker.answer = platform::Answer::Yes;
        auto* words = child<QLineEdit>(*preview, "searchBox");
        words->setText("nowhere to be found");
        QTest::keyClick(words, Qt::Key_Return);
    }
    EXPECT_EQ(previews, 1) << str(name);
    while (closePreview()) {
    }
}

void LanguageTour::printing() {
    m_asker.scripts["frmReportDate"] = takeAllDates;
    m_asker.scripts["frmSelPrint"] = takeFirstLabel;
    m_asker.scripts["frmSearchRS"] = takeFirst;
    click("cmdFormulas");
    printed("mnuWorksheet", "worksheet");
    click("cmdLogs");
    printed("mnuReport", "log-report");
    printed("mnuJarReport", "jar-usage");
    printed("mnuFormulaLog", "formula-log");
    printed("mnuLabel", "batch-labels");
    click("cmdChemicals");
    click("cmdCancel");
    printed("mnuReport", "chemicals");
    click("cmdPatients");
    search(sqlText("SELECT pat_LName FROM Patient WHERE PatientID = 1"));
    printed("mnuReport", "patient");
    printed("mnuLabel", "prescription-labels");
    m_asker.scripts["frmReportDate"] = takeNoDates;
    click("cmdLogs");
    click("mnuReport");
    m_asker.scripts.clear();
    const rptRX8160 report;
    platform::LabelOffsetDialog offset(report.definition(), QString(), nullptr);
    m_asker.showModal(offset, {});
}

void LanguageTour::dialogs() {
    click("cmdOptions");
    click("mnuAbout");
}

void LanguageTour::boxProblems() {
    click("cmdPatients");
    click("cmdEdit");
    auto& date = control<platform::DateBox>(patients, "txtpat_BDay");
    typeOver(*date.findChild<QLineEdit*>(), "once");
    date.findChild<QToolButton*>()->click();
    QCoreApplication::processEvents();
    if (QWidget* popup = QApplication::activePopupWidget()) {
        look(*popup, "calendar");
        popup->close();
    }
    click("cmdCancel");
    click("cmdChemicals");
    click("cmdEdit");
    typeOver(control<QLineEdit>(chemicals, "txtchm_Cost"), "1.23456789");
    click("cmdCancel");
}

void LanguageTour::unsaved() {
    m_asker.answer = platform::Answer::Cancel;
    for (const char* screen : {"cmdFormulas", "cmdChemicals", "cmdLogs", "cmdPatients"}) {
        click(screen);
        click("cmdEdit");
        window->close();
        click(screen);
        click("cmdCancel");
    }
    m_asker.answer = platform::Answer::Yes;
}

void LanguageTour::errorReports() {
    for (const support::ReportCall& call : reporter->calls)
        ADD_FAILURE() << str(call.tag) << ": " << str(call.description) << "\n" << str(call.statement);
    reporter->ReportError("Made for the tour", "5", "tour", 0, "frmTour:show", {}, false, false, false, false);
    main("error-strip");
    for (auto* details : window->findChild<QWidget*>("errorStrip")->findChildren<QPushButton*>())
        details->click();
    QCoreApplication::processEvents();
    if (auto* list = window->findChild<QDialog*>("ErrorReportList")) {
        look(*list, "error-list");
        list->close();
    }
    dropReports();
}

}  // namespace languages
