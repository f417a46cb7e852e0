// The order of things on paper. Page one: report header, page header, group header, details, group footer,
// report footer, and at the foot the page footer; every later page: page header, what is left, page footer.
#include "platform/report/PageMaker.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/Clearance.h"
#include "platform/report/Code39.h"
#include "platform/report/ReportHooks.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
/// Twenty times the longest run of labels: a report that gets here has no end.
constexpr std::size_t mostPages = 65'535;
constexpr int footnoteHeight = 180;  // stands in the margin below the page
constexpr double footnotePoints = 7;
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
    for (const Section& section : m_report.definition().sections)
        m_clear.push_back(clearances(section));
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
    m_footnote = false;
    try {
        if (m_stage == Stage::ReportHeader) {
            placeIfAny(SectionKind::ReportHeader, m_y);
            m_stage = Stage::GroupHeader;
        }
        placeIfAny(SectionKind::PageHeader, m_y);
        m_bodyEmpty = true;
        const int bottom = bodyBottom();
        if (m_grown)
            placeGrown();
        while (Section* section = m_grown ? nullptr : upcoming()) {
            const bool rowStart = section->kind != SectionKind::Detail || m_column == 0;
            if (rowStart && !m_bodyEmpty && m_y + section->height > bottom)
                break;
            placeBody(*section);
        }
        if (Section* footer = m_report.section(SectionKind::PageFooter))
            place(*footer, m_report.definition().margins.left, bottom, 0);
        if (m_footnote)
            addFootnote();
    } catch (...) {
        m_document.pages.pop_back();
        throw;
    }
    m_page.items.shrink_to_fit();
    m_page.runs.shrink_to_fit();
    m_document.pages.back() = std::move(m_page);
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
    m_bodyEmpty = false;
    if (section.kind == SectionKind::Detail)
        return placeDetail(section);
    const auto grows = [](const Control& control) { return control.grows; };
    if (std::any_of(section.controls.begin(), section.controls.end(), grows)) {
        m_report.bind(section);
        m_report.raiseFormat(section.kind);
        m_grown = GrownSection::of(section, m_fitting);
        m_grownSection = &section;
        if (m_grown)
            return placeGrown();
        placeFormatted(section, m_report.definition().margins.left, m_y, 0);
    } else {
        place(section, m_report.definition().margins.left, m_y, 0);
    }
    m_y += section.height;
    toNextStage();
}

void PageMaker::placeGrown() {
    const Section& section = *m_grownSection;
    PageBand band = bandAt(section, m_report.definition().margins.left, m_y, 0);
    const GrownSection::Part part = m_grown->next(bodyBottom() - m_y);
    const bool begins = !part.pieces.front().continued;
    for (const GrownSection::Piece& piece : part.pieces)
        addPiece(piece, m_y + piece.top);
    band.itemCount = static_cast<std::uint32_t>(m_page.items.size()) - band.firstItem;
    if (begins)  // what goes on from the page before belongs to no section of its own
        m_page.bands.push_back(band);
    m_y += part.height;
    if (m_grown->isOver()) {
        m_grown.reset();
        toNextStage();
    }
}

void PageMaker::addPiece(const GrownSection::Piece& piece, int y) {
    const Control& control = m_grownSection->controls[piece.control];
    const int x = m_report.definition().margins.left + control.left;
    if (!piece.grown)
        return addItem(*m_grownSection, piece.control, x, y);
    PageItem item = itemOf(control, piece.control, x, y);
    item.height = std::max(piece.height, piece.continued ? 0 : control.height);
    if (piece.continued)
        item.text.clear();  // the text is said once, where it begins
    item.firstRun = static_cast<std::uint32_t>(m_page.runs.size());
    m_fitting.place(control, piece.lines, x, y, m_page.runs);
    item.runCount = static_cast<std::uint32_t>(m_page.runs.size()) - item.firstRun;
    m_page.items.push_back(std::move(item));
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
    placeFormatted(section, x, y, column);
}

PageBand PageMaker::bandAt(const Section& section, int x, int y, int column) const {
    PageBand band;
    band.section = static_cast<std::uint16_t>(&section - m_report.m_definition.sections.data());
    band.column = static_cast<std::uint16_t>(column);
    band.x = x;
    band.y = y;
    band.firstItem = static_cast<std::uint32_t>(m_page.items.size());
    return band;
}

void PageMaker::placeFormatted(const Section& section, int x, int y, int column) {
    PageBand band = bandAt(section, x, y, column);
    const bool isLabel = m_report.definition().stock && section.kind == SectionKind::Detail;
    m_hidden.clear();
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        if (section.controls[i].visible)
            addItem(section, i, x + section.controls[i].left, y + section.controls[i].top);
    }
    band.itemCount = static_cast<std::uint32_t>(m_page.items.size()) - band.firstItem;
    m_page.bands.push_back(band);
    if (isLabel && !m_hidden.empty())
        leaveLabelOut(band);
    for (const Control* control : m_hidden)
        m_document.warn(isLabel ? WarningKind::LabelLeftOut : WarningKind::ValueHidden, *control);
    m_footnote = m_footnote || (!isLabel && !m_hidden.empty());
}

// The texts stay with their places, for the spreadsheet; the paper stays white.
void PageMaker::leaveLabelOut(const PageBand& band) {
    ++m_document.leftOutLabels;
    for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
        PageItem& item = m_page.items[i];
        item.runCount = 0;
        if (item.kind == ItemKind::BarCode)
            item.text.clear();
    }
}

PageItem PageMaker::itemOf(const Control& control, std::size_t index, int x, int y) {
    PageItem item;
    item.kind = control.isText()                    ? ItemKind::Text
                : control.kind == ControlKind::Line ? ItemKind::Line
                : control.kind == ControlKind::Box  ? ItemKind::Box
                                                    : ItemKind::BarCode;
    item.style = item.drawn = m_document.styleIndex(control.style);
    item.control = static_cast<std::uint16_t>(index);
    item.x = x;
    item.y = y;
    item.width = control.width;
    item.height = control.height;
    item.text = control.text;
    return item;
}

void PageMaker::addItem(const Section& section, std::size_t index, int x, int y) {
    const Control& control = section.controls[index];
    PageItem item = itemOf(control, index, x, y);
    if (item.kind == ItemKind::Text) {
        const auto at = static_cast<std::size_t>(&section - m_report.m_definition.sections.data());
        addText(control, item, m_clear[at][index]);
    } else if (item.kind == ItemKind::BarCode && !control.text.isEmpty() &&
               !Code39::fits(control.text, control.width)) {
        m_document.warn(WarningKind::NoBarCode, control);
        item.text.clear();
    }
    m_page.items.push_back(std::move(item));
}

void PageMaker::addText(const Control& control, PageItem& item, int clear) {
    if (control.value.isValid() && control.value.userType() != QMetaType::QString) {
        item.value = static_cast<std::int32_t>(m_page.values.size());
        m_page.values.push_back({control.value, control.format});
    }
    item.firstRun = static_cast<std::uint32_t>(m_page.runs.size());
    const Fitted fitted = m_fitting.fit(control, item.x, item.y, clear, m_page.runs);
    item.runCount = static_cast<std::uint32_t>(m_page.runs.size()) - item.firstRun;
    if (fitted.points != control.style.points) {
        TextStyle style = control.style;
        style.points = fitted.points;
        item.drawn = m_document.styleIndex(style);
    }
    if (fitted.result == Fitted::Result::Shortened)
        m_document.warn(WarningKind::TextCut, control);
    else if (fitted.result == Fitted::Result::Smaller)
        ++m_document.smallerValues;
    else if (fitted.result == Fitted::Result::Hidden)
        m_hidden.push_back(&control);
}

void PageMaker::addFootnote() {
    const ReportDefinition& definition = m_report.definition();
    Control note = label(u"footnote"_s, 0, 0, definition.printableWidth(), footnoteHeight,
                         reportText("#### stands for a value that has no room in its place."))
                       .font(definition.font.family, footnotePoints);
    PageItem item =
        itemOf(note, 0, definition.margins.left, definition.paperHeight - definition.margins.bottom);
    addText(note, item, 0);
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
