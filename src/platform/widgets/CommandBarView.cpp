// Builds the window's side of each band once, then follows the tools' states.
#include "platform/widgets/CommandBarView.h"

#include "platform/widgets/BarButton.h"
#include "platform/widgets/BarKeys.h"
#include "platform/widgets/HostArea.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr QSize barButton{38, 38};
constexpr int barPicture = 22;
constexpr QSize sideButton{52, 52};
constexpr int sidePicture = 28;
constexpr int searchWidth = 210;
constexpr int enterKey = 13;

QString captionOf(CommandBar& bar, const Tool& tool) {
    if (!tool.caption().isEmpty() || tool.subBand().isEmpty())
        return tool.caption();
    return bar.band(tool.subBand()).caption();
}

/// The code a text box tool reports for a key: 13 for both Enter keys, else the character typed.
int keyCode(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return enterKey;
    return event.text().isEmpty() ? event.key() : event.text().front().unicode();
}

}  // namespace

CommandBar::View::View(CommandBar& bar, QMainWindow& window, const QString& rightHostBand)
    : m_bar(bar), m_window(window), m_rightBand(rightHostBand), m_hosts(new HostArea(&window)) {
    window.setCentralWidget(m_hosts);
    window.setContextMenuPolicy(Qt::NoContextMenu);
    for (const auto& band : bar.bands()) {
        if (band->kind() == BandKind::MenuBar)
            buildMenuBar(*band);
        else if (band->kind() == BandKind::ToolBar)
            buildToolBar(*band);
        else if (band->kind() == BandKind::SideBar)
            buildSideBar(*band);
        for (const auto& tool : band->tools())
            addKeys(*tool);
    }
    for (const auto& band : bar.bands())
        for (const auto& tool : band->tools())
            toolChanged(*tool);
    showHosts();
    new BarKeys(window, *m_hosts);
    connect(&window, &QObject::destroyed, &bar, [&bar] { bar.m_view.reset(); });
}

// Menus

void CommandBar::View::buildMenuBar(Band& band) {
    for (const auto& tool : band.tools())
        m_window.menuBar()->addMenu(makeMenu(*tool, *m_window.menuBar()));
}

QMenu* CommandBar::View::makeMenu(Tool& opener, QWidget& parent) {
    auto* menu = new QMenu(&parent);
    menu->setObjectName(opener.name());
    fillMenu(*menu, m_bar.band(opener.subBand()));
    m_shown[&opener].entries.push_back(menu->menuAction());
    connect(menu, &QMenu::aboutToShow, this, [this, &opener] { m_bar.click(opener); });
    return menu;
}

void CommandBar::View::fillMenu(QMenu& menu, Band& band) {
    for (const auto& each : band.tools()) {
        Tool& tool = *each;
        if (tool.kind() == ToolKind::Separator) {
            menu.addSeparator();
        } else if (tool.kind() == ToolKind::SubMenu) {
            menu.addMenu(makeMenu(tool, menu));
        } else {
            auto* entry = menu.addAction(QString());
            entry->setObjectName(tool.name());
            connect(entry, &QAction::triggered, this, [this, &tool] { m_bar.click(tool); });
            m_shown[&tool].entries.push_back(entry);
        }
    }
}

// Tool bar and side bar

void CommandBar::View::buildToolBar(Band& band) {
    auto* strip = new QToolBar(&m_window);
    strip->setObjectName(band.name());
    strip->setMovable(false);
    strip->setFloatable(false);
    for (const auto& each : band.tools()) {
        Tool& tool = *each;
        if (tool.kind() == ToolKind::Separator) {
            strip->addSeparator();
        } else if (tool.kind() == ToolKind::TextBox) {
            addTextBox(tool, *strip);
        } else {
            auto* button = new BarButton(tool, barButton, barPicture, strip);
            if (tool.kind() == ToolKind::SubMenu) {
                button->setMenu(makeMenu(tool, *button));
                button->setPopupMode(QToolButton::InstantPopup);
            } else {
                connect(button, &QToolButton::clicked, this, [this, &tool] { m_bar.click(tool); });
            }
            Shown& shown = m_shown[&tool];
            shown.button = button;
            shown.place = strip->addWidget(button);
        }
    }
    m_window.addToolBar(Qt::TopToolBarArea, strip);
    m_strips.emplace_back(&band, strip);
}

void CommandBar::View::addTextBox(Tool& tool, QToolBar& strip) {
    auto* edit = new QLineEdit(&strip);
    edit->setObjectName(BarKeys::textBoxName);
    edit->installEventFilter(this);
    edit->setFixedWidth(searchWidth);
    edit->setFocusPolicy(Qt::ClickFocus);  // by mouse, its keys or F6; the Tab key stays in the screen
    connect(edit, &QLineEdit::textChanged, this, [&tool](const QString& text) { tool.m_text = text; });
    Shown& shown = m_shown[&tool];
    shown.edit = edit;
    shown.place = strip.addWidget(edit);
}

void CommandBar::View::buildSideBar(Band& band) {
    auto* frame = new QFrame(m_hosts);
    frame->setObjectName(u"sideBar"_s);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(0);
    for (const auto& each : band.tools()) {
        Tool& tool = *each;
        if (tool.kind() == ToolKind::Separator) {
            column->addSpacing(4);
            continue;
        }
        auto* button = new BarButton(tool, sideButton, sidePicture, frame);
        button->setCheckable(true);
        button->setIcon(icon(tool.icon(), theme().secondaryText));
        connect(button, &QToolButton::clicked, this, [this, &tool] { m_bar.click(tool); });
        m_shown[&tool].button = button;
        column->addWidget(button);
    }
    column->addStretch();
    m_sideBar = frame;
    m_hosts->setSideBar(*frame);
}

// Keys

void CommandBar::View::addKeys(Tool& tool) {
    if (tool.shortcut().isEmpty())
        return;
    auto* action = new QAction(&m_window);
    action->setShortcuts(QKeySequence::listFromString(tool.shortcut()));
    connect(action, &QAction::triggered, this, [this, &tool] { m_bar.click(tool); });
    m_window.addAction(action);
    m_shown[&tool].keys = action;
}

// States

void CommandBar::View::toolChanged(Tool& tool) {
    if (tool.kind() == ToolKind::Host) {
        showHosts();
        return;
    }
    const auto found = m_shown.find(&tool);
    if (found == m_shown.end())
        return;
    const Shown& shown = found->second;
    for (const auto& entry : shown.entries) {
        entry->setText(captionOf(m_bar, tool));
        entry->setEnabled(tool.enabled());
        entry->setVisible(tool.visible());
        entry->setCheckable(tool.checked());
        entry->setChecked(tool.checked());
    }
    if (shown.place)
        shown.place->setVisible(tool.visible());
    if (shown.keys)
        shown.keys->setEnabled(tool.enabled() && tool.visible());
    if (shown.button) {
        shown.button->refresh();
        if (tool.checked() && !shown.button->isCheckable())
            shown.button->setCheckable(true);
        shown.button->setChecked(tool.checked());
    }
    if (shown.edit) {
        shown.edit->setEnabled(tool.enabled());
        shown.edit->setToolTip(tool.toolTip());
        shown.edit->setAccessibleName(plainTip(tool.toolTip().isEmpty() ? tool.caption() : tool.toolTip()));
        if (shown.edit->text() != tool.text())
            shown.edit->setText(tool.text());
    }
}

void CommandBar::View::bandChanged(Band& band) {
    for (const auto& [known, strip] : m_strips)
        if (known == &band)
            strip->setVisible(band.visible());
    if (band.kind() == BandKind::SideBar && m_sideBar)
        m_sideBar->setVisible(band.visible());
    if (band.kind() == BandKind::MenuBar)
        m_window.menuBar()->setVisible(band.visible());
    if (band.kind() == BandKind::Host)
        showHosts();
    for (const auto& [tool, shown] : m_shown)
        if (tool->subBand() == band.name())
            for (const auto& entry : shown.entries)
                entry->setText(captionOf(m_bar, *tool));
}

void CommandBar::View::showHosts() {
    QWidget* middle = nullptr;
    QWidget* right = nullptr;
    for (const auto& band : m_bar.bands()) {
        for (const auto& child : band->m_children)
            for (const auto& tool : child->tools())
                if (tool->form())
                    m_hosts->keep(*tool->form());
        if (band->kind() != BandKind::Host)
            continue;
        for (const auto& tool : band->tools()) {
            if (!tool->form())
                continue;
            const bool atRight = band->name() == m_rightBand;
            const bool shown = band->visible() && tool->visible();
            if (atRight && shown)
                right = tool->form();
            else if (!atRight && shown && !middle)
                middle = tool->form();
            else if (!atRight)
                m_hosts->keep(*tool->form());
        }
    }
    m_hosts->showInMiddle(middle);
    m_hosts->showAtRight(right);
}

void CommandBar::View::layOut() {
    for (const auto& [band, strip] : m_strips)
        strip->updateGeometry();
    showHosts();
}

void CommandBar::View::addStrip(QWidget& strip) { m_hosts->addStrip(strip); }

void CommandBar::View::addAtEnd(const Band& band, QWidget& widget) {
    for (const auto& [known, strip] : m_strips) {
        if (known != &band)
            continue;
        auto* space = new QWidget(strip);
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        strip->addWidget(space);
        strip->addWidget(&widget);
    }
}

void CommandBar::View::focusText(Tool& tool) {
    if (QLineEdit* edit = m_shown[&tool].edit) {
        edit->setFocus(Qt::ShortcutFocusReason);
        edit->selectAll();
    }
}

// What is typed into a text box of a tool bar

bool CommandBar::View::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    for (const auto& [tool, shown] : m_shown)
        if (shown.edit == watched) {
            emit m_bar.toolKeyPress(const_cast<Tool&>(*tool), keyCode(*static_cast<QKeyEvent*>(event)));
            break;
        }
    return false;
}

}  // namespace platform
