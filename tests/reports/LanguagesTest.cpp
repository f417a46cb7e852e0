// The reports of the sample pharmacy in every delivered language: no caption is cut, nothing fails.
#include "ReportTest.h"
#include "shared/basMain.h"

using namespace platform;
using namespace sorvanto;

namespace {

class LanguagesTest : public ReportTest, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedSample();
        clock.set(day(2026, 12, 31, {12, 55, 59}));
        speak(GetParam());
    }
    /// Captions alone: what is the pharmacy's own may be too long for its place.
    static QStringList cutCaptions(const ReportRun& run) {
        QStringList names;
        for (const PageWarning& warning : run.document().warnings) {
            const bool own = warning.control.startsWith("txt") && warning.control != "txtTitle" &&
                             warning.control != "txtPage" && !warning.control.startsWith("txtTotal") &&
                             warning.control != "txtReportDate" && warning.control != "txtpat_BDay" &&
                             warning.control != "txtpat_Phone";
            if (!own)
                names << warning.control + ": " + warning.text;
        }
        return names;
    }
    static void look(std::unique_ptr<Report> report, const QString& name) {
        const RunPtr run = finished(std::move(report));
        kept(*run, QString("%1-%2").arg(name, GetParam()));
        EXPECT_TRUE(cutCaptions(*run).isEmpty()) << str(name) << "\n" << str(cutCaptions(*run).join('\n'));
    }
};

}  // namespace

TEST_P(LanguagesTest, EveryCaptionFitsItsPlace) {
    const QDateTime begin = day(2025, 12, 31, {12, 55, 59}), end = day(2027, 12, 31, {12, 55, 59});
    look(worksheet(3, 250), "worksheet");
    look(formulaLog(4), "formula-log");
    look(batchLabels(1, "3", 6), "batch-labels");
    look(prescriptionLabels(1, "3", 6), "rx-labels");
    look(logReport(1, begin, end), "log-report");
    look(jarUsage(begin, end), "jar-usage");
    look(chemicals(), "chemicals");
    look(patient(1, begin, end), "patient");
}

INSTANTIATE_TEST_SUITE_P(Delivered, LanguagesTest,
                         ::testing::Values("English", "Spanish", "German", "French", "Italian", "Portuguese",
                                           "Russian", "Swiss"),
                         [](const auto& info) { return std::string(info.param); });
