// Lists, reports with their previews, dialogs, what boxes say against a text, unsaved records, error reports.
#include "LanguageTour.h"

#include "TourSteps.h"
#include "config/ServerDialog.h"
#include "core/ChangeStrip.h"
#include "core/HistoryFileWindow.h"
#include "platform/basic/Dates.h"
#include "platform/report/LabelOffsetDialog.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/AnswerWait.h"
#include "platform/widgets/Boxes.h"
#include "reports/rptRX8160.h"
#include "screens/PriceWindow.h"
#include "shared/RecordChange.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QAction>
#include <QApplication>
#include <QDateTimeEdit>
#include <QToolButton>

using namespace sorvanto;
using support::child;

namespace languages {
namespace {

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

void takeFirstLabel(QWidget& form) { child<QPushButton>(form, "cmdPosition_1")->click(); }

}  // namespace

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
    const rptRX8160 report(context);
    platform::LabelOffsetDialog offset(report.definition(), QString(), nullptr);
    m_asker.showModal(offset, {});
}

/// A patient's record as it was: before its change, before the history, and once the change was erased.
void LanguageTour::history() {
    click("cmdPatients");
    click("cmdEdit");
    control<QLineEdit>(patients, "txtpat_FName").setText("Ann");
    click("cmdSave");
    sql("DROP TRIGGER History_Sealed");
    sql("UPDATE History SET hst_When = '2026-02-01 10:00:00.000' WHERE HistoryID = 1");
    m_asker.scripts["HistoryWindow"] = [this](QWidget& shown) {
        for (const QDate day : {QDate(2026, 3, 6), QDate(2026, 1, 31)}) {
            auto* box = child<platform::DateBox>(shown, "txtDay");
            box->setValue(QDateTime(day, QTime(), Qt::UTC));
            emit box->valueEdited();
            look(shown, "HistoryWindow-" + day.toString(Qt::ISODate));
        }
    };
    click("mnuHistory");
    sql("UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL WHERE hst_Table = 'Patient'");
    m_asker.scripts["HistoryWindow"] = [this](QWidget& shown) {
        auto* box = child<platform::DateBox>(shown, "txtDay");
        box->setValue(QDateTime(QDate(2026, 3, 6), QTime(), Qt::UTC));
        emit box->valueEdited();
        look(shown, "HistoryWindow-erased");
    };
    click("mnuHistory");
    m_asker.scripts.remove("HistoryWindow");
}

void LanguageTour::dialogs() {
    click("cmdOptions");
    click("mnuAbout");
    click("mnuHealth");
    click("mnuTrace");
    click("mnuHistory");
    history();
    click("mnuRecalculate");
    click("cmdChemicals");
    m_asker.scripts["TraceWindow"] = [this](QWidget& shown) {
        typeOver(*child<QLineEdit>(shown, "txtTrace"),
                 "er");  // in names of chemicals, formulas and a patient
        QTest::keyClick(child<QLineEdit>(shown, "txtTrace"), Qt::Key_Return);
        QCoreApplication::processEvents();
        EXPECT_TRUE(shown.findChild<QPushButton*>("cmdFound2") && shown.findChild<QPushButton*>("cmdFound3"));
        look(shown, "TraceWindow-chemicals");
    };
    click("cmdTrace");
    m_asker.scripts.remove("TraceWindow");
    click("cmdNewLot");
    folder.write("prices.csv",
                 "Name;NDC;Lot;Price;AWP;Size;Unit\nZinc oxide;1;;28,50;;100;g\nMenthol;2;;1.234;;1;kg\n");
    const QString path = folder.path("prices.csv");
    PriceWindow prices(openDB(), PriceFile(path), path, nullptr);
    m_asker.showModal(prices, {});
    ServerDialog server({}, nullptr);
    m_asker.showModal(server, {});
    HistoryFileWindow all(context, openDB());
    m_asker.showModal(all, {});
}

/// What is seen only where the records are on a server.
void LanguageTour::otherBenches() {
    click("cmdFormulas");
    auto& strip = *child<ChangeStrip>(*window, "changeStrip");
    RecordChange change;
    change.bench = "compounding-2";
    change.first = change.last = platform::now().addDays(-1);
    strip.setChange(&change, true);
    main("formulas-changed");
    change.deleted = true;
    strip.setChange(&change, false);
    main("formulas-deleted");
    strip.setChange(nullptr, false);
    platform::AnswerWait wait([] { return translated("Waiting for the server"); }, [] {});
    wait.goesOn(1000);
    if (QWidget* shown = QApplication::activeModalWidget())
        look(*shown, "waiting");
    wait.ended();
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
    reporter->ReportError("Made for the tour", "5", "tour", 0, "frmTour:show", {}, false, false, false,
                          false);
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
