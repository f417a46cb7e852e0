// The model side of the bar. What is drawn of it follows the tools' actions and the signals of its parts.
#include "platform/widgets/CommandBar.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBarView.h"
#include "platform/widgets/HostArea.h"

#include <QMainWindow>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

template <class List>
auto& named(const List& list, const QString& name) {
    for (const auto& item : list)
        if (item->name() == name)
            return *item;
    throw RuntimeError(error::itemNotFound, u"The command bar has no item \"%1\""_s.arg(name));
}

}  // namespace

// Tool

Tool::Tool(Band& band, QString name, ToolKind kind) : m_band(band), m_name(std::move(name)), m_kind(kind) {
    m_action.setObjectName(m_name);
    m_action.setSeparator(kind == ToolKind::Separator);
    if (kind != ToolKind::Button && kind != ToolKind::MenuEntry)
        return;
    // An action changes its checked state with the click; a tool's is the program's.
    connect(&m_action, &QAction::triggered, this, [this](bool checked) {
        m_action.setChecked(m_action.isCheckable() && !checked);
        emit m_band.m_bar.toolClick(*this);
    });
}

void Tool::setToolTip(const QString& text) {
    m_toolTip = text;
    const QString keys = keysTool().m_action.shortcut().toString(QKeySequence::NativeText);
    m_action.setToolTip(text.isEmpty() || keys.isEmpty() ? text : u"%1 (%2)"_s.arg(text, keys));
}

void Tool::setChecked(bool on) {
    if (on)
        m_action.setCheckable(true);
    m_action.setChecked(on);
}

void Tool::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    emit textChanged(text);
}

QWidget* Tool::form() const { return m_form; }

void Tool::setForm(QWidget* form) {
    if (form == m_form)
        return;
    if (form)
        m_band.m_bar.takeForm(*form);
    m_form = form;
    emit formChanged();
}

// Band

Band::Band(CommandBar& bar, QString name, BandKind kind)
    : m_bar(bar), m_name(std::move(name)), m_kind(kind) {}

void Band::setVisible(bool on) {
    if (on == m_visible)
        return;
    m_visible = on;
    emit visibleChanged(on);
}

Tool& Band::tool(const QString& name) { return named(m_tools, name); }

Band& Band::childBand(const QString& name) { return named(m_children, name); }

Tool& Band::addTool(ToolKind kind, const QString& name, const QString& category, const QString& icon,
                    const QString& subBand, const QString& shortcut) {
    std::unique_ptr<Tool> tool(new Tool(*this, name, kind));
    tool->m_category = category;
    tool->m_icon = icon;
    tool->m_subBand = subBand;
    tool->m_action.setShortcuts(QKeySequence::listFromString(shortcut));
    return *m_tools.emplace_back(std::move(tool));
}

void Band::addSeparator() { addTool(ToolKind::Separator, {}); }

Band& Band::addChildBand(const QString& name) {
    return *m_children.emplace_back(std::unique_ptr<Band>(new Band(m_bar, name, BandKind::Host)));
}

// CommandBar

CommandBar::CommandBar(QObject* parent) : QObject(parent) {}

CommandBar::~CommandBar() = default;

Band& CommandBar::addBand(const QString& name, BandKind kind, const QString& caption) {
    Band& band = *m_bands.emplace_back(std::unique_ptr<Band>(new Band(*this, name, kind)));
    band.m_caption = caption;
    return band;
}

Band& CommandBar::band(const QString& name) { return named(m_bands, name); }

bool CommandBar::hasTool(const QString& name) const {
    return std::any_of(m_bands.begin(), m_bands.end(), [&name](const auto& band) {
        return std::any_of(band->m_tools.begin(), band->m_tools.end(),
                           [&name](const auto& tool) { return tool->name() == name; });
    });
}

void CommandBar::attach(QMainWindow& window, const QString& rightHostBand) {
    m_view = std::make_unique<View>(*this, window, rightHostBand);
}

void CommandBar::addStrip(QWidget& strip) { deref(m_view).addStrip(strip); }

void CommandBar::addAtEnd(const QString& name, QWidget& widget) {
    deref(m_view).addAtEnd(band(name), widget);
}

void CommandBar::setCompanion(QWidget& widget) { deref(m_view).hosts().setCompanion(widget); }

void CommandBar::showCompanion(Companion place) { deref(m_view).hosts().showCompanion(place); }

void CommandBar::recalcLayout() {
    if (m_view)
        m_view->layOut();
}

void CommandBar::click(Tool& tool) {
    if (!tool.enabled() || !tool.visible() || tool.kind() == ToolKind::Separator)
        return;
    if (tool.kind() == ToolKind::SubMenu)
        emit toolClick(tool);  // its action, triggered, opens the menu
    else
        tool.action().trigger();
}

void CommandBar::takeForm(const QWidget& form) {
    const auto release = [&form](Band& band) {
        for (const auto& tool : band.m_tools)
            if (tool->m_form == &form) {
                tool->m_form = nullptr;
                emit tool->formChanged();
            }
    };
    for (const auto& band : m_bands) {
        release(*band);
        for (const auto& child : band->m_children)
            release(*child);
    }
}

}  // namespace platform
