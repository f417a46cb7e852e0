// What the reader must know before the paper is used: texts that were cut, bars that are missing, a report
// that was stopped or failed. One line above the pages, with the single cases on request.
#pragma once

#include "platform/report/PageDocument.h"

#include <QFrame>

class QLabel;
class QListWidget;
class QPushButton;

namespace platform {

class PreviewNotices : public QFrame {
    Q_OBJECT
public:
    explicit PreviewNotices(QWidget* parent);

    /// Shows the document's warnings, and above them why the run ended early, if it did.
    void update(const PageDocument& document, const QString& ending);
    /// A warning as the user reads it.
    static QString sentence(const PageWarning& warning);

signals:
    void pageChosen(int page);

private:
    static QString counts(const PageDocument& document);

    QLabel* m_line;
    QPushButton* m_more;
    QListWidget* m_list;
    int m_known = 0;  ///< count of warnings shown
    QString m_ending;
    QStringList m_notes;
};

}  // namespace platform
