// The small pharmacy and the ways into the eight reports.
#include "ReportTest.h"

#include "Child.h"
#include "Settle.h"
#include "config/clsOptions.h"
#include "db/DatabaseFile.h"
#include "platform/report/ReportOutput.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"
#include "reports/rptChemicals.h"
#include "reports/rptFormula.h"
#include "reports/rptJarUsage.h"
#include "reports/rptLogAvery8160.h"
#include "reports/rptLogFormula.h"
#include "reports/rptLogReport.h"
#include "reports/rptPatient.h"
#include "reports/rptRX8160.h"
#include "shared/basMain.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;
using support::child;

void ReportTest::SetUp() {
    TestProgram::SetUp();
    openDatabase();
    basMain::MixTypes = {"Combination", "Cream",      "Ointment", "Gel",     "Paste",
                         "Lotion",      "Suspension", "Powder",   "Capsule", "Custom"};
    basMain::JarSizes = {"",       "15 ml",  "20 ml",  "30 ml",  "50 ml",
                         "100 ml", "200 ml", "300 ml", "500 ml", "1000 ml"};
}

void ReportTest::useNewFile() const {
    basMain::gConnection->close();
    QFile::remove(databasePath());
    if (place().location(databasePath()) == databasePath())
        sorvanto::createDatabase(databasePath());
    else
        place().create(databasePath());
    openDB();
}

void ReportTest::seedPharmacy() const {
    sql("INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Form,"
        " chm_GUID, chm_Supplier, chm_Notes) VALUES"
        " (1, 'Aspirin', 'GMS', 'L100', '111-11', 0.5, 1.25, 'PWD', 'G1', 'Quill', ''),"
        " (2, 'Borax', 'GMS', 'L200', '222-22', 0.03, 0.075, 'PWD', 'G2', 'Northfield', 'keep dry'),"
        " (3, 'Camphor', 'GMS', 'L300', '333-33', 2, 4.5, 'CRYS', 'G3', 'Harbor', ''),"
        " (4, 'Menthol', 'MLS', 'L400', '444-44', 1.1, 2.2, 'SOLN', 'G4', 'Harbor', '');"
        "INSERT INTO Formula (FormulaID, frm_Name, frm_Desc, frm_Strength, frm_Units, frm_Instructions,"
        " frm_Quantity, frm_JarSize, frm_FormType, frm_AWP, frm_NDC, frm_GUID, frm_Mix) VALUES"
        " (1, ' Cooling Gel ', 'For the skin', ' 2 % ', 'GMS', 'Mix cold.', 10, 3, 9, 16.6, '777-01', 'F1',"
        "  '<CustomMix PreGrind=\"2\" FreeSpin=\"4\"/>'),"
        " (2, 'Plain Base', '', '', 'MLS', '', 50, 5, 3, 0, '777-02', 'F2', '<CustomMix/>');"
        "INSERT INTO FormChem (FormChemID, FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES"
        " (11, 1, 3, 1.2345, 0, 1), (12, 1, 4, 5.0, 1, 1), (13, 1, 2, 0.5, 0, 0);"
        "INSERT INTO Log (LogID, FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType,"
        " log_Quantity, log_JarSize, log_NDC, log_Date, log_Lot, log_Initials, log_Verified, log_Results,"
        " log_Version, log_AWP, log_Cost, log_Notes, log_Mix) VALUES"
        " (1, 1, 'Cooling Gel', '2 %', 'For the skin', 'GMS', 9, 20, 2, '777-01', '2026-01-05 09:30:00',"
        "  'AB0010', 'RK', 'LM', '', 'S-2', 33.2, 20.1, 'secret note', ''),"
        " (2, 1, 'Cooling Gel', '2 %', 'For the skin', 'GMS', 9, 25, 3, '777-01', '2026-03-01 16:00:00',"
        "  'AB0012', 'RK', 'LM', '', 'S-2', 41.5, 1225.2, '', ''),"
        " (3, 1, 'Cooling Gel old', '1 %', 'First try', 'MLS', 3, 10, 2, '777-00', '2026-02-11 00:00:00',"
        "  'AB0011', 'TT', 'LM', '', 'S-2', 16.6, 10.1, '', '');"
        "INSERT INTO LogChem (LogChemID, LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost,"
        " lch_AWP, lch_Supplier, lch_Form, lch_GUID, lch_QTY) VALUES"
        " (23, 2, 3, 'Camphor', 'GMS', 'L300', '333-33', 6.17, 13.89, 'Harbor', 'CRYS', 'G3', 3.086),"
        " (24, 2, 2, 'Borax', 'GMS', 'L200', '222-22', 1213.75, 27.5, 'Northfield', 'PWD', 'G2', 12.5);"
        "INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State,"
        " pat_Zip, pat_Country, pat_BDay, pat_Phone, pat_Fax, pat_Notes) VALUES"
        " (1, 'Mara', 'Quist', '14 Orchard Lane', '', 'Millbrook', 'OH', '44017', 'USA', '1951-03-07 00:00:00',"
        "  '440-555-0117', '440-555-0118', ''),"
        " (2, 'Seán', 'O''Brien', '208 Quarry Road', 'Apt. 3B', 'Millbrook', 'OH', '44017', 'USA', NULL, '', '',"
        "  '');"
        "INSERT INTO RXs (RXsID, LogID, PatientID, rxs_Date, rxs_QTY, rxs_Cost, rxs_Price, rxs_Consult,"
        " rxs_Doctor) VALUES"
        " (31, 2, 1, '2026-03-02 00:00:00', 25, 41.5, 10.25, 'Ask about other creams', 'Dr. Helen Marsh'),"
        " (32, 1, 1, '2026-02-20 00:00:00', 20, 33.2, 2.25, NULL, 'Dr. P. Okafor'),"
        " (33, 3, 2, '2026-03-03 00:00:00', 10, 16.6, 100, '', '');");
}

void ReportTest::seedSample() const { place().addSample(databasePath()); }

void ReportTest::setOption(const QString& element, const QString& value) {
    const QRegularExpression old("<" + element + ">[^<]*</" + element + ">|<" + element + "/>");
    QString options = QString::fromUtf8(folder.read("options.xml"));
    ASSERT_TRUE(options.contains(old)) << str(element);
    folder.write("options.xml",
                 options.replace(old, "<" + element + ">" + value + "</" + element + ">").toUtf8());
    startConfiguration();
}

void ReportTest::speak(const QString& language) {
    static const QStringList names{"English", "Spanish",    "German",  "French",
                                   "Russian", "Portuguese", "Italian", "Swiss"};
    const QString name = language + "Translation.xml";
    QFile file(SORVANTO_SOURCE_DIR "/languages/" + name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    folder.write(name, file.readAll());
    startConfiguration(static_cast<std::int16_t>(names.indexOf(language)));
}

clsFormulaPtr ReportTest::scaled(std::int16_t formulaID, std::int16_t quantity) {
    const clsFormulaPtr formula = clsFormula().openFormula(formulaID, QString());
    formula->makeQuantity(quantity);
    return formula;
}

clsLogPtr ReportTest::batch(std::int16_t logID) {
    const auto log = std::make_shared<clsLog>();
    log->openLog(logID, QString());
    return log;
}

RecordsetPtr ReportTest::prescription(std::int16_t rxsID) {
    const auto rows = Recordset::create();
    rows->open(
        "SELECT Log.log_Name, Log.log_Strength, Log.log_Lot, RXs.rxs_QTY, RXs.rxs_Consult, RXs.rxs_Date, "
        "RXs.rxs_Doctor, Patient.pat_FName, Patient.pat_LName, RXs.RXsID FROM Patient INNER JOIN (Log "
        "INNER JOIN RXs ON Log.LogID = RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE "
        "(((RXs.RXsID)=" +
            QString::number(rxsID) + "));",
        openDB(), LockType::ReadOnly);
    return rows;
}

RecordsetPtr ReportTest::chemicalList() {
    const auto rows = Recordset::create();
    rows->open("SELECT Chemical.chm_Name, Chemical.chm_Units, Chemical.chm_Lot, Chemical.chm_NDC, "
               "Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_Notes, Chemical.chm_Form, "
               "Chemical.chm_Supplier FROM Chemical ORDER BY chm_Name;",
               openDB(), LockType::ReadOnly);
    return rows;
}

std::unique_ptr<Report> ReportTest::worksheet(std::int16_t formulaID, std::int16_t quantity) {
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(scaled(formulaID, quantity));
    return report;
}

std::unique_ptr<Report> ReportTest::formulaLog(std::int16_t logID) {
    auto report = std::make_unique<rptLogFormula>(context);
    const clsLogPtr log = batch(logID);
    report->setLog(log);
    report->setFormula(clsFormula().openFormula(log->FormulaID, QString()));
    return report;
}

std::unique_ptr<Report> ReportTest::batchLabels(std::int16_t logID, const QString& count, int position) {
    auto report = std::make_unique<rptLogAvery8160>(context);
    expectLabels(count, position);
    report->setLog(batch(logID));
    return report;
}

std::unique_ptr<Report> ReportTest::prescriptionLabels(std::int16_t rxsID, const QString& count,
                                                       int position) {
    auto report = std::make_unique<rptRX8160>(context);
    expectLabels(count, position);
    report->setRX(prescription(rxsID));
    return report;
}

std::unique_ptr<Report> ReportTest::logReport(std::int16_t formulaID, const QDateTime& begin,
                                              const QDateTime& end) {
    auto report = std::make_unique<rptLogReport>(context);
    expectDates(begin, end);
    report->FormulaID(formulaID);
    return report;
}

std::unique_ptr<Report> ReportTest::jarUsage(const QDateTime& begin, const QDateTime& end) {
    auto report = std::make_unique<rptJarUsage>(context);
    expectDates(begin, end);
    report->JarID(1);
    return report;
}

std::unique_ptr<Report> ReportTest::chemicals() {
    auto report = std::make_unique<rptChemicals>(context);
    report->setChemicals(chemicalList());
    return report;
}

std::unique_ptr<Report> ReportTest::patient(std::int16_t patientID, const QDateTime& begin,
                                            const QDateTime& end) {
    auto report = std::make_unique<rptPatient>(context);
    expectDates(begin, end);
    report->PatientID(patientID);
    return report;
}

void ReportTest::expectDates(const QDateTime& begin, const QDateTime& end) {
    asker.expectModal("frmReportDate", [begin, end](QWidget& form) {
        child<QDateTimeEdit>(form, "dtBegin")->setDateTime(begin);
        child<QDateTimeEdit>(form, "dtEnd")->setDateTime(end);
        child<QPushButton>(form, "cmdOK")->click();
    });
}

void ReportTest::expectLabels(const QString& count, int position) {
    asker.expectModal("frmSelPrint", [count, position](QWidget& form) {
        auto* box = child<NumberBox>(form, "txtLabels");
        box->selectAll();
        QTest::keyClicks(box, count);
        if (position == 0)
            form.close();
        else
            child<QPushButton>(form, u"cmdPosition_%1"_s.arg(position))->click();
    });
}

RunPtr ReportTest::finished(std::unique_ptr<Report> report) {
    auto run = std::make_unique<ReportRun>(std::move(report));
    run->makeAll();
    return run;
}

QStringList ReportTest::texts(const ReportRun& run, const QString& control) {
    QStringList found;
    for (const Page& page : run.document().pages)
        for (const auto& band : page.bands)
            for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i)
                if (run.document().controlOf(band, page.items[i]).name == control)
                    found << page.items[i].text;
    return found;
}

QString ReportTest::text(const ReportRun& run, const QString& control) {
    const QStringList all = texts(run, control);
    EXPECT_FALSE(all.isEmpty()) << "nothing shows " << str(control);
    return all.value(0);
}

QStringList ReportTest::cut(const ReportRun& run) {
    QStringList names;
    for (const PageWarning& warning : run.document().warnings)
        names << warning.control + ": " + warning.text;
    return names;
}

QString ReportTest::pdf(const ReportRun& run, const QString& name) const {
    const QString path = folder.path(name + ".pdf");
    EXPECT_TRUE(savePdf(run.document(), path));
    return path;
}

void ReportTest::kept(QWidget& window, const QString& name, bool dark) {
    const QString place = qEnvironmentVariable("SORVANTO_PICTURES");
    if (place.isEmpty() || !QDir().mkpath(place))
        return;
    applyTheme(*qApp, dark);
    window.show();
    support::settle();
    window.grab().save(place + '/' + name + ".png");
}

void ReportTest::kept(const ReportRun& run, const QString& name) {
    const QString place = qEnvironmentVariable("SORVANTO_PICTURES");
    if (!place.isEmpty() && QDir().mkpath(place))
        savePdf(run.document(), place + '/' + name + ".pdf");
}
