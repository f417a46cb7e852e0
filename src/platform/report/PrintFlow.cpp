// Printing and saving as the preview offers them.
#include "platform/report/PrintFlow.h"

#include "platform/ask/Ask.h"
#include "platform/report/PrinterQuestion.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// A path typed in full is what the user wants, whatever folder got selected in the list while typing.
class SaveDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

protected:
    void accept() override {
        const auto* line = findChild<QLineEdit*>(u"fileNameEdit"_s);
        auto* list = findChild<QListView*>(u"listView"_s);
        if (line && list && namesFile(QDir::fromNativeSeparators(line->text())))
            list->clearSelection();
        QFileDialog::accept();
    }

private:
    bool namesFile(const QString& path) const {
        const QFileInfo file(directory(), path);
        return path.contains(u'/') && !file.fileName().isEmpty() && !file.isDir() && file.dir().exists();
    }
};

}  // namespace

PrintFlow::PrintFlow(const PageDocument& document, QWidget* parent, PageProgress progress)
    : m_document(document), m_parent(parent), m_progress(std::move(progress)) {}

bool PrintFlow::print(const QString& printerName, std::optional<QPoint> offset) {
    const std::optional<QStringList> answer = printerNames();
    const QStringList names = answer.value_or(QStringList());
    if (names.isEmpty()) {
        const QString question =
            answer ? reportText("There is no printer on this computer. Save the report as PDF instead?")
                   : reportText("The printers do not answer. Save the report as PDF instead?");
        if (MsgBox(question, {Buttons::YesNo, Icon::Information}) == Answer::Yes)
            savePdf();
        return false;
    }
    const bool named = !printerName.isEmpty() && printerName != "0"_L1;
    if (named && !names.contains(printerName)) {
        MsgBox(reportText("The printer \"%1\" is not on this computer. Nothing was printed. "
                          "Choose a printer in the next window.")
                   .arg(printerName),
               {Buttons::Ok, Icon::Exclamation});
        return printOn({}, offset);
    }
    return printOn(named ? printerName : QString(), offset);
}

bool PrintFlow::printOn(const QString& printerName, std::optional<QPoint> offset) {
    QPrinter printer(QPrinter::HighResolution);
    if (!printerName.isEmpty()) {
        printer.setPrinterName(printerName);
        if (printer.printerName() != printerName) {  // a name it does not like leaves the default queue
            MsgBox(reportText("The printer \"%1\" can not be used. Nothing was printed.").arg(printerName),
                   {Buttons::Ok, Icon::Exclamation});
            return false;
        }
    }
    preparePrinter(printer, m_document);
    QPrintDialog dialog(&printer, m_parent);
    dialog.setObjectName(u"printDialog"_s);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, static_cast<int>(m_document.pages.size()));
    asker().showModal(dialog, [&] { dialog.exec(); });
    if (dialog.result() != QDialog::Accepted)
        return false;
    preparePrinter(printer, m_document);
    QPoint shift;
    if (m_document.definition.stock)
        shift = offset ? *offset : printerOffset(printer.printerName());
    return printDocument(m_document, printer, shift, m_progress);
}

QString PrintFlow::suggestedPath() const {
    QString name = m_document.fileName;
    if (name.isEmpty())
        name = m_document.caption.isEmpty() ? m_document.definition.name : m_document.caption;
    name.replace(QRegularExpression(u"[\\\\/:*?\"<>|\\x00-\\x1f]"_s), u" "_s);
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
        .filePath(name.simplified() + u".pdf"_s);
}

bool PrintFlow::savePdf() {
    SaveDialog dialog(m_parent, reportText("Save as PDF"), suggestedPath(), u"PDF (*.pdf)"_s);
    dialog.setObjectName(u"savePdfDialog"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"pdf"_s);
    asker().showModal(dialog, [&] { dialog.exec(); });
    if (dialog.result() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    const QString path = dialog.selectedFiles().constFirst();
    if (!platform::savePdf(m_document, path, m_progress))
        return false;
    m_savedActions = fileSaved(path);
    return true;
}

}  // namespace platform
