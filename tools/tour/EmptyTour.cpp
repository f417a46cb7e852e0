// The order of things in an empty pharmacy, and what its file must hold in the end.
#include "EmptyTour.h"

#include "Batch.h"
#include "BatchCheck.h"
#include "EmptyRecords.h"
#include "RawDatabase.h"

#include "platform/widgets/RecordGrid.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

constexpr int firstQuantity = 60;
constexpr int secondQuantity = 150;

}  // namespace

EmptyTour::EmptyTour(const QString& programFolder, const QString& pictureFolder)
    : m_folder(programFolder), m_visitor(pictureFolder, "empty-"), m_program(m_visitor, programFolder) {}

QString EmptyTour::database() const { return QDir(m_folder).filePath("sorvanto.mdb"); }

void EmptyTour::makeDatabase() const {
    require(!QFile::exists(database()), u"there is a database in %1 already."_s.arg(m_folder));
    const QString tool = QDir(QCoreApplication::applicationDirPath()).filePath("sorvanto-db");
    require(QProcess::execute(tool, {"create", database()}) == 0, u"%1 made no database."_s.arg(tool));
}

void EmptyTour::run() {
    makeDatabase();
    m_program.start();
    m_visitor.picture("start");
    EmptyRecords records(m_visitor);
    records.addChemicals();
    records.addFormula();
    makeFromFormula();
    records.addPatient();
    makeFromPrescription();
    requireRecords();
    m_program.leave();
}

void EmptyTour::makeFromFormula() {
    const BatchCheck check(database(), EmptyRecords::formulaName, firstQuantity);
    Batch batch(m_visitor, EmptyRecords::formulaName, firstQuantity);
    batch.announceQuantity();
    m_visitor.tool("cmdMake");
    batch.mix();
    batch.requireFormulas();
    check.requireLogged(Batch::compounder, Batch::verifier);
    m_visitor.requireNoReport();
}

void EmptyTour::makeFromPrescription() {
    m_visitor.tool("cmdPatients");
    m_visitor.openTab(1);
    auto& grid = m_visitor.find<platform::RecordGrid>("grdRXs");
    const QModelIndex first = grid.model()->index(0, grid.columnByField("log_Name"));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(first).center());
    const BatchCheck check(database(), EmptyRecords::formulaName, secondQuantity);
    Batch batch(m_visitor, EmptyRecords::formulaName, secondQuantity);
    batch.announceQuantity();
    m_visitor.tool("cmdMake");
    batch.mix();
    batch.requireFormulas();
    check.requireLogged(Batch::compounder, Batch::verifier);
    m_visitor.tool("cmdLogs");
    m_visitor.picture("second-batch");
    m_visitor.requireNoReport();
}

void EmptyTour::requireRecords() const {
    const RawDatabase file(database());
    const auto count = [&](const char* what, const QString& statement, int expected) {
        requireSame(QLatin1String(what), file.value(statement), QString::number(expected));
    };
    count("the number of chemicals", "SELECT count(*) FROM Chemical", 2);
    count("the number of formulas", "SELECT count(*) FROM Formula", 1);
    count("the number of batches", "SELECT count(*) FROM Log", 2);
    count("the number of prescriptions", "SELECT count(*) FROM RXs", 1);
    count(
        "the number of matching prescriptions",
        u"SELECT count(*) FROM RXs JOIN Log ON Log.LogID = RXs.LogID JOIN Patient ON "
        u"Patient.PatientID = RXs.PatientID WHERE rxs_Cost = log_AWP AND rxs_Price = log_Cost "
        u"AND rxs_QTY = log_Quantity AND pat_LName = '%1' AND Log.LogID = (SELECT min(LogID) FROM Log)"_s.arg(
            EmptyRecords::lastName),
        1);
    const QString programme = file.value("SELECT frm_Mix FROM Formula");
    requireSame("the number of stored steps", QString::number(programme.count("<Mix ")),
                QString::number(EmptyRecords::steps));
    for (int step = 0; step < EmptyRecords::steps; ++step) {
        const QString expected = u"LiftRPM=\"%1\" MixRPM=\"%2\""_s.arg(EmptyRecords::liftSetting(step) * 24)
                                     .arg(EmptyRecords::speedSetting(step) * 12);
        require(programme.section("<Mix ", step + 1, step + 1).startsWith(expected),
                u"step %1 of the stored programme is not %2."_s.arg(step + 1).arg(expected));
    }
}

}  // namespace tour
