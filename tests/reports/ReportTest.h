// The world of the reports' tests: a small pharmacy with known rows, dialogs answered by a script, reports run
// without a window. With SORVANTO_PICTURES=folder in the environment kept() leaves each sheet there as PDF.
#pragma once

#include "StandardText.h"
#include "TestProgram.h"
#include "platform/report/ReportRun.h"
#include "records/clsFormula.h"
#include "records/clsLog.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

inline QDateTime day(int year, int month, int date, QTime time = {0, 0}) {
    return {QDate(year, month, date), time, Qt::UTC};
}

using RunPtr = std::unique_ptr<platform::ReportRun>;

class ReportTest : public support::TestProgram {
protected:
    void SetUp() override;

    /// Chemicals 1 to 4, formula 1 "Cooling Gel" (base 10, three lines) and 2 "Plain Base" (no lines), batches
    /// 1 to 3 of formula 1 with lines, patients 1 and 2 with prescriptions of batches 1 to 3.
    void seedPharmacy() const;
    /// An empty file of today, with a history, in place of the tables that the reports read.
    void useNewFile() const;
    /// The sample pharmacy as delivered.
    void seedSample() const;
    /// Options with another element of the pharmacy or of the settings.
    void setOption(const QString& element, const QString& value);

    /// The delivered language file of that name, and the program in that language.
    void speak(const QString& language);

    static sorvanto::clsFormulaPtr scaled(std::int16_t formulaID, std::int16_t quantity);
    static sorvanto::clsLogPtr batch(std::int16_t logID);
    /// The one-row set of a prescription label.
    static platform::RecordsetPtr prescription(std::int16_t rxsID);
    static platform::RecordsetPtr chemicalList();

    // The eight, fed and ready to run.
    static std::unique_ptr<platform::Report> worksheet(std::int16_t formulaID, std::int16_t quantity);
    static std::unique_ptr<platform::Report> formulaLog(std::int16_t logID);
    std::unique_ptr<platform::Report> batchLabels(std::int16_t logID, const QString& count, int position);
    std::unique_ptr<platform::Report> prescriptionLabels(std::int16_t rxsID, const QString& count,
                                                         int position);
    std::unique_ptr<platform::Report> logReport(std::int16_t formulaID, const QDateTime& begin,
                                                const QDateTime& end);
    std::unique_ptr<platform::Report> jarUsage(const QDateTime& begin, const QDateTime& end);
    static std::unique_ptr<platform::Report> chemicals();
    std::unique_ptr<platform::Report> patient(std::int16_t patientID, const QDateTime& begin,
                                              const QDateTime& end);

    /// The date dialog comes, takes these dates and goes by OK.
    void expectDates(const QDateTime& begin, const QDateTime& end);
    /// The label dialog comes, the count is typed and the position (1 to 30) pressed; 0 is the close box.
    void expectLabels(const QString& count, int position);

    /// Runs to the end.
    static RunPtr finished(std::unique_ptr<platform::Report> report);
    /// The texts that a control shows, over all pages in their order.
    static QStringList texts(const platform::ReportRun& run, const QString& control);
    static QString text(const platform::ReportRun& run, const QString& control);
    /// Names of the controls whose texts were cut.
    static QStringList cut(const platform::ReportRun& run);
    /// The document as PDF in the test's folder; its path.
    QString pdf(const platform::ReportRun& run, const QString& name) const;
    /// Only for the eye: nothing without SORVANTO_PICTURES.
    static void kept(const platform::ReportRun& run, const QString& name);
    static void kept(QWidget& window, const QString& name, bool dark = false);
};

/// A report of the small pharmacy between two dates, which have a time of day.
class DateRangeTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
        clearStatements();
    }
    const QDateTime begin = day(2026, 1, 1, {14, 5, 9});
    const QDateTime end = day(2026, 3, 7, {14, 5, 9});
};
