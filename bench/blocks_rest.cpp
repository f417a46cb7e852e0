// What is done seldom, and places where much has piled up.
#include "blocks.h"
#include "mixer/JournalFile.h"
#include "mixer/MixJournal.h"
#include "platform/basic/Dates.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "shared/basMain.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace bench {

namespace {

constexpr int closedMixes = 1000;  // as many as are kept
constexpr int keptCopies = 400;    // far more than are kept

/// Where a formula that no mixer had is kept as mixed.
JournalEntry closedMix(const QString& lot) {
    JournalEntry entry;
    entry.mix = "00000000";
    entry.state = JournalState::Logged;
    entry.loaded = entry.started = entry.finished = platform::now();
    entry.formula = platform::XmlDocument::create();
    entry.formula->loadXML(u"<Formula Name=\"Gel\" Quantity=\"100 GMS\"/>"_s);
    entry.results = platform::XmlDocument::create();
    entry.results->loadXML(u"<Results><PreparationNumber Value=\"%1\"/></Results>"_s.arg(lot));
    return entry;
}

/// In the options as they are open: an action by the button of that name.
void press(Blocks& blocks, const char* action, QWidget& form, const char* button) {
    auto* found = form.findChild<QPushButton*>(QLatin1String(button));
    blocks.measure(action, [&] { found->click(); });
}

void changeOptions(WholeProgram& program, Blocks& blocks) {
    QDir folder(program.folder().path());
    folder.mkpath(u"backups"_s);
    for (int day = 0; day < keptCopies; ++day) {
        const QDate made = QDate(2024, 1, 1).addDays(day);
        QFile copy(folder.filePath(u"backups/sorvanto-%1.mdb"_s.arg(made.toString(Qt::ISODate))));
        if (!copy.open(QFile::WriteOnly))
            return;
    }
    blocks.window("options, with 400 copies in the folder", "MainBar", "cmdOptions");
    blocks.window("health, with them", "mnuHelp", "mnuHealth");
    program.asker.file = program.folder().database();
    blocks.window("options", "MainBar", "cmdOptions", [&](QWidget& form) {
        press(blocks, "&nbsp; another file named", form, "cmdDB");
        press(blocks, "&nbsp; stored", form, "cmdSave");
    });
    blocks.window("options", "MainBar", "cmdOptions", [&](QWidget& form) {
        auto* language = form.findChild<platform::ChoiceBox*>(u"cboLanguage"_s);
        const int former = language->listIndex();
        language->setListIndex(former + 1);
        press(blocks, "&nbsp; another language stored", form, "cmdSave");
        language->setListIndex(former);
        form.findChild<QPushButton*>(u"cmdSave"_s)->click();
    });
}

void deleteAndBringBack(WholeProgram& program, Blocks& blocks, const char* screen, const char* record) {
    std::printf("| %s, with 1,000 mixes in the journal | | | |\n", record);
    blocks.press("FormBar", screen);
    blocks.press("MainBar", "cmdLast");
    program.asker.reply = [](QWidget&) {};
    blocks.click("&nbsp; deleted", "MainBar", "cmdDelete");
    if (auto* undo = program.window().findChild<QPushButton*>(u"cmdNewsAction0"_s))
        blocks.measure("&nbsp; brought back", [&] { undo->click(); });
    else
        std::printf("| &nbsp; nothing to bring back | | | |\n");
    program.asker.reply = {};
}

platform::PreviewWindow* openPreview() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<platform::PreviewWindow*>(window))
            return found;
    }
    return nullptr;
}

/// The report with all its pages as PDF.
void saveAsPdf(WholeProgram& program, Blocks& blocks) {
    blocks.press("FormBar", "cmdChemicals");
    blocks.press("mnuPrint", "mnuReport");
    blocks.measure(
        "chemicals report again", [] {}, [] { return openPreview() && openPreview()->isComplete(); });
    program.asker.reply = [&](QWidget& form) {
        if (auto* dialog = qobject_cast<QFileDialog*>(&form)) {
            dialog->selectFile(program.folder().path() + u"/all.pdf"_s);
            static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
        }
    };
    blocks.measure("&nbsp; saved as PDF",
                   [] { openPreview()->findChild<QAction*>(u"savePdf"_s)->trigger(); });
    program.asker.reply = {};
    openPreview()->close();
    Blocks::settleDown();
}

}  // namespace

void fillJournal() {
    JournalEntry entry = closedMix(u"X1"_s);
    QDir().mkpath(journal_file::closedFolder());
    const QString first = journal_file::closedPath(entry);
    journal_file::write(entry, first);
    QFile file(first);
    if (!file.open(QFile::ReadOnly))
        return;
    const QByteArray text = file.readAll();
    for (int mix = 1; mix < closedMixes; ++mix) {
        const QByteArray id = QByteArray::number(mix, 16).toUpper().rightJustified(8, '0');
        QFile copy(QString(first).replace(u"00000000"_s, QString::fromLatin1(id)));
        if (copy.open(QFile::WriteOnly))
            copy.write(QByteArray(text).replace("00000000", id));
    }
}

void restOfTheWork(WholeProgram& program, Blocks& blocks) {
    fillJournal();
    deleteAndBringBack(program, blocks, "cmdFormulas", "a formula");
    deleteAndBringBack(program, blocks, "cmdLogs", "a batch");
    changeOptions(program, blocks);
    saveAsPdf(program, blocks);
}

void endTheProgram(WholeProgram& program, Blocks& blocks) {
    basMain::endProgram = [] {};
    const QDir copies(program.folder().path() + u"/backups"_s);
    blocks.measure(
        "a start with 1,000 mixes in the journal, until the day's copy begins", [] {},
        [&] { return !copies.entryList({u"*.part"_s}, QDir::Files).isEmpty(); });
    blocks.measure("closing the program while the day's copy is made",
                   [&] { program.window().Form_Unload(); });
}

}  // namespace bench
