// The common end of the print commands.
#include "reports/ReportFlow.h"
#include "Announced.h"
#include "OpenedOutside.h"
#include "ReportTest.h"
#include "config/clsOptions.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportHooks.h"
#include "reports/ReportTexts.h"

#include <QApplication>

using namespace platform;
using namespace sorvanto;

namespace {

class ReportFlowTest : public DateRangeTest {
protected:
    /// What is said of a file saved from the preview of that report.
    static QString note(std::unique_ptr<Report> report) {
        const QString name = report->definition().name;
        preview(std::move(report));
        return savedNote(name);
    }
    /// Opens it and closes it again.
    static void preview(std::unique_ptr<Report> report) {
        runReport(std::move(report), false, QString());
        for (QWidget* found : QApplication::topLevelWidgets()) {
            if (qobject_cast<PreviewWindow*>(found)) {
                delete found;
                break;
            }
        }
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

TEST_F(ReportFlowTest, TheOptionsAreThoseOfTheContextThatIsHandedDown) {
    Context other;
    other.options = std::make_shared<clsOptions>(other);
    other.options->DefCurrency(u"€"_s);
    other.options->DefPrinter(u"Labels"_s);
    EXPECT_EQ(str(defaultPrinter(other)), "Labels");
    EXPECT_EQ(str(optionsPricePicture(other)), str(u"€ ###,##0.00"_s));
    EXPECT_EQ(str(defaultPrinter(context)), "");
    EXPECT_EQ(str(optionsPricePicture(context)), "$ ###,##0.00");
}

TEST_F(ReportFlowTest, ASavedPdfIsAnnouncedWithWhatCanBeDone) {
    const support::OpenedOutside desktop;
    const support::Announced announced;
    preview(chemicals());
    folder.write("Chemicals 2026-03-07.pdf", "pdf");
    const QString path = folder.path("Chemicals 2026-03-07.pdf");
    const std::vector<SavedFileAction> actions = fileSaved(path);
    EXPECT_EQ(announced.texts(), QStringList("Saved as Chemicals 2026-03-07.pdf"));
    ASSERT_EQ(actions.size(), 2U);
    EXPECT_EQ(str(actions[0].text), "Open");
    EXPECT_EQ(str(actions[1].text), "Show in folder");
    actions[0].run();
    actions[1].run();
    EXPECT_EQ(desktop.paths, QStringList({path, folder.path()}));
}

TEST_F(ReportFlowTest, ASpreadsheetIsAnnouncedWithWhatCanBeDone) {
    const support::OpenedOutside desktop;
    const support::Announced announced;
    runReport(chemicals(), true, "\\Chemicals.xls");
    EXPECT_EQ(announced.texts(), QStringList("Exported Chemicals.xls"));
    ASSERT_EQ(announced.last().actions.size(), 2U);
    announced.last().actions[0].run();
    announced.last().actions[1].run();
    EXPECT_EQ(desktop.paths, QStringList({folder.path("Chemicals.xls"), folder.path()}));
}

}  // namespace
