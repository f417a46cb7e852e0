// Builds the window's side of each band once, then follows the tools' states.
#include "platform/widgets/CommandBarView.h"

#include "platform/widgets/BarButton.h"
#include "platform/widgets/HostArea.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace platform {

namespace {

constexpr QSize barButton{38, 38};
constexpr int barPicture = 22;
constexpr QSize sideButton{52, 52};
constexpr int sidePicture = 28;
constexpr int searchWidth = 210;
constexpr int enterKey = 13;
const QLatin1String searchBox("searchBox");

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
    qApp->installEventFilter(this);
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
    edit->setObjectName(searchBox);
    edit->setFixedWidth(searchWidth);
    edit->setFocusPolicy(Qt::ClickFocus);  // by mouse, its keys or F6; the Tab key stays in the screen
    connect(edit, &QLineEdit::textChanged, this, [&tool](const QString& text) { tool.m_text = text; });
    Shown& shown = m_shown[&tool];
    shown.edit = edit;
    shown.place = strip.addWidget(edit);
}

void CommandBar::View::buildSideBar(Band& band) {
    auto* frame = new QFrame(m_hosts);
    frame->setObjectName(QStringLiteral("sideBar"));
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

void CommandBar::View::addStrip(QWidget& strip) {
    m_hosts->addStrip(strip);
}

void CommandBar::View::focusText(Tool& tool) {
    if (QLineEdit* edit = m_shown[&tool].edit) {
        edit->setFocus(Qt::ShortcutFocusReason);
        edit->selectAll();
    }
}

// Keyboard: F6 from area to area, arrows along a bar

std::vector<QWidget*> CommandBar::View::areas() const {
    std::vector<QWidget*> result;
    for (const auto& [band, strip] : m_strips)
        result.push_back(strip);
    if (m_sideBar)
        result.push_back(m_sideBar);
    for (QWidget* page : m_hosts->findChildren<QWidget*>(QStringLiteral("hostPage")))
        result.push_back(page);
    result.push_back(m_hosts->findChild<QWidget*>(QStringLiteral("rightHost")));
    std::erase_if(result, [](const QWidget* area) { return !area->isVisible(); });
    return result;
}

void CommandBar::View::nextArea(bool backwards) {
    const auto all = areas();
    const auto count = static_cast<int>(all.size());
    const QWidget* focus = QApplication::focusWidget();
    int at = backwards ? 0 : -1;
    for (int i = 0; i < count; ++i)
        if (focus && all[i]->isAncestorOf(focus))
            at = i;
    for (int step = 1; step <= count; ++step) {
        const int next = ((at + (backwards ? -step : step)) % count + count) % count;
        for (QWidget* child : all[next]->findChildren<QWidget*>()) {
            const bool fits = qobject_cast<BarButton*>(child) || (child->focusPolicy() & Qt::TabFocus)
                              || child->objectName() == searchBox;
            if (fits && child->isEnabled() && child->isVisible()) {
                child->setFocus(Qt::TabFocusReason);
                return;
            }
        }
    }
}

void CommandBar::View::moveAlongBar(QWidget& from, int direction) {
    std::vector<BarButton*> buttons;
    for (auto* button : from.parentWidget()->findChildren<BarButton*>())
        if (button->isEnabled() && button->isVisible())
            buttons.push_back(button);
    const auto at = std::find(buttons.begin(), buttons.end(), &from) - buttons.begin();
    const auto next = at + direction;
    if (next >= 0 && next < static_cast<std::ptrdiff_t>(buttons.size()))
        buttons[next]->setFocus(Qt::TabFocusReason);
}

bool CommandBar::View::keyOnBar(QWidget& widget, int key) {
    switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveAlongBar(widget, 1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
        moveAlongBar(widget, -1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        static_cast<BarButton&>(widget).click();
        return true;
    default:
        return false;
    }
}

bool CommandBar::View::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (widget->window() != &m_window)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F6 && widget == QApplication::focusWidget()) {
        nextArea(key->modifiers() & Qt::ShiftModifier);
        return true;
    }
    if (qobject_cast<BarButton*>(widget))
        return keyOnBar(*widget, key->key());
    for (const auto& [tool, shown] : m_shown)
        if (shown.edit == widget) {
            emit m_bar.toolKeyPress(const_cast<Tool&>(*tool), keyCode(*key));
            break;
        }
    return false;
}

}  // namespace platform
