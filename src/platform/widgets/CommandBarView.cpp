// Builds the window's side of each band once; from then on all of it follows the tools' actions.
#include "platform/widgets/CommandBarView.h"

#include "platform/widgets/BarButton.h"
#include "platform/widgets/BarKeys.h"
#include "platform/widgets/BarTextBox.h"
#include "platform/widgets/HostArea.h"
#include "platform/widgets/Theme.h"

#include <QFrame>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr QSize barButton{38, 38};
constexpr int barPicture = 22;
constexpr QSize sideButton{52, 52};
constexpr int sidePicture = 28;

}  // namespace

CommandBar::View::View(CommandBar& bar, QMainWindow& window, const QString& rightHostBand)
    : m_bar(bar), m_window(window), m_rightBand(rightHostBand), m_hosts(new HostArea(&window)) {
    window.setCentralWidget(m_hosts);
    window.setContextMenuPolicy(Qt::NoContextMenu);
    for (const auto& band : bar.bands())
        build(*band);
    showHosts();
    new BarKeys(window, *m_hosts);
    connect(&window, &QObject::destroyed, &bar, [&bar] { bar.m_view.reset(); });
}

void CommandBar::View::build(Band& band) {
    switch (band.kind()) {
    case BandKind::MenuBar:
        buildMenuBar(band);
        break;
    case BandKind::ToolBar:
        buildToolBar(band);
        break;
    case BandKind::SideBar:
        buildSideBar(band);
        break;
    case BandKind::Host:
    case BandKind::Group:
        hostForms(band);
        break;
    case BandKind::Menu:
        break;  // made by what opens it
    }
    // On the window the keys reach a tool wherever it stands, and also where its band is hidden.
    for (const auto& tool : band.tools())
        if (!tool->action().shortcut().isEmpty())
            m_window.addAction(&tool->action());
}

// Menus

void CommandBar::View::buildMenuBar(Band& band) {
    for (const auto& tool : band.tools())
        m_window.menuBar()->addMenu(makeMenu(*tool, *m_window.menuBar()));
    connect(&band, &Band::visibleChanged, m_window.menuBar(), &QWidget::setVisible);
}

QMenu* CommandBar::View::makeMenu(Tool& opener, QWidget& parent) {
    auto* menu = new QMenu(&parent);
    menu->setObjectName(opener.name());
    for (const auto& tool : m_bar.band(opener.subBand()).tools()) {
        if (tool->kind() == ToolKind::SubMenu)
            makeMenu(*tool, *menu);
        menu->addAction(&tool->action());
    }
    opener.action().setMenu(menu);
    connect(menu, &QMenu::aboutToShow, &opener, [this, &opener] { m_bar.click(opener); });
    return menu;
}

// Tool bar and side bar

void CommandBar::View::buildToolBar(Band& band) {
    auto* strip = new QToolBar(&m_window);
    strip->setObjectName(band.name());
    strip->setMovable(false);
    strip->setFloatable(false);
    for (const auto& tool : band.tools())
        addToBar(*tool, *strip);
    connect(&band, &Band::visibleChanged, strip, &QWidget::setVisible);
    m_window.addToolBar(Qt::TopToolBarArea, strip);
    m_strips.push_back(strip);
}

void CommandBar::View::addToBar(Tool& tool, QToolBar& strip) {
    if (tool.kind() == ToolKind::Separator) {
        strip.addSeparator();
        return;
    }
    QAction* place = nullptr;
    if (tool.kind() == ToolKind::TextBox) {
        place = strip.addWidget(new BarTextBox(m_bar, tool, &strip));
    } else {
        tool.action().setIcon(icon(tool.icon()));
        if (tool.kind() == ToolKind::SubMenu)
            makeMenu(tool, strip);
        place = strip.addWidget(new BarButton(tool, barButton, barPicture, &strip));
    }
    // A tool bar shows and hides its widgets by actions of its own.
    const auto follow = [place, &tool] { place->setVisible(tool.visible()); };
    connect(&tool.action(), &QAction::visibleChanged, place, follow);
    follow();
}

void CommandBar::View::buildSideBar(Band& band) {
    auto* frame = new QFrame(m_hosts);
    frame->setObjectName(u"sideBar"_s);
    makeBar(*frame, Qt::RightEdge);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(0);
    for (const auto& tool : band.tools()) {
        if (tool->kind() == ToolKind::Separator) {
            column->addSpacing(4);
            continue;
        }
        QAction& action = tool->action();
        action.setCheckable(true);
        action.setIcon(icon(tool->icon(), theme().secondaryText));
        column->addWidget(new BarButton(*tool, sideButton, sidePicture, frame));
    }
    column->addStretch();
    connect(&band, &Band::visibleChanged, frame, &QWidget::setVisible);
    m_hosts->setSideBar(*frame);
}

// Hosted windows

void CommandBar::View::hostForms(Band& band) {
    connect(&band, &Band::visibleChanged, this, &View::showHosts);
    for (const auto& tool : band.tools()) {
        connect(tool.get(), &Tool::formChanged, this, &View::showHosts);
        connect(&tool->action(), &QAction::visibleChanged, this, &View::showHosts);
    }
    for (const auto& child : band.childBands())
        hostForms(*child);
}

void CommandBar::View::showHosts() {
    QWidget* middle = nullptr;
    QWidget* right = nullptr;
    for (const auto& band : m_bar.bands()) {
        for (const auto& child : band->childBands())
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
    for (QToolBar* strip : m_strips)
        strip->updateGeometry();
    showHosts();
}

void CommandBar::View::addStrip(QWidget& strip) { m_hosts->addStrip(strip); }

void CommandBar::View::addAtEnd(const Band& band, QWidget& widget) {
    for (QToolBar* strip : m_strips) {
        if (strip->objectName() != band.name())
            continue;
        auto* space = new QWidget(strip);
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        strip->addWidget(space);
        strip->addWidget(&widget);
    }
}
}  // namespace platform
