// Which printer a report goes to: that of the options, and for labels of a prescription none in particular.
#include "PatientScreenTest.h"

#include "config/clsOptions.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/PrinterQuestion.h"

#include <QAction>
#include <QDateTimeEdit>

using namespace sorvanto;

namespace {

/// A report on the way to its printer: the screen's button, the entry, and what is asked before.
struct Printed {
    const char *screen, *entry, *dialog, *button;
};

class PrinterTest : public PatientScreenTest {
protected:
    void SetUp() override {
        PatientScreenTest::SetUp();
        platform::setPrinterNames([] { return QStringList("Counter"); });
    }
    void TearDown() override {
        platform::setPrinterNames({});
        PatientScreenTest::TearDown();
    }
    void show(const Printed& report) {
        click(report.screen);
        if (*report.dialog)
            asker.expectModal(report.dialog, [&](QWidget& form) {
                if (auto* begin = form.findChild<QDateTimeEdit*>("dtBegin"))
                    begin->setDateTime(QDateTime({2025, 1, 1}, {}, Qt::UTC));
                if (auto* end = form.findChild<QDateTimeEdit*>("dtEnd"))
                    end->setDateTime(QDateTime({2027, 1, 1}, {}, Qt::UTC));
                support::child<QPushButton>(form, report.button)->click();
            });
        click(report.entry);
    }
    /// Prints from the preview on show; the system's dialog is refused.
    void print(bool named) {
        if (named)
            asker.expectMsgBox("The printer \"Attic\" is not on this computer. Nothing was printed. "
                               "Choose a printer in the next window.",
                               {platform::Buttons::Ok, platform::Icon::Exclamation});
        asker.expectModal("printDialog",
                          [](QWidget& dialog) { QMetaObject::invokeMethod(&dialog, "reject"); });
        for (QWidget* found : QApplication::topLevelWidgets()) {
            if (auto* preview = qobject_cast<platform::PreviewWindow*>(found))
                support::child<QAction>(*preview, "print")->trigger();
        }
        EXPECT_TRUE(closePreview());
    }
};

TEST_F(PrinterTest, EachReportNamesTheOneOfTheOptions) {
    load();
    basMain::Options->DefPrinter("Attic");
    for (const Printed& report : {Printed{"cmdFormulas", "mnuWorksheet", "frmMake", "OKButton"},
                                  {"cmdLogs", "mnuFormulaLog", "", ""},
                                  {"cmdLogs", "mnuLabel", "frmSelPrint", "cmdPosition_1"},
                                  {"cmdLogs", "mnuReport", "frmReportDate", "cmdOK"},
                                  {"cmdLogs", "mnuJarReport", "frmReportDate", "cmdOK"},
                                  {"cmdPatients", "mnuReport", "frmReportDate", "cmdOK"},
                                  {"cmdChemicals", "mnuReport", "", ""}}) {
        SCOPED_TRACE(testing::Message() << report.screen << " " << report.entry);
        show(report);
        print(true);
    }
    click("cmdFormulas");
    asker.expectModal("frmMake",
                      [](QWidget& form) { support::child<QPushButton>(form, "OKButton")->click(); });
    click("cmdMake");
    click("mnuWorksheet");
    print(true);
}

TEST_F(PrinterTest, LabelsOfAPrescriptionNameNone) {
    load();
    basMain::Options->DefPrinter("Attic");
    show({"cmdPatients", "mnuLabel", "frmSelPrint", "cmdPosition_1"});
    print(false);
}

}  // namespace
