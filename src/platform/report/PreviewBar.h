// The tool bar of the preview: printing, pages, zoom and search, each with a shortcut and a tip.
#pragma once

#include <QToolBar>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;

namespace platform {

class PreviewBar : public QToolBar {
    Q_OBJECT
public:
    /// Label stock adds the tool for a printer's offset.
    PreviewBar(bool labelStock, QWidget* parent);

    void showPage(int page, int pageCount);
    void showZoom(double zoom, bool fitsWidth, bool fitsPage);
    void showFound(bool found);
    /// While something is being printed or saved only the view can be used.
    void setOutputEnabled(bool on);

    QAction *print, *savePdf, *offset = nullptr, *first, *previous, *next, *last, *zoomIn, *zoomOut,
                              *fitWidth, *fitPage, *close;

signals:
    void pageChosen(int page);
    void zoomChosen(double zoom);
    void findWanted(const QString& words, bool backward);

private:
    QAction* tool(const char* name, const char* iconName, const QKeySequence& keys, const char* tip);
    void addPageBox();
    void addZoomBox();
    void addSearchBox();

    QLineEdit* m_page;
    QLabel* m_count;
    QComboBox* m_zoom;
    QLineEdit* m_search;
};

}  // namespace platform
