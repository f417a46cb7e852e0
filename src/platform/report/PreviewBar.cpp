// Tools of the preview and the three boxes between them.
#include "platform/report/PreviewBar.h"

#include "platform/report/ReportHooks.h"
#include "platform/widgets/SearchBox.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QComboBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>
#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QWidget* gapOf(int width, QWidget* parent) {
    auto* gap = new QWidget(parent);
    if (width > 0)
        gap->setFixedWidth(width);
    else
        gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return gap;
}

}  // namespace

PreviewBar::PreviewBar(bool labelStock, QWidget* parent) : QToolBar(parent) {
    setObjectName(u"previewBar"_s);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(QSize(24, 24));
    print = tool("print", "print", QKeySequence::Print, "Print");
    savePdf = tool("savePdf", "pdf", QKeySequence::Save, "Save as PDF");
    if (labelStock)
        offset = tool("offset", "options", QKeySequence(u"Ctrl+L"_s), "Align labels");
    addSeparator();
    first = tool("first", "first", QKeySequence(u"Ctrl+Home"_s), "First page");
    previous = tool("previous", "previous", QKeySequence(u"Ctrl+PgUp"_s), "Previous page");
    addPageBox();
    next = tool("next", "next", QKeySequence(u"Ctrl+PgDown"_s), "Next page");
    last = tool("last", "last", QKeySequence(u"Ctrl+End"_s), "Last page");
    addSeparator();
    zoomOut = tool("zoomOut", "zoomout", QKeySequence::ZoomOut, "Smaller");
    addZoomBox();
    zoomIn = tool("zoomIn", "zoomin", QKeySequence::ZoomIn, "Larger");
    zoomIn->setShortcuts({QKeySequence::ZoomIn, QKeySequence(u"Ctrl+="_s)});
    fitWidth = tool("fitWidth", "fitwidth", QKeySequence(u"Ctrl+2"_s), "Fit the width");
    fitPage = tool("fitPage", "fitpage", QKeySequence(u"Ctrl+1"_s), "Fit the page");
    fitWidth->setCheckable(true);
    fitPage->setCheckable(true);
    addWidget(gapOf(0, this));
    addSearchBox();
    addWidget(gapOf(grid, this));
    close = tool("close", "close", QKeySequence(u"Ctrl+W"_s), "Close");
}

QAction* PreviewBar::tool(const char* name, const char* iconName, const QKeySequence& keys, const char* tip) {
    const QString text = reportText(tip);
    auto* action = new QAction(icon(QString::fromLatin1(iconName)), text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(keys);
    action->setToolTip(text + u"  "_s + keys.toString(QKeySequence::NativeText));
    addAction(action);
    QWidget* button = widgetForAction(action);
    button->setObjectName(QString::fromLatin1(name) + u"Button"_s);
    button->setAccessibleName(text);
    button->setFocusPolicy(Qt::TabFocus);
    button->setFixedSize(5 * grid - 2, 5 * grid - 2);
    return action;
}

void PreviewBar::addPageBox() {
    m_page = new QLineEdit(this);
    m_page->setObjectName(u"pageBox"_s);
    m_page->setAccessibleName(reportText("Page"));
    m_page->setToolTip(reportText("Go to page") + u"  "_s +
                       QKeySequence(u"Ctrl+G"_s).toString(QKeySequence::NativeText));
    m_page->setAlignment(Qt::AlignRight);
    m_page->setFixedWidth(7 * grid);
    m_page->setValidator(new QIntValidator(1, 999'999, m_page));
    m_count = new QLabel(this);
    m_count->setObjectName(u"pageCount"_s);
    m_count->setMinimumWidth(6 * grid);
    addWidget(gapOf(grid / 2, this));
    addWidget(m_page);
    addWidget(gapOf(grid, this));
    addWidget(m_count);
    connect(m_page, &QLineEdit::returnPressed, this, [this] { emit pageChosen(m_page->text().toInt() - 1); });
    auto* keys = new QShortcut(QKeySequence(u"Ctrl+G"_s), this);
    keys->setContext(Qt::WindowShortcut);
    connect(keys, &QShortcut::activated, this, [this] {
        m_page->setFocus(Qt::ShortcutFocusReason);
        m_page->selectAll();
    });
}

void PreviewBar::addZoomBox() {
    m_zoom = new QComboBox(this);
    m_zoom->setObjectName(u"zoomBox"_s);
    m_zoom->setAccessibleName(reportText("Zoom"));
    m_zoom->setToolTip(reportText("Zoom"));
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->setFixedWidth(12 * grid);
    for (const int percent : {25, 50, 75, 100, 125, 150, 200, 300, 400})
        m_zoom->addItem(u"%1 %"_s.arg(percent));
    addWidget(m_zoom);
    const auto choose = [this] {
        const double percent = m_zoom->currentText().remove('%'_L1).trimmed().toDouble();
        if (percent > 0)
            emit zoomChosen(percent / 100);
    };
    connect(m_zoom, &QComboBox::activated, this, choose);
    connect(m_zoom->lineEdit(), &QLineEdit::returnPressed, this, choose);
    auto* whole = new QShortcut(QKeySequence(u"Ctrl+0"_s), this);
    whole->setContext(Qt::WindowShortcut);
    connect(whole, &QShortcut::activated, this, [this] { emit zoomChosen(1.0); });
}

void PreviewBar::addSearchBox() {
    m_search = new QLineEdit(this);
    m_search->setObjectName(u"searchBox"_s);
    setLook(*m_search, "onBar");
    m_search->setAccessibleName(reportText("Find"));
    m_search->setPlaceholderText(reportText("Find"));
    m_search->setToolTip(reportText("Find on the pages") + u"  "_s +
                         QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText));
    addMagnifier(*m_search);
    addClearButton(*m_search);
    m_search->setMaximumWidth(28 * grid);
    addWidget(m_search);
    const auto onKeys = [this](const QKeySequence& keys, auto react) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WindowShortcut);
        connect(shortcut, &QShortcut::activated, this, react);
    };
    connect(m_search, &QLineEdit::returnPressed, this, [this] { emit findWanted(m_search->text(), false); });
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty())
            emit findWanted({}, false);
    });
    onKeys(QKeySequence::Find, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    onKeys(QKeySequence(u"F3"_s), [this] { emit findWanted(m_search->text(), false); });
    onKeys(QKeySequence(u"Shift+F3"_s), [this] { emit findWanted(m_search->text(), true); });
}

void PreviewBar::showPage(int page, int pageCount) {
    if (!m_page->hasFocus() || !m_page->isModified())
        m_page->setText(pageCount > 0 ? QString::number(page + 1) : QString());
    m_count->setText(reportText("of %1").arg(pageCount));
    first->setEnabled(page > 0);
    previous->setEnabled(page > 0);
    next->setEnabled(page + 1 < pageCount);
    last->setEnabled(page + 1 < pageCount);
}

void PreviewBar::showZoom(double zoom, bool fitsWidth, bool fitsPage) {
    m_zoom->setEditText(u"%1 %"_s.arg(std::lround(zoom * 100)));
    fitWidth->setChecked(fitsWidth);
    fitPage->setChecked(fitsPage);
}

void PreviewBar::showFound(bool found) {
    setLook(*m_search, "invalid", !found);
    m_search->setAccessibleDescription(found ? QString() : reportText("Not found"));
}

void PreviewBar::setOutputEnabled(bool on) {
    print->setEnabled(on);
    savePdf->setEnabled(on);
    if (offset)
        offset->setEnabled(on);
}

}  // namespace platform
