// The model side of the bar; every change is handed to the view, once there is one.
#include "platform/widgets/CommandBar.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBarView.h"
#include "platform/widgets/HostArea.h"

#include <QMainWindow>

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

Tool::Tool(Band& band, QString name, ToolKind kind) : m_band(band), m_name(std::move(name)), m_kind(kind) {}

void Tool::changed() { m_band.m_bar.toolChanged(*this); }

void Tool::setCaption(const QString& caption) {
    m_caption = caption;
    changed();
}

void Tool::setToolTip(const QString& text) {
    m_toolTip = text;
    changed();
}

void Tool::setEnabled(bool on) {
    if (on == m_enabled)
        return;
    m_enabled = on;
    changed();
}

void Tool::setChecked(bool on) {
    if (on == m_checked)
        return;
    m_checked = on;
    changed();
}

void Tool::setVisible(bool on) {
    if (on == m_visible)
        return;
    m_visible = on;
    changed();
}

void Tool::setMark(const QString& meaning) {
    if (meaning == m_mark)
        return;
    m_mark = meaning;
    changed();
}

QString Tool::text() const { return m_text; }

void Tool::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    changed();
}

QWidget* Tool::form() const { return m_form; }

void Tool::setForm(QWidget* form) {
    if (form == m_form)
        return;
    if (form)
        m_band.m_bar.takeForm(*form);
    m_form = form;
    changed();
}

// Band

Band::Band(CommandBar& bar, QString name, BandKind kind)
    : m_bar(bar), m_name(std::move(name)), m_kind(kind) {}

void Band::setCaption(const QString& caption) {
    m_caption = caption;
    m_bar.bandChanged(*this);
}

void Band::setVisible(bool on) {
    if (on == m_visible)
        return;
    m_visible = on;
    m_bar.bandChanged(*this);
}

Tool& Band::tool(const QString& name) { return named(m_tools, name); }

Band& Band::childBand(const QString& name) { return named(m_children, name); }

Tool& Band::addTool(ToolKind kind, const QString& name, const QString& category, const QString& icon,
                    const QString& subBand, const QString& shortcut) {
    std::unique_ptr<Tool> tool(new Tool(*this, name, kind));
    tool->m_category = category;
    tool->m_icon = icon;
    tool->m_subBand = subBand;
    tool->m_shortcut = shortcut;
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
    if (tool.kind() == ToolKind::TextBox) {
        if (m_view)
            m_view->focusText(tool);
        return;
    }
    emit toolClick(tool);
}

void CommandBar::takeForm(const QWidget& form) {
    const auto release = [&form](Band& band) {
        for (const auto& tool : band.m_tools)
            if (tool->m_form == &form) {
                tool->m_form = nullptr;
                tool->changed();
            }
    };
    for (const auto& band : m_bands) {
        release(*band);
        for (const auto& child : band->m_children)
            release(*child);
    }
}

void CommandBar::toolChanged(Tool& tool) {
    if (m_view)
        m_view->toolChanged(tool);
}

void CommandBar::bandChanged(Band& band) {
    if (m_view)
        m_view->bandChanged(band);
}

}  // namespace platform
