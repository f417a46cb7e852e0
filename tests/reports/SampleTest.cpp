// The sample pharmacy as delivered: nothing on its sheets is too long for its place.
#include "ReportTest.h"

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class SampleTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedSample();
        clock.set(day(2026, 12, 1, {9, 30}));
    }
    static void expectWhole(std::unique_ptr<Report> report, const QString& name) {
        const RunPtr run = finished(std::move(report));
        for (const PageWarning& warning : run->document().warnings)
            ADD_FAILURE() << str(name) << ": " << str(warning.control) << ": " << str(warning.text);
    }
    const QDateTime begin = day(2026, 1, 1), end = day(2026, 12, 31);
};

}  // namespace

TEST_F(SampleTest, WorksheetsAreWhole) {
    for (std::int16_t formula = 1; formula <= 21; ++formula)
        expectWhole(worksheet(formula, scaled(formula, 1)->frm_Quantity), u"worksheet %1"_s.arg(formula));
}

TEST_F(SampleTest, BatchesAreWhole) {
    for (std::int16_t log = 1; log <= 12; ++log) {
        expectWhole(formulaLog(log), u"batch %1"_s.arg(log));
        expectWhole(batchLabels(log, "1", 1), u"labels %1"_s.arg(log));
    }
}

TEST_F(SampleTest, PrescriptionsAndPatientsAreWhole) {
    for (std::int16_t rx = 1; rx <= 8; ++rx)
        expectWhole(prescriptionLabels(rx, "1", 1), u"prescription %1"_s.arg(rx));
    for (std::int16_t person = 1; person <= 6; ++person)
        expectWhole(patient(person, begin, end), u"patient %1"_s.arg(person));
}

TEST_F(SampleTest, ListsAreWhole) {
    expectWhole(chemicals(), "chemicals");
    expectWhole(jarUsage(begin, end), "jars");
    for (const std::int16_t formula : std::initializer_list<std::int16_t>{1, 2, 3, 5, 6, 10, 13, 17, 20, 21})
        expectWhole(logReport(formula, begin, end), u"log report %1"_s.arg(formula));
}
