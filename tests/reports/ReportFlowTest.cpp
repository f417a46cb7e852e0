// The common end of the print commands.
#include "reports/ReportFlow.h"
#include "ReportTest.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportHooks.h"

#include <QApplication>

using namespace platform;
using namespace sorvanto;

namespace {

class ReportFlowTest : public DateRangeTest {
protected:
    /// What is said of a file saved from the preview of that report.
    static QString note(std::unique_ptr<Report> report) {
        const QString name = report->definition().name;
        runReport(std::move(report), false, QString());
        for (QWidget* found : QApplication::topLevelWidgets()) {
            if (qobject_cast<PreviewWindow*>(found)) {
                delete found;
                break;
            }
        }
        return savedNote(name);
    }
};

TEST_F(ReportFlowTest, AFileThatNamesPatientsIsToldToBeKeptFromOthers) {
    const std::string told = "The saved file names patients. Keep it where nobody else reads it.";
    EXPECT_EQ(str(note(prescriptionLabels(31, "1", 1))), told);
    EXPECT_EQ(str(note(patient(1, begin, end))), told);
    EXPECT_EQ(str(note(worksheet(1, 10))), "");
    EXPECT_EQ(str(note(formulaLog(1))), "");
    EXPECT_EQ(str(note(batchLabels(1, "1", 1))), "");
    EXPECT_EQ(str(note(logReport(1, begin, end))), "");
    EXPECT_EQ(str(note(jarUsage(begin, end))), "");
    EXPECT_EQ(str(note(chemicals())), "");
}

}  // namespace
