// The preview window: its parts, the run in slices, and output with progress.
#include "platform/report/PreviewWindow.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/LabelOffsetDialog.h"
#include "platform/report/PageDisposal.h"
#include "platform/report/PageView.h"
#include "platform/report/PreviewBar.h"
#include "platform/report/PreviewNotices.h"
#include "platform/report/PrintFlow.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
constexpr int sliceMilliseconds = 20;
constexpr int progressSteps = 1000;
}  // namespace

PreviewWindow* PreviewWindow::open(std::unique_ptr<Report> report) {
    try {
        std::unique_ptr<PreviewWindow> window(new PreviewWindow(std::move(report)));
        window->makePage();
        if (window->m_run.wasCancelled())
            return nullptr;
        window->build();
        window->takePlace();
        if (QApplication::activeModalWidget())  // which would keep keys and clicks from it
            window->setWindowModality(Qt::ApplicationModal);
        window->show();
        window->m_nextSlice.start(0);
        return window.release();
    } catch (...) {
        reportFailed();
        return nullptr;
    }
}

PreviewWindow::PreviewWindow(std::unique_ptr<Report> report)
    : m_run(std::move(report)), m_search(m_run.document()) {
    setObjectName(u"preview"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    m_run.setPace([this] { return !m_work || m_work->goesOn(-1); });
    m_nextSlice.setSingleShot(true);
    connect(&m_nextSlice, &QTimer::timeout, this, &PreviewWindow::layOutMore);
}

PreviewWindow::~PreviewWindow() { new PageDisposal(m_run.takePages(), qApp); }

void PreviewWindow::build() {
    setWindowTitle(m_run.document().caption);
    m_bar = new PreviewBar(m_run.document().definition.stock.has_value(), this);
    addToolBar(m_bar);
    m_view = new PageView(m_run.document(), this);
    m_view->setObjectName(u"pages"_s);
    m_view->setAccessibleName(reportText("Pages"));
    m_notices = new PreviewNotices(this);
    auto* middle = new QWidget(this);
    auto* all = new QVBoxLayout(middle);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(m_notices);
    all->addWidget(m_view, 1);
    all->addWidget(buildFoot());
    setCentralWidget(middle);
    connectBar();
    connectView();
    m_view->pagesAdded();
    m_view->setFocus();
    showState();
}

QWidget* PreviewWindow::buildFoot() {
    auto* foot = new QFrame(this);
    foot->setObjectName(u"foot"_s);
    makeBar(*foot, Qt::TopEdge);
    m_state = new QLabel(foot);
    m_state->setObjectName(u"state"_s);
    setLook(*m_state, "quiet");
    m_progress = new QProgressBar(foot);
    m_progress->setObjectName(u"progress"_s);
    m_progress->setTextVisible(false);
    m_progress->setFixedWidth(30 * grid);
    m_cancel = new QPushButton(reportText("Cancel"), foot);
    m_cancel->setObjectName(u"cancel"_s);
    m_cancel->setAutoDefault(false);
    setLook(*m_cancel, "compact");
    auto* line = new QHBoxLayout(foot);
    line->setContentsMargins(2 * grid, grid / 2, 2 * grid, grid / 2);
    line->setSpacing(2 * grid);
    line->addWidget(m_state);
    m_savedActions = new QHBoxLayout;
    m_savedActions->setSpacing(grid);
    line->addLayout(m_savedActions);
    line->addStretch();
    line->addWidget(m_progress);
    line->addWidget(m_cancel);
    foot->setMinimumHeight(4 * grid);
    connect(m_cancel, &QPushButton::clicked, this, &PreviewWindow::stop);
    return foot;
}

void PreviewWindow::connectBar() {
    const auto on = [this](QAction* action, auto react) {
        connect(action, &QAction::triggered, this, react);
    };
    on(m_bar->print, [this] {
        output([this](const PageProgress& go) {
            PrintFlow flow(document(), this, go);
            flow.print(m_run.report().printerName);
            offer(flow.savedActions());
        });
    });
    on(m_bar->savePdf, [this] {
        output([this](const PageProgress& go) {
            PrintFlow flow(document(), this, go);
            if (flow.savePdf())
                m_saved = savedNote(document().definition.name);
            offer(flow.savedActions());
        });
    });
    if (m_bar->offset)
        on(m_bar->offset, [this] { alignLabels(); });
    on(m_bar->first, [this] { m_view->goToPage(0); });
    on(m_bar->previous, [this] { m_view->goToPage(m_view->currentPage() - 1); });
    on(m_bar->next, [this] { m_view->goToPage(m_view->currentPage() + 1); });
    on(m_bar->last, [this] { m_view->goToPage(m_view->pageCount() - 1); });
    on(m_bar->zoomIn, [this] { m_view->zoomIn(); });
    on(m_bar->zoomOut, [this] { m_view->zoomOut(); });
    on(m_bar->fitWidth, [this] { m_view->setZoomMode(ZoomMode::FitWidth); });
    on(m_bar->fitPage, [this] { m_view->setZoomMode(ZoomMode::FitPage); });
    on(m_bar->close, [this] { close(); });
}

void PreviewWindow::connectView() {
    connect(m_bar, &PreviewBar::pageChosen, this, [this](int page) {
        m_view->goToPage(page);
        m_view->setFocus();
        m_bar->showPage(m_view->currentPage(), m_view->pageCount());
    });
    connect(m_bar, &PreviewBar::zoomChosen, this, [this](double zoom) {
        m_view->setZoom(zoom);
        m_view->setFocus();
    });
    connect(m_bar, &PreviewBar::findWanted, this, &PreviewWindow::find);
    connect(m_notices, &PreviewNotices::pageChosen, m_view, &PageView::goToPage);
    connect(m_view, &PageView::pageChanged, this,
            [this](int page) { m_bar->showPage(page, m_view->pageCount()); });
    connect(m_view, &PageView::zoomChanged, this, [this](double zoom) {
        m_bar->showZoom(zoom, m_view->zoomMode() == ZoomMode::FitWidth,
                        m_view->zoomMode() == ZoomMode::FitPage);
    });
}

void PreviewWindow::takePlace() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect whole = screen->geometry();
    const PreviewPlace& place = m_run.report().previewPlace;
    const QSize size(static_cast<int>(whole.width() * place.width),
                     static_cast<int>(whole.height() * place.height));
    const int top = static_cast<int>(place.top * screen->logicalDotsPerInchY() / twipsOfInch);
    resize(size);
    move(whole.x() + (whole.width() - size.width()) / 2, whole.y() + top);
}

bool PreviewWindow::makePage() {
    LongWork work(reportText("Preparing page %1 ...").arg(m_run.document().pages.size() + 1));
    m_work = &work;
    const auto atEnd = qScopeGuard([this] { m_work = nullptr; });
    return m_run.makePage();
}

bool PreviewWindow::stepRun() {
    try {
        const bool more = makePage();
        if (m_run.wasCancelled())
            tellStopped();
        return more;
    } catch (...) {
        m_ending = reportText("The report ended with an error after page %1.").arg(m_view->pageCount());
        reportFailed();
        return false;
    }
}

bool PreviewWindow::layOutSlice() {
    QElapsedTimer clock;
    clock.start();
    bool more = !m_run.isOver();
    while (more && !clock.hasExpired(sliceMilliseconds))
        more = stepRun();
    m_view->pagesAdded();
    showState();
    return more;
}

void PreviewWindow::layOutMore() {
    if (layOutSlice())
        m_nextSlice.start(0);
}

void PreviewWindow::finishRun() {
    m_nextSlice.stop();
    while (!m_run.isOver()) {
        layOutSlice();
        QCoreApplication::processEvents();
    }
}

void PreviewWindow::showState() {
    const int pages = m_view->pageCount();
    const bool runs = !m_run.isOver();
    m_bar->showPage(m_view->currentPage(), pages);
    m_bar->setOutputEnabled(!m_outputRuns);
    m_progress->setVisible(runs || m_outputRuns);
    m_cancel->setVisible(runs || m_outputRuns);
    if (runs) {
        const double done = m_run.progress();
        m_progress->setRange(0, done < 0 ? 0 : progressSteps);
        m_progress->setValue(static_cast<int>(done * progressSteps));
        m_state->setText(reportText("Preparing page %1 ...").arg(pages + 1));
    } else if (!m_outputRuns) {
        const QString count = counted(reportText("%1 page | %1 pages"), pages);
        const int smaller = document().smallerValues;
        m_state->setText(smaller == 0
                             ? count
                             : count + u"  ·  "_s + reportText("Values in smaller type: %1").arg(smaller));
    }
    const QString& trouble = m_ending.isEmpty() ? m_failure : m_ending;
    m_notices->update(document(), trouble.isEmpty() ? m_saved : trouble);
}

void PreviewWindow::stop() {
    m_outputStopped = true;
    if (!m_run.isOver()) {
        m_run.cancel();
        tellStopped();
    }
    showState();
}

void PreviewWindow::tellStopped() {
    const qsizetype pages = static_cast<qsizetype>(m_run.document().pages.size());
    m_ending = reportText("The report was stopped after page %1: the rest is missing.").arg(pages);
}

void PreviewWindow::output(const std::function<void(const PageProgress&)>& action) {
    if (m_outputRuns)
        return;
    m_outputRuns = true;
    m_outputStopped = false;
    m_failure.clear();
    m_saved.clear();
    offer({});
    const QPointer<PreviewWindow> alive(this);
    try {
        finishRun();
        if (!m_outputStopped) {
            QElapsedTimer clock;
            clock.start();
            action([this, &clock](int done) {
                if (clock.hasExpired(qint64{2} * sliceMilliseconds)) {
                    clock.restart();
                    m_progress->setRange(0, m_view->pageCount());
                    m_progress->setValue(done);
                    m_state->setText(reportText("Page %1 of %2").arg(done).arg(m_view->pageCount()));
                    showState();
                    QCoreApplication::processEvents();
                }
                return !m_outputStopped;
            });
        }
    } catch (const RuntimeError& error) {
        if (alive)
            m_failure = error.description();  // said here as well: this window may hide the one that reports
        reportFailed();
    } catch (...) {
        reportFailed();
    }
    if (!alive)
        return;
    m_outputRuns = false;
    showState();
    if (m_closing)
        close();
}

void PreviewWindow::offer(const std::vector<SavedFileAction>& actions) {
    while (QLayoutItem* old = m_savedActions->takeAt(0)) {
        delete old->widget();
        delete old;
    }
    for (const SavedFileAction& action : actions) {
        auto* button = new QPushButton(action.text, this);
        button->setObjectName(u"savedAction%1"_s.arg(m_savedActions->count()));
        button->setAutoDefault(false);
        setLook(*button, "compact");
        connect(button, &QPushButton::clicked, this, action.run);
        m_savedActions->addWidget(button);
    }
}

void PreviewWindow::alignLabels() {
    LabelOffsetDialog dialog(document().definition, m_run.report().printerName, this);
    asker().showModal(dialog, [&] { dialog.exec(); });
}

void PreviewWindow::find(const QString& words, bool backward) {
    const TextSearch::Place place = m_search.find(words, backward, m_view->currentPage());
    m_view->mark(place.page, place.rect);
    m_bar->showFound(words.isEmpty() || place.page >= 0);
}

void PreviewWindow::closeEvent(QCloseEvent* event) {
    if (m_outputRuns) {  // the output ends first, then the window
        m_closing = true;
        stop();
        event->ignore();
        return;
    }
    m_run.cancel();
    event->accept();
}

void PreviewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape)
        return QMainWindow::keyPressEvent(event);
    if (!m_run.isOver() || m_outputRuns)
        stop();
    else
        close();
}

}  // namespace platform
