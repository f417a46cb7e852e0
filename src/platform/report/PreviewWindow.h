// The preview: opens with the first page, lays out the rest while it can be read, and offers printing,
// saving, searching and zooming.
#pragma once

#include "platform/report/ReportHooks.h"
#include "platform/report/ReportOutput.h"
#include "platform/report/ReportRun.h"
#include "platform/report/TextSearch.h"

#include <QMainWindow>
#include <QTimer>
#include <memory>

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;

namespace platform {

class LongWork;
class PageView;
class PreviewBar;
class PreviewNotices;

class PreviewWindow : public QMainWindow {
    Q_OBJECT
public:
    /// Runs the report up to its first page and shows the window, which deletes itself when closed. A
    /// failure goes to the report failure handler; without any page there is no window (null), nor where its user stops it.
    static PreviewWindow* open(std::unique_ptr<Report> report);
    ~PreviewWindow() override;

    const PageDocument& document() const { return m_run.document(); }
    bool isComplete() const { return m_run.isOver() && m_ending.isEmpty(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    explicit PreviewWindow(std::unique_ptr<Report> report);
    void build();
    QWidget* buildFoot();
    void connectBar();
    void connectView();
    void takePlace();
    /// Lays out further pages for a moment; false when there are no more.
    bool layOutSlice();
    /// Slice after slice, the event loop running between them.
    void layOutMore();
    /// The next page, with progress and a way to stop where it takes long; false where there is none.
    bool makePage();
    /// One step of the run; a failure is handed on and ends it.
    bool stepRun();
    void tellStopped();
    /// The rest of the pages at once, with progress; stop() ends it.
    void finishRun();
    void showState();
    void stop();
    /// Runs a print or save action on the whole document with progress and cancel.
    void output(const std::function<void(const PageProgress&)>& action);
    /// Buttons for what can be done with the file that was saved last.
    void offer(const std::vector<SavedFileAction>& actions);
    void alignLabels();
    void find(const QString& words, bool backward);

    ReportRun m_run;
    LongWork* m_work = nullptr;  ///< while a page is made
    TextSearch m_search;
    QTimer m_nextSlice;
    PageView* m_view = nullptr;
    PreviewBar* m_bar = nullptr;
    PreviewNotices* m_notices = nullptr;
    QLabel* m_state = nullptr;
    QHBoxLayout* m_savedActions = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
    QString m_ending;   ///< why the run ended before its time
    QString m_failure;  ///< why the last output came to nothing
    QString m_saved;    ///< what there is to know of the file that was saved last
    bool m_outputRuns = false;
    bool m_outputStopped = false;
    bool m_closing = false;
};

}  // namespace platform
