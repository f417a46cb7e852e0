#include "manual/ManualView.h"

#include "manual/ManualSearch.h"
#include "manual/ManualStyle.h"
#include "platform/widgets/Theme.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QImageReader>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFrame>
#include <QTextList>
#include <cmath>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

using platform::grid;

constexpr int lettersPerLine = 75;
constexpr double least = 0.6, most = 2.5;  // zoom
constexpr int leastMargin = 4 * grid;      // least room beside the text

std::vector<QTextBlock> headingsOf(const QTextDocument& document) {
    std::vector<QTextBlock> headings;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0)
            headings.push_back(block);
    }
    return headings;
}

double topOf(const QTextBlock& block) {
    return block.document()->documentLayout()->blockBoundingRect(block).top();
}

}  // namespace

ManualView::ManualView(const Manual& manual, QWidget* parent) : QTextBrowser(parent), m_manual(manual) {
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    // Else a long page would be laid out twice: its bar comes with its length, and takes of its width.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(this, &QTextBrowser::anchorClicked, this, &ManualView::follow);
}

void ManualView::showPage(const ManualPage& page, int section, const QStringList& words) {
    if (m_page != &page) {
        m_page = &page;
        render();
    }
    mark(words);
    goTo(section);
    bringFoundIntoView(section);
}

// Everything is done before the document has a layout, which would be made anew for each change.
void ManualView::render() {
    m_pictures.clear();
    const QPointer<QTextDocument> old = document();
    auto* page = new QTextDocument(this);
    page->setUndoRedoEnabled(false);
    page->setMarkdown(m_page->markdown);
    QFont letters = font();
    letters.setPointSizeF(m_zoom * QApplication::font().pointSizeF());
    styleManual(*page, letters);
    fit(*page);
    setDocument(page);
    delete old;  // unless it has gone by itself, as the view's first one does
    layOut();
}

// To its end, so that any place can be scrolled to; the bars have only seen the parts of it.
void ManualView::layOut() {
    document()->pageCount();
    auto* layout = document()->documentLayout();
    emit layout->documentSizeChanged(layout->documentSize());
}

// The root frame keeps the text in the middle; it can't be narrower than a word.
void ManualView::fit(QTextDocument& document) {
    const double room = viewport()->width();
    const double letters = QFontMetricsF(document.defaultFont()).averageCharWidth() * lettersPerLine;
    const double side = std::max<double>(leastMargin, std::floor((room - letters) / 2));
    QTextCursor all(&document);
    all.beginEditBlock();
    QTextFrameFormat frame = document.rootFrame()->frameFormat();
    frame.setMargin(0);
    frame.setLeftMargin(side);
    frame.setRightMargin(side + 1);  // a table is wider by its line
    frame.setTopMargin(leastMargin);
    frame.setBottomMargin(2 * leastMargin);
    document.rootFrame()->setFrameFormat(frame);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int indents = block.blockFormat().indent() + (block.textList() ? 1 : 0);
        fitPicture(block, room - 2 * side - 1 - indents * document.indentWidth());
    }
    all.endEditBlock();
}

// A picture, which a block has one of at most, is made smaller by us and not while it is drawn, where it would be
// coarse.
void ManualView::fitPicture(const QTextBlock& block, double width) {
    const auto at = block.text().indexOf(QChar::ObjectReplacementCharacter);
    if (at < 0)
        return;
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + static_cast<int>(at));
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    QTextImageFormat format = cursor.charFormat().toImageFormat();
    Picture& picture = pictureOf(format.name());
    const double shown = std::min<double>(picture.size.width(), std::max<double>(width, leastMargin));
    if (picture.size.isEmpty() || format.width() == shown)
        return;
    picture.width = static_cast<int>(shown * devicePixelRatioF());
    if (!picture.whole.isNull())  // else nobody has it in another width
        cursor.document()->addResource(QTextDocument::ImageResource, QUrl(format.name()), fitted(picture));
    format.setWidth(shown);
    format.setHeight(shown * picture.size.height() / picture.size.width());
    cursor.setCharFormat(format);
}

ManualView::Picture& ManualView::pictureOf(const QString& named) {
    auto found = m_pictures.find(named);
    if (found == m_pictures.end()) {
        const QString path = m_manual.picture(named);
        found = m_pictures.insert(named, {path.isEmpty() ? QSize() : QImageReader(path).size(), 0, {}});
    }
    return *found;
}

QImage ManualView::fitted(const Picture& picture) {
    return picture.width == 0 ? picture.whole
                              : picture.whole.scaledToWidth(picture.width, Qt::SmoothTransformation);
}

QVariant ManualView::loadResource(int type, const QUrl& name) {
    if (type != QTextDocument::ImageResource)
        return {};  // nothing else belongs to a page
    const QString named = name.toString();
    Picture& picture = pictureOf(named);
    // The files have few colors: made smaller among these alone, a picture would be speckled.
    if (picture.whole.isNull() && !picture.size.isEmpty())
        picture.whole = QImage(m_manual.picture(named)).convertToFormat(QImage::Format_ARGB32);
    return fitted(picture);
}

void ManualView::goTo(int section) {
    const auto headings = headingsOf(*document());
    const auto place = static_cast<std::size_t>(section);
    if (section <= 0 || place >= headings.size())
        return verticalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(static_cast<int>(topOf(headings[place])) - 2 * grid);
}

// The first of the marks in the section, where it lies below the window's end.
void ManualView::bringFoundIntoView(int section) {
    const auto headings = headingsOf(*document());
    const auto place = static_cast<std::size_t>(section);
    if (place >= headings.size())
        return;
    for (const ExtraSelection& found : extraSelections()) {
        if (found.cursor.position() < headings[place].position())
            continue;
        const double top = topOf(found.cursor.block());
        QScrollBar& bar = *verticalScrollBar();
        if (top > bar.value() + 0.8 * viewport()->height())
            bar.setValue(static_cast<int>(top) - viewport()->height() / 3);
        return;
    }
}

int ManualView::sectionOnTop() const {
    const auto headings = headingsOf(*document());
    const double top = verticalScrollBar()->value() + 4 * grid;
    int section = 0;
    for (std::size_t i = 0; i < headings.size() && topOf(headings[i]) <= top; ++i)
        section = static_cast<int>(i);
    return section;
}

void ManualView::mark(const QStringList& foldedWords) {
    QList<ExtraSelection> marks;
    for (QTextBlock block = document()->begin(); block.isValid() && !foldedWords.isEmpty();
         block = block.next()) {
        for (const TextStretch& stretch : stretchesOf(foldedWords, block.text())) {
            ExtraSelection found;
            found.cursor = QTextCursor(document());
            found.cursor.setPosition(block.position() + static_cast<int>(stretch.start));
            found.cursor.setPosition(block.position() + static_cast<int>(stretch.start + stretch.length),
                                     QTextCursor::KeepAnchor);
            found.format.setBackground(platform::theme().accent);
            found.format.setForeground(platform::theme().onFill);
            marks << found;
        }
    }
    setExtraSelections(marks);
}

void ManualView::setZoom(double zoom) {
    zoom = std::clamp(zoom, least, most);
    if (zoom == m_zoom)
        return;
    const int section = m_page ? sectionOnTop() : 0;
    m_zoom = zoom;
    if (!m_page)
        return;
    render();
    goTo(section);
}

void ManualView::resizeEvent(QResizeEvent* event) {
    const int section = m_page ? sectionOnTop() : 0;
    const bool wider = event->size().width() != event->oldSize().width();
    QTextBrowser::resizeEvent(event);
    if (!wider || !m_page)
        return;
    fit(*document());
    layOut();
    if (section > 0)
        goTo(section);
}

void ManualView::follow(const QUrl& link) {
    const QString address = link.toString();
    const ManualPlace place = ManualPlace::of(address);
    const QString page = place.page.isEmpty() && m_page ? m_page->name : place.page;
    if (m_manual.find(page))
        emit placeWanted(page, place.anchor);
    else
        emit outsideWanted(address);
}

}  // namespace sorvanto
