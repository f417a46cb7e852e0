// Choosing columns and rows.
#include "platform/report/SheetPlan.h"

#include <algorithm>

namespace platform {

namespace {
constexpr int lineHeight = 360;  // of the largest type of the reports
}

SheetPlan::SheetPlan(const ReportDefinition& definition) {
    chooseColumns(definition);
    for (const Section& section : definition.sections) {
        std::vector<CellPlace> places(section.controls.size());
        const std::vector<Line> all = lines(section);
        for (std::size_t row = 0; row < all.size(); ++row)
            assign(section, all[row], static_cast<int>(row), places);
        m_places.push_back(std::move(places));
        m_rows.push_back(static_cast<int>(all.size()));
    }
    findHeading(definition);
}

// The last line of a page or group header, where it is of labels alone and more than one.
void SheetPlan::findHeading(const ReportDefinition& definition) {
    if (definition.detailColumns > 1)
        return;
    for (std::size_t s = 0; s < definition.sections.size(); ++s) {
        const Section& section = definition.sections[s];
        const std::vector<Line> all = lines(section);
        if ((section.kind != SectionKind::PageHeader && section.kind != SectionKind::GroupHeader) ||
            all.empty() || all.back().size() < 2)
            continue;
        const Line& last = all.back();
        if (std::all_of(last.begin(), last.end(),
                        [&](int index) { return section.controls[index].kind == ControlKind::Label; }))
            m_heading = {static_cast<int>(s), static_cast<int>(all.size()) - 1,
                         m_places[s][last.front()].column, m_places[s][last.back()].column};
    }
}

std::vector<SheetPlan::Line> SheetPlan::lines(const Section& section) {
    Line order;
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        if (section.controls[i].isText())
            order.push_back(static_cast<int>(i));
    }
    const auto& controls = section.controls;
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return controls[a].top < controls[b].top; });
    std::vector<Line> all;
    int limit = 0;
    for (const int index : order) {
        const Control& control = controls[index];
        // A control that starts in the upper half of the line's first one, or of its first line, stands beside it.
        if (all.empty() || control.top >= limit) {
            all.emplace_back();
            limit = control.top + std::max(1, std::min(control.height, lineHeight) / 2);
        }
        all.back().push_back(index);
    }
    for (Line& line : all)
        std::stable_sort(line.begin(), line.end(),
                         [&](int a, int b) { return controls[a].left < controls[b].left; });
    return all;
}

void SheetPlan::chooseColumns(const ReportDefinition& definition) {
    Line widest;
    const Section* of = nullptr;
    for (const Section& section : definition.sections) {
        // The detail decides; without texts in it the fullest line of any section does.
        const bool outranks = section.kind == SectionKind::Detail;
        for (const Line& line : lines(section)) {
            const bool detailHeld = of && of->kind == SectionKind::Detail;
            if ((outranks && !detailHeld) || (outranks == detailHeld && line.size() > widest.size())) {
                widest = line;
                of = &section;
            }
        }
    }
    for (const int index : widest)
        m_columns.push_back({of->controls[index].left, of->controls[index].width});
    for (const Section& section : definition.sections) {
        for (const Line& line : lines(section))
            addColumnsBetween(section, line);
    }
    m_detailColumns = columns();
}

void SheetPlan::addColumnsBetween(const Section& section, const Line& line) {
    const auto stands = [&](const Column& column) {
        return std::any_of(line.begin(), line.end(),
                           [&](int index) { return section.controls[index].left == column.left; });
    };
    if (line.size() <= m_columns.size() || !std::all_of(m_columns.begin(), m_columns.end(), stands))
        return;
    std::vector<Column> all;
    for (const int index : line) {
        const Control& control = section.controls[index];
        const auto known = std::find_if(m_columns.begin(), m_columns.end(),
                                        [&](const Column& column) { return column.left == control.left; });
        all.push_back(known != m_columns.end() ? *known : Column{control.left, control.width});
    }
    m_columns = std::move(all);
}

int SheetPlan::nearestColumn(const Control& control) const {
    int inside = 0;
    while (inside + 1 < m_detailColumns && m_columns[inside + 1].left <= control.left)
        ++inside;
    if (inside + 1 == m_detailColumns || m_columns[inside].left == control.left)
        return inside;
    const int border = m_columns[inside + 1].left;
    const int right = control.left + control.width;
    const int here = std::min(border, right) - std::max(control.left, m_columns[inside].left);
    const int end = inside + 2 < m_detailColumns ? m_columns[inside + 2].left : right;
    const int there = std::min(end, right) - border;
    return there > here ? inside + 1 : inside;
}

void SheetPlan::assign(const Section& section, const Line& line, int row, std::vector<CellPlace>& places) {
    int next = 0;
    for (const int index : line) {
        const Control& control = section.controls[index];
        const int column = std::max(next, nearestColumn(control));
        if (column == columns())
            m_columns.push_back({control.left, control.width});
        else if (column >= m_detailColumns)
            m_columns[column].width = std::max(m_columns[column].width, control.width);
        places[index] = {row, column};
        next = column + 1;
    }
}

}  // namespace platform
