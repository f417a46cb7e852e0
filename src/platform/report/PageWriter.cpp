// Items of a page, one control after another.
#include "platform/report/PageWriter.h"

#include "platform/report/Clearance.h"
#include "platform/report/Code39.h"
#include "platform/report/ReportHooks.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
constexpr int footnoteHeight = 180;  // stands in the margin below the page
constexpr double footnotePoints = 7;
}  // namespace

PageWriter::PageWriter(const ReportDefinition& definition, PageDocument& document, TextMeasure& measure,
                       PageUse use)
    : m_definition(definition), m_document(document), m_fitting(measure), m_use(use) {
    for (const Section& section : definition.sections) {
        m_clear.push_back(clearances(section));
        m_styles.emplace_back(section.controls.size(), -1);
    }
}

void PageWriter::startPage() {
    m_page = {};
    m_page.items.reserve(m_lastItems);
    m_page.runs.reserve(m_lastRuns);
    m_footnote = false;
}

Page PageWriter::finishedPage() {
    if (m_footnote)
        addFootnote();
    m_lastItems = m_page.items.size();
    m_lastRuns = m_page.runs.size();
    m_page.items.shrink_to_fit();
    m_page.runs.shrink_to_fit();
    return std::exchange(m_page, {});
}

std::size_t PageWriter::indexOf(const Section& section) const {
    return static_cast<std::size_t>(&section - m_definition.sections.data());
}

PageBand PageWriter::bandAt(const Section& section, int x, int y, int column) const {
    PageBand band;
    band.section = static_cast<std::uint16_t>(indexOf(section));
    band.column = static_cast<std::uint16_t>(column);
    band.x = x;
    band.y = y;
    band.firstItem = static_cast<std::uint32_t>(m_page.items.size());
    return band;
}

void PageWriter::addSection(const Section& section, int x, int y, int column) {
    PageBand band = bandAt(section, x, y, column);
    const bool isLabel = m_definition.stock && section.kind == SectionKind::Detail;
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

void PageWriter::addPart(const Section& section, const GrownSection::Part& part, int y) {
    PageBand band = bandAt(section, m_definition.margins.left, y, 0);
    for (const GrownSection::Piece& piece : part.pieces)
        addPiece(section, piece, y + piece.top);
    band.itemCount = static_cast<std::uint32_t>(m_page.items.size()) - band.firstItem;
    if (!part.pieces.front().continued)  // what goes on from the page before belongs to no section of its own
        m_page.bands.push_back(band);
}

void PageWriter::addPiece(const Section& section, const GrownSection::Piece& piece, int y) {
    const Control& control = section.controls[piece.control];
    const int x = m_definition.margins.left + control.left;
    if (!piece.grown)
        return addItem(section, piece.control, x, y);
    PageItem item = itemOf(control, piece.control, styleOf(section, piece.control), x, y);
    item.height = std::max(piece.height, piece.continued ? 0 : control.height);
    if (piece.continued)
        item.text.clear();  // the text is said once, where it begins
    item.firstRun = static_cast<std::uint32_t>(m_page.runs.size());
    m_fitting.place(control, piece.lines, x, y, m_page.runs);
    item.runCount = static_cast<std::uint32_t>(m_page.runs.size()) - item.firstRun;
    m_page.items.push_back(std::move(item));
}

// The texts stay with their places, for the spreadsheet; the paper stays white.
void PageWriter::leaveLabelOut(const PageBand& band) {
    ++m_document.leftOutLabels;
    for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
        PageItem& item = m_page.items[i];
        item.runCount = 0;
        if (item.kind == ItemKind::BarCode)
            item.text.clear();
    }
}

/// Looked for once: a control keeps its style.
std::uint16_t PageWriter::styleOf(const Section& section, std::size_t index) {
    int& known = m_styles[indexOf(section)][index];
    if (known < 0)
        known = m_document.styleIndex(section.controls[index].style);
    return static_cast<std::uint16_t>(known);
}

PageItem PageWriter::itemOf(const Control& control, std::size_t index, std::uint16_t style, int x,
                            int y) const {
    PageItem item;
    item.kind = control.isText()                    ? ItemKind::Text
                : control.kind == ControlKind::Line ? ItemKind::Line
                : control.kind == ControlKind::Box  ? ItemKind::Box
                                                    : ItemKind::BarCode;
    item.style = item.drawn = style;
    item.control = static_cast<std::uint16_t>(index);
    item.x = x;
    item.y = y;
    item.width = control.width;
    item.height = control.height;
    item.text = control.text;
    return item;
}

void PageWriter::addItem(const Section& section, std::size_t index, int x, int y) {
    const Control& control = section.controls[index];
    PageItem item = itemOf(control, index, styleOf(section, index), x, y);
    if (item.kind == ItemKind::Text) {
        addText(control, item, m_clear[indexOf(section)][index]);
    } else if (item.kind == ItemKind::BarCode && !control.text.isEmpty() &&
               !Code39::fits(control.text, control.width)) {
        m_document.warn(WarningKind::NoBarCode, control);
        item.text.clear();
    }
    m_page.items.push_back(std::move(item));
}

void PageWriter::addText(const Control& control, PageItem& item, int clear) {
    if (control.value.isValid() && control.value.userType() != QMetaType::QString) {
        item.value = static_cast<std::int32_t>(m_page.values.size());
        m_page.values.push_back({control.value, control.format});
    }
    if (m_use == PageUse::CellsOnly)
        return;
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

void PageWriter::addFootnote() {
    Control note = label(u"footnote"_s, 0, 0, m_definition.printableWidth(), footnoteHeight,
                         reportText("#### stands for a value that has no room in its place."))
                       .font(m_definition.font.family, footnotePoints);
    PageItem item = itemOf(note, 0, m_document.styleIndex(note.style), m_definition.margins.left,
                           m_definition.paperHeight - m_definition.margins.bottom);
    addText(note, item, 0);
    m_page.items.push_back(std::move(item));
}

}  // namespace platform
