// The order of things on paper. Page one: report header, page header, group header, details, group footer,
// report footer, and at the foot the page footer; every later page: page header, what is left, page footer.
#include "platform/report/PageMaker.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
/// Twenty times the longest run of labels: a report that gets here has no end.
constexpr std::size_t mostPages = 65'535;
}  // namespace

PageMaker::PageMaker(Report& report, PageDocument& document, TextMeasure& measure, PageUse use)
    : m_report(report), m_document(document), m_measure(measure), m_use(use) {}

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
    m_document.fileName = m_report.fileName;
    m_stage = Stage::ReportHeader;
    m_writer.emplace(m_report.definition(), m_document, m_measure, m_use);
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
    m_writer->startPage();
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
        if (m_grown) {
            m_bodyEmpty = false;
            placeGrown();
        }
        while (Section* section = m_grown ? nullptr : upcoming()) {
            const bool detail = section->kind == SectionKind::Detail;
            const bool rowStart = !detail || m_column == 0;
            const bool full = m_y + section->height > bottom || (detail && m_report.startsPage());
            if (rowStart && !m_bodyEmpty && full)
                break;
            placeBody(*section);
        }
        if (Section* footer = m_report.section(SectionKind::PageFooter))
            place(*footer, m_report.definition().margins.left, bottom, 0);
    } catch (...) {
        m_document.pages.pop_back();
        throw;
    }
    m_document.pages.back() = m_writer->finishedPage();
    m_document.notes = m_report.notes();
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
    const bool first = std::exchange(m_bodyEmpty, false);
    const bool detail = section.kind == SectionKind::Detail;
    const auto grows = [](const Control& control) { return control.grows; };
    const bool canGrow = std::any_of(section.controls.begin(), section.controls.end(), grows) &&
                         (!detail || m_report.definition().detailColumns <= 1);
    if (detail && !canGrow)
        return placeDetail(section);
    m_report.bind(section);
    m_report.raiseFormat(section.kind);
    if (canGrow)
        m_grown = GrownSection::of(section, m_writer->fitting());
    m_grownSection = &section;
    if (!m_grown) {
        m_writer->addSection(section, m_report.definition().margins.left, m_y, 0);
        m_y += section.height;
        return endSection(section);
    }
    // A row goes to the next page whole, and is dealt out there only where it fills more than that.
    if (!detail || first || m_grown->height() <= bodyBottom() - m_y)
        placeGrown();
}

void PageMaker::placeGrown() {
    const GrownSection::Part part = m_grown->next(bodyBottom() - m_y);
    m_writer->addPart(*m_grownSection, part, m_y);
    m_y += part.height;
    if (m_grown->isOver()) {
        m_grown.reset();
        endSection(*m_grownSection);
    }
}

void PageMaker::endSection(const Section& section) {
    if (section.kind == SectionKind::Detail)
        advanceRow();
    else
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
    m_writer->addSection(section, x, y, column);
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
