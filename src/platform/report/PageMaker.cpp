// The order of things on paper. Page one: report header, page header, group header, details, group footer,
// report footer, and at the foot the page footer; every later page: page header, what is left, page footer.
#include "platform/report/PageMaker.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/Code39.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
/// Twenty times the longest run of labels: a report that gets here has no end.
constexpr std::size_t mostPages = 65'535;
}  // namespace

PageMaker::PageMaker(Report& report, PageDocument& document, TextMeasure& measure)
    : m_report(report), m_document(document), m_fitting(measure) {}

PageMaker::~PageMaker() { end(); }

void PageMaker::end() noexcept {
    if (std::exchange(m_ended, true))
        return;
    try {
        m_report.terminate();
    } catch (...) {
        // The run has its error or its last page already; there is no one left to tell.
    }
}

bool PageMaker::makePage() {
    if (m_ended)
        return false;
    try {
        fillPage();
    } catch (...) {
        end();
        throw;
    }
    return true;
}

void PageMaker::startRun() {
    m_report.reportStart();
    m_document.definition = m_report.definition();
    m_document.caption = m_report.caption;
    m_stage = Stage::ReportHeader;
    for (const SectionKind kind : {SectionKind::GroupFooter, SectionKind::ReportFooter}) {
        Section* footer = m_report.section(kind);
        const auto isBound = [](const Control& control) { return !control.column.isEmpty(); };
        if (footer && std::any_of(footer->controls.begin(), footer->controls.end(), isBound))
            m_boundFooters.push_back(footer);
    }
    fetch();
}

void PageMaker::fillPage() {
    if (m_stage == Stage::Start)
        startRun();
    if (m_document.pages.size() >= mostPages)
        throw RuntimeError(error::overflow, u"Report %1 has no end"_s.arg(m_document.definition.name));
    m_page = {};
    // The page is in the document while it is being made, so that warnings name it; a failure drops it.
    m_document.pages.emplace_back();
    ++m_report.m_pageNumber;
    m_y = m_report.definition().margins.top;
    m_column = 0;
    try {
        if (m_stage == Stage::ReportHeader) {
            placeIfAny(SectionKind::ReportHeader, m_y);
            m_stage = Stage::GroupHeader;
        }
        placeIfAny(SectionKind::PageHeader, m_y);
        m_bodyEmpty = true;
        const int bottom = bodyBottom();
        while (Section* section = upcoming()) {
            const bool rowStart = section->kind != SectionKind::Detail || m_column == 0;
            if (rowStart && !m_bodyEmpty && m_y + section->height > bottom)
                break;
            placeBody(*section);
        }
        if (Section* footer = m_report.section(SectionKind::PageFooter))
            place(*footer, m_report.definition().margins.left, bottom, 0);
    } catch (...) {
        m_document.pages.pop_back();
        throw;
    }
    m_page.items.shrink_to_fit();
    m_page.runs.shrink_to_fit();
    m_document.pages.back() = std::move(m_page);
    if (!upcoming())
        end();
}

int PageMaker::bodyBottom() {
    const ReportDefinition& definition = m_report.definition();
    const Section* footer = m_report.section(SectionKind::PageFooter);
    return definition.paperHeight - definition.margins.bottom - (footer ? footer->height : 0);
}

Section* PageMaker::upcoming() {
    while (m_stage != Stage::Over) {
        Section* section = nullptr;
        switch (m_stage) {
        case Stage::GroupHeader:
            section = m_report.section(SectionKind::GroupHeader);
            break;
        case Stage::Details:
            section = m_eof ? nullptr : m_report.section(SectionKind::Detail);
            break;
        case Stage::GroupFooter:
            section = m_report.section(SectionKind::GroupFooter);
            break;
        case Stage::ReportFooter:
            section = m_report.section(SectionKind::ReportFooter);
            break;
        default:
            return nullptr;
        }
        if (section)
            return section;
        if (m_stage == Stage::ReportFooter)
            return nullptr;
        if (m_stage == Stage::Details && m_column > 0) {
            // A row of details that is not full still takes its height.
            m_y += m_report.section(SectionKind::Detail)->height;
            m_column = 0;
        }
        toNextStage();
    }
    return nullptr;
}

void PageMaker::placeBody(Section& section) {
    m_bodyEmpty = false;
    if (section.kind == SectionKind::Detail)
        return placeDetail(section);
    place(section, m_report.definition().margins.left, m_y, 0);
    m_y += section.height;
    toNextStage();
}

void PageMaker::placeDetail(Section& section) {
    const ReportDefinition& definition = m_report.definition();
    const int columns = std::max(1, definition.detailColumns);
    const int x = definition.margins.left + m_column * definition.printableWidth() / columns;
    place(section, x, m_y, m_column);
    if (++m_column == columns) {
        m_column = 0;
        m_y += section.height;
    }
    advanceRow();
}

void PageMaker::placeIfAny(SectionKind kind, int y) {
    if (Section* section = m_report.section(kind)) {
        place(*section, m_report.definition().margins.left, y, 0);
        m_y += section->height;
    }
}

void PageMaker::place(Section& section, int x, int y, int column) {
    m_report.bind(section);
    m_report.raiseFormat(section.kind);
    PageBand band;
    band.section = static_cast<std::uint16_t>(&section - m_report.m_definition.sections.data());
    band.column = static_cast<std::uint16_t>(column);
    band.x = x;
    band.y = y;
    band.firstItem = static_cast<std::uint32_t>(m_page.items.size());
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        if (section.controls[i].visible)
            addItem(section.controls[i], i, x + section.controls[i].left, y + section.controls[i].top);
    }
    band.itemCount = static_cast<std::uint32_t>(m_page.items.size()) - band.firstItem;
    m_page.bands.push_back(band);
}

void PageMaker::addItem(const Control& control, std::size_t index, int x, int y) {
    PageItem item;
    item.kind = control.isText()                    ? ItemKind::Text
                : control.kind == ControlKind::Line ? ItemKind::Line
                : control.kind == ControlKind::Box  ? ItemKind::Box
                                                    : ItemKind::BarCode;
    item.style = m_document.styleIndex(control.style);
    item.control = static_cast<std::uint16_t>(index);
    item.x = x;
    item.y = y;
    item.width = control.width;
    item.height = control.height;
    item.text = control.text;
    if (item.kind == ItemKind::Text) {
        if (control.value.isValid() && control.value.userType() != QMetaType::QString) {
            item.value = static_cast<std::int32_t>(m_page.values.size());
            m_page.values.push_back({control.value, control.format});
        }
        item.firstRun = static_cast<std::uint32_t>(m_page.runs.size());
        if (!m_fitting.fit(control, x, y, m_page.runs))
            m_document.warn(WarningKind::TextCut, control);
        item.runCount = static_cast<std::uint32_t>(m_page.runs.size()) - item.firstRun;
    } else if (item.kind == ItemKind::BarCode && !control.text.isEmpty() &&
               !Code39::fits(control.text, control.width)) {
        m_document.warn(WarningKind::NoBarCode, control);
        item.text.clear();
    }
    m_page.items.push_back(std::move(item));
}

void PageMaker::fetch() {
    const RecordsetPtr& rows = m_report.rows();
    m_eof = !rows || !rows->isOpen() || rows->eof();
    m_report.fetchData(m_eof);
}

void PageMaker::advanceRow() {
    const RecordsetPtr& rows = m_report.rows();
    if (rows && rows->isOpen() && !rows->eof()) {
        for (Section* footer : m_boundFooters)
            m_report.bind(*footer);
        rows->moveNext();
    }
    fetch();
}

}  // namespace platform
