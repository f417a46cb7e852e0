// One page of the manual: text in lines of readable length, pictures no wider than these. It opens nothing by
// itself: a link within the manual is told, as is one that leads outside.
#pragma once

#include "manual/Manual.h"

#include <QHash>
#include <QImage>
#include <QTextBrowser>

namespace sorvanto {

class ManualView : public QTextBrowser {
    Q_OBJECT

public:
    explicit ManualView(const Manual& manual, QWidget* parent = nullptr);

    /// Shows the page from that section on; section 0 is its beginning. words: marked, folded; may be empty.
    void showPage(const ManualPage& page, int section, const QStringList& words = {});
    /// Marks the words on the page, none to take the marks away.
    void mark(const QStringList& foldedWords);
    const ManualPage* page() const { return m_page; }
    /// The section at the top of the window.
    int sectionOnTop() const;

    /// In parts of the program's own size.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom);

    QVariant loadResource(int type, const QUrl& name) override;

signals:
    void placeWanted(const QString& page, const QString& anchor);
    /// Neither a page nor an anchor of the manual.
    void outsideWanted(const QString& address);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void render();
    void layOut();
    /// Lets lines and pictures have their width in this window.
    void fit(QTextDocument& document);
    void fitPicture(const QTextBlock& block, double width);
    /// Read when it is first painted; until then its size is known.
    struct Picture {
        QSize size;
        int width = 0;  ///< in which it is painted, in pixels of the screen; 0: not known yet
        QImage whole;
    };
    Picture& pictureOf(const QString& named);
    static QImage fitted(const Picture& picture);
    void goTo(int section);
    void bringFoundIntoView(int section);
    void follow(const QUrl& link);

    const Manual& m_manual;
    const ManualPage* m_page = nullptr;
    double m_zoom = 1;
    QHash<QString, Picture> m_pictures;  ///< by the names on the page
};

}  // namespace sorvanto
