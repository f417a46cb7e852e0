// The way from a finished document to paper or to a file, with the questions on it.
#pragma once

#include "platform/report/PageDocument.h"
#include "platform/report/ReportHooks.h"
#include "platform/report/ReportOutput.h"

#include <QPoint>
#include <QString>
#include <optional>

class QWidget;

namespace platform {

class PrintFlow {
public:
    PrintFlow(const PageDocument& document, QWidget* parent, PageProgress progress);

    /// Asks by the system's print dialog, with the named printer chosen where it exists, and prints. An
    /// unknown printer is told, and nothing goes anywhere but where the user then says. Without any
    /// printer a PDF is offered. The offset moves labels on that printer; none: the one that is kept.
    /// True when pages were sent.
    bool print(const QString& printerName, std::optional<QPoint> offset = std::nullopt);

    /// Asks for the file and writes it. True when it was written.
    bool savePdf();

    /// What can be done with the file that was saved; nothing where none was.
    const std::vector<SavedFileAction>& savedActions() const { return m_savedActions; }

private:
    bool printOn(const QString& printerName, std::optional<QPoint> offset);
    QString suggestedPath() const;

    const PageDocument& m_document;
    QWidget* m_parent;
    PageProgress m_progress;
    std::vector<SavedFileAction> m_savedActions;
};

}  // namespace platform
