// The window itself; ManualWindow_parts.cpp builds it.
#include "manual/ManualWindow.h"

#include "manual/HitDelegate.h"
#include "manual/ManualView.h"
#include "platform/basic/Folding.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/SettingsFile.h"
#include "platform/widgets/WindowState.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr std::size_t longestWay = 100;  // stops

}  // namespace

ManualWindow::ManualWindow(Manual manual, QWidget* parent)
    : QWidget(parent, Qt::Window), m_manual(std::move(manual)) {
    setObjectName(u"ManualWindow"_s);
    setWindowTitle(translated(u"Manual"_s));
    setProperty("ownsNoQuestion", true);
    build();
    addKeys();
    fillContents();
    restoreGeometry(platform::windowValue(u"manual/geometry"_s).toByteArray());
    m_parts->restoreState(platform::windowValue(u"manual/parts"_s).toByteArray());
    m_view->setZoom(platform::windowValue(u"manual/zoom"_s, 1.0).toDouble());
}

ManualWindow::~ManualWindow() = default;

void ManualWindow::open(const ManualPlace& place) {
    standAbove(QApplication::activeModalWidget());
    const bool was = isVisible();
    QWidget::show();
    if (isMinimized())
        showNormal();
    raise();
    activateWindow();
    const ManualPage* page = m_manual.find(place.page);
    if (page)
        go(page->name, page->sectionOf(place.anchor));
    else if (!m_manual.pages().empty())
        go(m_manual.pages().front().name, 0);
    if (!was)
        m_view->setFocus();
    m_filling.start();
}

// A modal window blocks all others but those that are transient for it. The desktop looks at that when a window is shown.
void ManualWindow::standAbove(QWidget* modal) {
    winId();
    if (windowHandle()->transientParent() == (modal && modal != this ? modal->windowHandle() : nullptr))
        return;
    hide();
    belongTo(modal);
}

void ManualWindow::belongTo(QWidget* modal) {
    if (m_modal)
        m_modal->removeEventFilter(this);
    m_modal = modal && modal != this && modal->windowHandle() ? modal : nullptr;
    if (m_modal)
        m_modal->installEventFilter(this);
    windowHandle()->setTransientParent(m_modal ? m_modal->windowHandle() : nullptr);
}

// A dialog that opens while the manual is read would block it. That one is on show by the next turn of the loop.
bool ManualWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) {
        const auto follow = [this] {
            if (isVisible())
                belongTo(QApplication::activeModalWidget());
        };
        QMetaObject::invokeMethod(this, follow, Qt::QueuedConnection);
    }
    return QWidget::event(event);
}

// It stays open when the window below is gone, beside the one that is modal then.
bool ManualWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_modal && event->type() == QEvent::Hide) {
        QWidget* next = QApplication::activeModalWidget();
        belongTo(next != m_modal ? next : nullptr);
    }
    return QWidget::eventFilter(watched, event);
}

void ManualWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    remember();
    if (m_modal)
        m_modal->activateWindow();
}

void ManualWindow::remember() const {
    platform::keepWindowValue(u"manual/geometry"_s, saveGeometry());
    platform::keepWindowValue(u"manual/parts"_s, m_parts->saveState());
    platform::keepWindowValue(u"manual/zoom"_s, m_view->zoom());
}

void ManualWindow::go(const QString& page, int section, const QStringList& words) {
    if (!m_stops.empty()) {
        m_stops[m_stop].section = m_view->sectionOnTop();
        m_stops.resize(m_stop + 1);
    }
    const bool same = !m_stops.empty() && m_stops.back().page == page && m_stops.back().section == section;
    if (!same)
        m_stops.push_back({page, section});
    if (m_stops.size() > longestWay)
        m_stops.erase(m_stops.begin());
    m_stop = m_stops.size() - 1;
    showStop(m_stops[m_stop], words);
}

void ManualWindow::goBy(int step) {
    const auto next = static_cast<std::ptrdiff_t>(m_stop) + step;
    if (next < 0 || next >= static_cast<std::ptrdiff_t>(m_stops.size()))
        return;
    m_stops[m_stop].section = m_view->sectionOnTop();
    m_stop = static_cast<std::size_t>(next);
    showStop(m_stops[m_stop]);
}

void ManualWindow::showStop(const Stop& stop, const QStringList& words) {
    const ManualPage* page = m_manual.find(stop.page);
    if (!page)
        return;
    m_foot->hide();
    m_view->showPage(*page, stop.section, words);
    m_view->setAccessibleName(page->title());
    m_back->setEnabled(m_stop > 0);
    m_forward->setEnabled(m_stop + 1 < m_stops.size());
    showPlace();
}

// The line of the contents that is on show; the others are folded.
void ManualWindow::showPlace() {
    const Stop& stop = m_stops[m_stop];
    for (int row = 0; row < m_contents->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = m_contents->topLevelItem(row);
        const bool shown = item->data(0, Qt::UserRole).toString() == stop.page;
        if (shown)
            fillHeadings(*item);
        item->setExpanded(shown);
        if (!shown)
            continue;
        QTreeWidgetItem* line = item;
        for (int i = 0; i < item->childCount(); ++i) {
            if (item->child(i)->data(0, Qt::UserRole + 1).toInt() <= stop.section)
                line = item->child(i);
        }
        m_contents->setCurrentItem(stop.section > 0 ? line : item);
    }
}

void ManualWindow::openItem(const QTreeWidgetItem* item) {
    if (item)
        go(item->data(0, Qt::UserRole).toString(), item->data(0, Qt::UserRole + 1).toInt());
}

void ManualWindow::search() {
    const QString words = m_words->text();
    m_hits = searchManual(m_manual, words);
    const bool searched = !platform::foldedWords(words).isEmpty();
    m_list->clear();
    for (const ManualHit& hit : m_hits) {
        auto* item = new QListWidgetItem(hit.heading, m_list);
        item->setData(HitDelegate::contextRole, hit.context);
        item->setData(Qt::AccessibleTextRole, hit.heading + u". "_s + hit.context);
        item->setToolTip(hit.section > 0 ? hit.title + u" · "_s + hit.heading : hit.title);
    }
    if (!m_hits.empty())
        m_list->setCurrentRow(0);
    const auto found = static_cast<std::int64_t>(m_hits.size());
    m_count->setText(!searched ? QString()
                     : found == 0
                         ? translated(u"Nothing found"_s)
                         : platform::counted(translated(u"%1 place found | %1 places found"_s), found));
    m_side->setCurrentIndex(searched ? 1 : 0);
    if (!searched)
        m_view->mark({});
}

void ManualWindow::openHit(int row) {
    if (row < 0 || row >= static_cast<int>(m_hits.size()))
        return;
    const ManualHit& hit = m_hits[static_cast<std::size_t>(row)];
    go(hit.page, hit.section, platform::foldedWords(m_words->text()));
}

void ManualWindow::showOutside(const QString& address) {
    m_address->setText(address);
    m_address->setToolTip(address);
    m_foot->show();
}

// From the search to what it found or the contents, from there to the page, and back.
void ManualWindow::changePart() {
    if (m_words->hasFocus())
        m_side->currentWidget()->setFocus(Qt::TabFocusReason);
    else if (m_side->isAncestorOf(QApplication::focusWidget()))
        m_view->setFocus(Qt::TabFocusReason);
    else
        m_words->setFocus(Qt::TabFocusReason);
}

void ManualWindow::setZoom(double zoom) { m_view->setZoom(zoom); }

}  // namespace sorvanto
