// Changes of records, and the windows that read many of them.
#include "blocks.h"
#include "platform/widgets/Theme.h"
#include "shared/MainWindow.h"
#include "shared/basMain.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int listedPrices = 10'000;

void clickIn(Blocks& blocks, const char* action, QWidget& form, const char* button) {
    auto* found = form.findChild<QPushButton*>(QLatin1String(button));
    if (found && found->isEnabled())
        blocks.measure(action, [&] { found->click(); });
}

void typeIn(Blocks& blocks, const char* action, QWidget& form, const char* box, const QString& text) {
    if (auto* found = form.findChild<QLineEdit*>(QLatin1String(box)))
        blocks.measure(action, [&] {
            found->clear();
            QTest::keyClicks(found, text);
            QTest::keyClick(found, Qt::Key_Return);
        });
}

/// A supplier's list of new prices for the chemicals of the sample.
QString priceList(const WholeProgram& program) {
    const QString path = program.folder().path() + u"/prices.csv"_s;
    QFile file(path);
    if (!file.open(QFile::WriteOnly))
        return {};
    file.write("Name;NDC;Pack;Price\n");
    for (int row = 101; row <= 100 + listedPrices; ++row)
        file.write(qPrintable(QString::asprintf("Chemical %d;%05d-%04d-%02d;100 g;%d.50\n", row, row,
                                                row % 9973, row % 97, 20 + row % 80)));
    return path;
}

void trace(QWidget& form, Blocks& blocks) {
    typeIn(blocks, "&nbsp; a lot", form, "txtTrace", u"1"_s);
    typeIn(blocks, "&nbsp; a part of every name", form, "txtTrace", u"a"_s);
    clickIn(blocks, "&nbsp; the list to .xls", form, "cmdExport");
    clickIn(blocks, "&nbsp; the list in the preview", form, "cmdPrint");
}

}  // namespace

void sealOthers(Blocks& blocks) {
    blocks.measure("first change of all, which seals 48,000 of another program before it", [] {
        sorvanto::basMain::gConnection->execute(
            u"UPDATE Chemical SET chm_Notes = 'x' WHERE ChemicalID = 1"_s);
    });
}

void changeRecords(WholeProgram& program, Blocks& blocks) {
    program.asker.reply = [](QWidget&) {};
    const std::pair<const char*, const char*> screens[] = {{"a formula", "cmdFormulas"},
                                                           {"a chemical", "cmdChemicals"},
                                                           {"a batch", "cmdLogs"},
                                                           {"a patient", "cmdPatients"}};
    for (const auto& [record, screen] : screens) {
        std::printf("| %s | | | |\n", record);
        blocks.press("FormBar", screen);
        blocks.press("MainBar", "cmdLast");
        blocks.press("MainBar", "cmdPrevious");
        blocks.press("MainBar", "cmdEdit");
        blocks.click("&nbsp; saved", "MainBar", "cmdSave");
        blocks.click("&nbsp; copied", "MainBar", "cmdCopy");
        blocks.press("MainBar", "cmdCancel");
        blocks.click("&nbsp; new", "MainBar", "cmdNew");
        blocks.click("&nbsp; new one thrown away", "MainBar", "cmdCancel");
        blocks.click("&nbsp; deleted", "MainBar", "cmdDelete");
    }
    program.asker.reply = {};
}

void openWindows(WholeProgram& program, Blocks& blocks) {
    program.asker.file = priceList(program);
    blocks.press("FormBar", "cmdLogs");
    blocks.window("trace of a batch", "mnuForms", "mnuTrace", [&](QWidget& form) { trace(form, blocks); });
    blocks.window("history of a batch", "mnuForms", "mnuHistory",
                  [&](QWidget& form) { clickIn(blocks, "&nbsp; of all records", form, "cmdAllRecords"); });
    blocks.press("FormBar", "cmdFormulas");
    blocks.window("history of a formula", "mnuForms", "mnuHistory");
    blocks.window("recalculation of all formulas", "mnuForms", "mnuRecalculate");
    blocks.window("health", "mnuHelp", "mnuHealth");
    blocks.press("FormBar", "cmdChemicals");
    blocks.window("new lot", "MainBar", "cmdNewLot");
    blocks.window("prices of a list of 10,000 rows", "MainBar", "cmdImport",
                  [&](QWidget& form) { clickIn(blocks, "&nbsp; taken", form, "cmdTake"); });
    blocks.click("manual", "mnuHelp", "mnuManual");
}

void changeLooks(QApplication& application, WholeProgram&, Blocks& blocks) {
    blocks.measure("dark colours", [&] { platform::applyTheme(application, true); });
    blocks.measure("light colours", [&] { platform::applyTheme(application, false); });
}

}  // namespace bench
