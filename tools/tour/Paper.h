// The paper side: each report by its own command, saved from its preview as PDF, and exported as a
// spreadsheet beside the program.
#pragma once

#include "Visitor.h"

#include <QStringList>
#include <functional>

namespace platform {
class PreviewWindow;
}

namespace tour {

class Paper {
public:
    /// PDF files go to the one folder, spreadsheets are written by the program into its own.
    Paper(Visitor& visitor, QString pdfFolder, QString programFolder);

    /// Announces the dialogs that a report asks before it runs.
    using Announce = std::function<void()>;
    /// An entry of the Print menu: its preview is pictured and saved as that PDF, then closed.
    void print(const QString& entry, const QString& pdf, const Announce& dialogs = {});
    /// The preview alone, with its last page.
    platform::PreviewWindow& preview(const QString& entry, const Announce& dialogs = {});
    /// What the preview shows as a PDF file of that name.
    void savePdf(QWidget& preview, const QString& pdf);
    void close(platform::PreviewWindow& preview);
    /// An entry of the Export menu: the spreadsheet must come anew.
    void exportTo(const QString& entry, const QString& spreadsheet, const Announce& dialogs = {});

    // The dialogs, pictured the first time.
    Announce quantity(int quantity);
    /// From a year before to a year after what is offered.
    Announce dates();
    /// That many labels from the position with that number, 1 to 30 row by row.
    Announce labels(int count, int position);

    const QStringList& files() const { return m_files; }

private:
    void pictureOnce(const QString& name, QWidget& dialog);

    Visitor& m_visitor;
    QString m_pdfFolder, m_programFolder;
    QStringList m_files, m_pictured;
};

}  // namespace tour
