// The pages of a document one below the other, at any zoom. Only what is in sight is drawn.
#pragma once

#include "platform/report/PageDocument.h"

#include <QAbstractScrollArea>
#include <QCache>
#include <QPixmap>

namespace platform {

enum class ZoomMode { Free, FitWidth, FitPage };

class PageView : public QAbstractScrollArea {
    Q_OBJECT
public:
    /// The document outlives the view and may grow; call pagesAdded then.
    explicit PageView(const PageDocument& document, QWidget* parent = nullptr);

    void pagesAdded();
    int pageCount() const { return static_cast<int>(m_document.pages.size()); }
    /// The page in the middle of the view, from 0; -1 without pages.
    int currentPage() const;
    void goToPage(int page);

    ZoomMode zoomMode() const { return m_mode; }
    void setZoomMode(ZoomMode mode);
    /// 1 is the paper's own size on a screen of 96 dots to the inch.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    void zoomIn();
    void zoomOut();

    /// Marks an item and brings it into view; page -1 takes the mark away.
    void mark(int page, const QRect& twips);

signals:
    void pageChanged(int page);
    void zoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    QSizeF pageSize() const;
    double pitch() const;
    /// Top left of a page in the viewport.
    QPointF pagePlace(int page) const;
    void applyZoom(double zoom, QPointF anchor);
    void updateScrollBars();
    double fittingZoom() const;
    QPixmap picture(int page);
    void paintPaper(QPainter& painter, int page, const QRectF& paper);
    void paintMark(QPainter& painter, QPointF paper);

    const PageDocument& m_document;
    ZoomMode m_mode = ZoomMode::FitPage;
    double m_zoom = 1;
    int m_lastPage = -1;
    int m_markedPage = -1;
    QRect m_mark;
    QCache<int, QPixmap> m_pictures;
};

}  // namespace platform
