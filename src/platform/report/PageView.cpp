// Scrolling, zooming and drawing of pages.
#include "platform/report/PageView.h"

#include "platform/report/PagePainter.h"
#include "platform/widgets/FocusMark.h"
#include "platform/widgets/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace platform {

namespace {
constexpr double pixelsOfTwip = 96.0 / twipsOfInch;
constexpr int gap = 2 * grid;
constexpr double leastZoom = 0.1, mostZoom = 8.0;
constexpr double zoomSteps[] = {0.1,  0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1, 1.1,
                                1.25, 1.5,  1.75, 2,   2.5,  3,    4,   6, 8};
}  // namespace

PageView::PageView(const PageDocument& document, QWidget* parent)
    : QAbstractScrollArea(parent), m_document(document), m_pictures(8) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    new FocusMark(*this);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    verticalScrollBar()->setSingleStep(5 * grid);
    horizontalScrollBar()->setSingleStep(5 * grid);
}

QSizeF PageView::pageSize() const {
    const ReportDefinition& paper = m_document.definition;
    return QSizeF(paper.paperWidth, paper.paperHeight) * (pixelsOfTwip * m_zoom);
}

double PageView::pitch() const { return pageSize().height() + gap; }

QPointF PageView::pagePlace(int page) const {
    const double spare = viewport()->width() - pageSize().width();
    const double x = spare > 2 * gap ? spare / 2 : gap - horizontalScrollBar()->value();
    const double all = pageCount() * pitch() + gap;
    const double shift = std::max(0.0, (viewport()->height() - all) / 2);
    return {std::floor(x), std::floor(shift + gap + page * pitch() - verticalScrollBar()->value())};
}

void PageView::pagesAdded() {
    if (m_mode != ZoomMode::Free && pageCount() == 1)
        applyZoom(fittingZoom(), {});
    updateScrollBars();
    viewport()->update();
    if (m_lastPage < 0 && pageCount() > 0) {
        m_lastPage = 0;
        emit pageChanged(0);
    }
}

void PageView::updateScrollBars() {
    const QSize view = viewport()->size();
    verticalScrollBar()->setPageStep(view.height());
    verticalScrollBar()->setRange(0,
                                  std::max(0, static_cast<int>(pageCount() * pitch() + gap) - view.height()));
    const int width = static_cast<int>(pageSize().width()) + 2 * gap;
    horizontalScrollBar()->setPageStep(view.width());
    horizontalScrollBar()->setRange(0, std::max(0, width - view.width()));
}

int PageView::currentPage() const {
    if (pageCount() == 0)
        return -1;
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    return std::clamp(static_cast<int>((middle - gap) / pitch()), 0, pageCount() - 1);
}

void PageView::goToPage(int page) {
    page = std::clamp(page, 0, std::max(0, pageCount() - 1));
    // A page that is lower than the view stands in its middle, so that it is the current one.
    const double spare = std::max(0.0, (viewport()->height() - pageSize().height()) / 2 - gap);
    verticalScrollBar()->setValue(static_cast<int>(page * pitch() - spare));
}

double PageView::fittingZoom() const {
    const ReportDefinition& paper = m_document.definition;
    const QSizeF full = QSizeF(paper.paperWidth, paper.paperHeight) * pixelsOfTwip;
    const bool barToCome = m_mode == ZoomMode::FitWidth && !verticalScrollBar()->isVisible();
    const int bar = barToCome ? verticalScrollBar()->sizeHint().width() : 0;
    const double width = (viewport()->width() - 2 * gap - bar) / full.width();
    return m_mode == ZoomMode::FitWidth ? width
                                        : std::min(width, (viewport()->height() - 2 * gap) / full.height());
}

void PageView::setZoomMode(ZoomMode mode) {
    m_mode = mode;
    if (mode == ZoomMode::Free)
        return;
    const int page = currentPage();
    applyZoom(fittingZoom(), {});
    if (mode == ZoomMode::FitPage && page >= 0)
        goToPage(page);
}

void PageView::setZoom(double zoom) {
    m_mode = ZoomMode::Free;
    applyZoom(zoom, QPointF(viewport()->width() / 2.0, viewport()->height() / 2.0));
}

void PageView::zoomIn() {
    const auto step = std::upper_bound(std::begin(zoomSteps), std::end(zoomSteps), m_zoom * 1.001);
    setZoom(step == std::end(zoomSteps) ? mostZoom : *step);
}

void PageView::zoomOut() {
    const auto step = std::lower_bound(std::begin(zoomSteps), std::end(zoomSteps), m_zoom * 0.999);
    setZoom(step == std::begin(zoomSteps) ? leastZoom : *(step - 1));
}

void PageView::applyZoom(double zoom, QPointF anchor) {
    zoom = std::clamp(zoom, leastZoom, mostZoom);
    const double ratio = zoom / m_zoom;
    const QPointF before(horizontalScrollBar()->value(), verticalScrollBar()->value());
    m_zoom = zoom;
    m_pictures.clear();
    updateScrollBars();
    // What stood under the anchor stays there.
    horizontalScrollBar()->setValue(static_cast<int>((before.x() + anchor.x()) * ratio - anchor.x()));
    verticalScrollBar()->setValue(static_cast<int>((before.y() + anchor.y()) * ratio - anchor.y()));
    viewport()->update();
    emit zoomChanged(m_zoom);
}

void PageView::mark(int page, const QRect& twips) {
    m_markedPage = page;
    m_mark = twips;
    if (page >= 0) {
        const double scale = pixelsOfTwip * m_zoom;
        const double y = gap + page * pitch() + twips.y() * scale;
        const int top = verticalScrollBar()->value();
        if (y < top + gap || y + twips.height() * scale > top + viewport()->height() - gap)
            verticalScrollBar()->setValue(static_cast<int>(y - viewport()->height() / 3.0));
        const double x = gap + twips.x() * scale;
        const int left = horizontalScrollBar()->value();
        if (x < left || x + twips.width() * scale > left + viewport()->width())
            horizontalScrollBar()->setValue(static_cast<int>(x - gap));
    }
    viewport()->update();
}

QPixmap PageView::picture(int page) {
    if (const QPixmap* known = m_pictures.object(page))
        return *known;
    const double ratio = devicePixelRatioF();
    QPixmap made((pageSize() * ratio).toSize());
    made.setDevicePixelRatio(ratio);
    made.fill(Qt::white);
    QPainter painter(&made);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const double scale = pixelsOfTwip * m_zoom;
    painter.scale(scale, scale);
    PagePainter(m_document).paint(painter, m_document.pages[static_cast<std::size_t>(page)]);
    painter.end();
    m_pictures.insert(page, new QPixmap(made));  // may drop it at once
    return made;
}

void PageView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), theme().window);
    if (pageCount() == 0)
        return;
    const int first =
        std::clamp(static_cast<int>((verticalScrollBar()->value() - gap) / pitch()), 0, pageCount() - 1);
    for (int page = first; page < pageCount(); ++page) {
        const QRectF paper(pagePlace(page), pageSize());
        if (paper.top() > viewport()->height())
            break;
        paintPaper(painter, page, paper);
        if (page == m_markedPage)
            paintMark(painter, paper.topLeft());
        painter.setPen(theme().line);
        painter.drawRect(paper.adjusted(-1, -1, 0, 0));
    }
}

void PageView::paintPaper(QPainter& painter, int page, const QRectF& paper) {
    // Big magnifications are drawn straight, for a picture of the whole page would not fit anywhere.
    if (paper.width() * paper.height() <= 6e6) {
        painter.drawPixmap(paper.topLeft(), picture(page));
        return;
    }
    painter.save();
    painter.setClipRect(paper);
    painter.fillRect(paper, Qt::white);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(paper.topLeft());
    painter.scale(pixelsOfTwip * m_zoom, pixelsOfTwip * m_zoom);
    PagePainter(m_document).paint(painter, m_document.pages[static_cast<std::size_t>(page)]);
    painter.restore();
}

void PageView::paintMark(QPainter& painter, QPointF paper) {
    const double scale = pixelsOfTwip * m_zoom;
    QColor soft =
        theme().dark ? theme().accent.darker() : theme().accent;  // the paper is white in the dark, too
    const QRectF place(paper.x() + m_mark.x() * scale, paper.y() + m_mark.y() * scale, m_mark.width() * scale,
                       m_mark.height() * scale);
    painter.setPen(QPen(soft, 1.5));
    soft.setAlpha(48);
    painter.setBrush(soft);
    painter.drawRoundedRect(place.adjusted(-2, -1, 2, 1), 3, 3);
    painter.setBrush(Qt::NoBrush);
}

void PageView::resizeEvent(QResizeEvent*) {
    if (m_mode != ZoomMode::Free)
        setZoomMode(m_mode);
    updateScrollBars();
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    const int page = currentPage();
    if (page != m_lastPage) {
        m_lastPage = page;
        emit pageChanged(page);
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    m_mode = ZoomMode::Free;
    applyZoom(m_zoom * std::pow(1.0015, event->angleDelta().y()), event->position());
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    const bool control = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Home:
        return goToPage(0);
    case Qt::Key_End:
        return goToPage(pageCount() - 1);
    case Qt::Key_PageDown:
        return control ? goToPage(currentPage() + 1)
                       : verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    case Qt::Key_PageUp:
        return control ? goToPage(currentPage() - 1)
                       : verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub);
    case Qt::Key_Space:
        return verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

}  // namespace platform
