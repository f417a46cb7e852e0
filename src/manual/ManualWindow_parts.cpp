// What the window of the manual is made of, and its keys.
#include "manual/HitDelegate.h"
#include "manual/ManualView.h"
#include "manual/ManualWindow.h"
#include "platform/widgets/FocusMark.h"
#include "platform/widgets/SearchBox.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

using platform::grid;

constexpr double zoomStep = 1.1;
constexpr QSize firstSize(132 * grid, 92 * grid);
constexpr int sideWidth = 36 * grid, wordsWidth = 32 * grid, rowHeight = 28;

}  // namespace

void ManualWindow::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buildBar());
    m_parts = new QSplitter(this);
    m_parts->setChildrenCollapsible(false);
    m_parts->setHandleWidth(1);
    m_parts->addWidget(buildSide());
    m_parts->addWidget(buildPage());
    m_parts->setStretchFactor(1, 1);
    m_parts->setSizes({sideWidth, firstSize.width() - sideWidth});
    column->addWidget(m_parts, 1);
    const QSize room = screen() ? screen()->availableSize() : firstSize;
    resize(firstSize.boundedTo(room - QSize(6 * grid, 8 * grid)));
    setMinimumSize(60 * grid, 40 * grid);
}

QToolButton* ManualWindow::addButton(QWidget& bar, const char* name, const char* icon, const QString& text) {
    auto* button = new QToolButton(&bar);
    button->setObjectName(QLatin1String(name));
    button->setIcon(platform::icon(QLatin1String(icon)));
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setAutoRaise(true);
    bar.layout()->addWidget(button);
    return button;
}

QWidget* ManualWindow::buildBar() {
    auto* bar = new QWidget(this);
    platform::makeBar(*bar, Qt::BottomEdge);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(grid, grid / 2, 2 * grid, grid / 2);
    row->setSpacing(grid / 2);
    m_back = addButton(*bar, "cmdBack", "left", translated(u"Back"_s));
    m_forward = addButton(*bar, "cmdForward", "right", translated(u"Forward"_s));
    row->addSpacing(grid);
    m_words = new QLineEdit(bar);
    m_words->setObjectName(u"txtManualSearch"_s);
    m_words->setPlaceholderText(translated(u"Search the manual"_s));
    m_words->setAccessibleName(m_words->placeholderText());
    platform::addClearButton(*m_words);
    m_words->setFixedWidth(wordsWidth);
    row->addWidget(m_words);
    row->addSpacing(grid);
    m_count = new QLabel(bar);
    m_count->setObjectName(u"lblManualCount"_s);
    platform::setLook(*m_count, "quiet");
    row->addWidget(m_count);
    row->addStretch();
    auto* smaller = addButton(*bar, "cmdSmaller", "zoomout", translated(u"Smaller"_s));
    auto* larger = addButton(*bar, "cmdLarger", "zoomin", translated(u"Larger"_s));
    connect(m_back, &QToolButton::clicked, this, [this] { goBy(-1); });
    connect(m_forward, &QToolButton::clicked, this, [this] { goBy(1); });
    connect(smaller, &QToolButton::clicked, this, [this] { setZoom(m_view->zoom() / zoomStep); });
    connect(larger, &QToolButton::clicked, this, [this] { setZoom(m_view->zoom() * zoomStep); });
    connect(m_words, &QLineEdit::textChanged, this, &ManualWindow::search);
    connect(m_words, &QLineEdit::returnPressed, this, [this] { openHit(m_list->currentRow()); });
    return bar;
}

QWidget* ManualWindow::buildSide() {
    m_contents = new QTreeWidget(this);
    m_contents->setObjectName(u"treContents"_s);
    m_contents->setAccessibleName(translated(u"Contents"_s));
    m_contents->setHeaderHidden(true);
    m_contents->setFrameShape(QFrame::NoFrame);
    m_contents->setIndentation(2 * grid);
    m_contents->setTextElideMode(Qt::ElideRight);
    new platform::FocusMark(*m_contents);
    m_list = new QListWidget(this);
    m_list->setObjectName(u"lstHits"_s);
    m_list->setAccessibleName(translated(u"Places found"_s));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setItemDelegate(new HitDelegate(m_list));
    m_list->setResizeMode(QListView::Adjust);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    new platform::FocusMark(*m_list);
    m_side = new QStackedWidget(this);
    m_side->addWidget(m_contents);
    m_side->addWidget(m_list);
    m_side->setMinimumWidth(20 * grid);
    connect(m_contents, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { openItem(item); });
    connect(m_contents, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { openItem(item); });
    connect(m_list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { openHit(m_list->row(item)); });
    connect(m_list, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { openHit(m_list->row(item)); });
    return m_side;
}

QWidget* ManualWindow::buildPage() {
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_view = new ManualView(m_manual, page);
    m_view->setObjectName(u"txtManual"_s);
    new platform::FocusMark(*m_view);
    column->addWidget(m_view, 1);
    m_foot = new QWidget(page);
    platform::makeBar(*m_foot, Qt::TopEdge);
    auto* row = new QHBoxLayout(m_foot);
    row->setContentsMargins(2 * grid, grid / 2, 2 * grid, grid / 2);
    row->addWidget(new QLabel(translated(u"Outside the manual, and not opened from here:"_s), m_foot));
    m_address = new QLabel(m_foot);
    m_address->setObjectName(u"lblOutside"_s);
    m_address->setTextFormat(Qt::PlainText);
    m_address->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    row->addWidget(m_address, 1);
    auto* copy = new QPushButton(translated(u"Copy"_s), m_foot);
    copy->setObjectName(u"cmdCopyOutside"_s);
    platform::setLook(*copy, "compact");
    row->addWidget(copy);
    m_foot->hide();
    column->addWidget(m_foot);
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(m_address->text()); });
    connect(m_view, &ManualView::outsideWanted, this, &ManualWindow::showOutside);
    connect(m_view, &ManualView::placeWanted, this, [this](const QString& name, const QString& anchor) {
        if (const ManualPage* wanted = m_manual.find(name))
            go(name, wanted->sectionOf(anchor));
    });
    return page;
}

void ManualWindow::addKey(const QKeySequence& keys, const std::function<void()>& act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
}

void ManualWindow::addKeys() {
    addKey(QKeySequence(u"Esc"_s), [this] { close(); });
    addKey(QKeySequence(u"Alt+Left"_s), [this] { goBy(-1); });
    addKey(QKeySequence(u"Alt+Right"_s), [this] { goBy(1); });
    addKey(QKeySequence(u"Ctrl+F"_s), [this] {
        m_words->setFocus(Qt::ShortcutFocusReason);
        m_words->selectAll();
    });
    addKey(QKeySequence(u"F6"_s), [this] { changePart(); });
    for (const char* keys : {"Ctrl++", "Ctrl+="})
        addKey(QKeySequence(QLatin1String(keys)), [this] { setZoom(m_view->zoom() * zoomStep); });
    addKey(QKeySequence(u"Ctrl+-"_s), [this] { setZoom(m_view->zoom() / zoomStep); });
    addKey(QKeySequence(u"Ctrl+0"_s), [this] { setZoom(1); });
}

// The headings below the titles follow: those of the page on show with it, the others while nothing else is to do.
void ManualWindow::fillContents() {
    for (const ManualPage& page : m_manual.pages()) {
        auto* line = new QTreeWidgetItem(m_contents, {page.title()});
        line->setSizeHint(0, QSize(0, rowHeight));
        line->setData(0, Qt::UserRole, page.name);
        line->setToolTip(0, page.title());
    }
    if (m_manual.pages().empty())
        m_view->setPlainText(translated(
            u"The manual is not there. It is installed with the program, beside its other files."_s));
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    m_filling.setSingleShot(true);
    connect(&m_filling, &QTimer::timeout, this, &ManualWindow::fillOn);
}

void ManualWindow::fillOn() {
    if (m_filled >= m_contents->topLevelItemCount())
        return;
    fillHeadings(*m_contents->topLevelItem(m_filled++));
    m_filling.start();
}

void ManualWindow::fillHeadings(QTreeWidgetItem& line) {
    const ManualPage* page = m_manual.find(line.data(0, Qt::UserRole).toString());
    if (!page || line.childCount() > 0)
        return;
    for (std::size_t i = 1; i < page->sections().size(); ++i) {
        const QString& heading = page->sections()[i].heading;
        auto* part = new QTreeWidgetItem(&line, {heading});
        part->setSizeHint(0, QSize(0, rowHeight));
        part->setData(0, Qt::UserRole, page->name);
        part->setData(0, Qt::UserRole + 1, static_cast<int>(i));
        part->setToolTip(0, heading);
    }
}

}  // namespace sorvanto
