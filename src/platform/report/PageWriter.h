// Writes formatted sections onto a page: items at their places, texts as they fit, and what the reader must know.
#pragma once

#include "platform/report/GrownSection.h"
#include "platform/report/PageDocument.h"
#include "platform/report/TextFitting.h"

#include <vector>

namespace platform {

/// What the pages are for. Where nobody sees them, because a spreadsheet takes their texts into its own cells, no text
/// is fitted into its place.
enum class PageUse { Shown, CellsOnly };

class PageWriter {
public:
    /// All three outlive the writer; sections and controls of the definition stay at their places in it.
    PageWriter(const ReportDefinition& definition, PageDocument& document, TextMeasure& measure, PageUse use);

    TextFitting& fitting() { return m_fitting; }
    /// An empty page in the place of what was written.
    void startPage();
    /// The page, with its footnote.
    Page finishedPage();

    /// All that is visible of the section, with its top left at (x, y).
    void addSection(const Section& section, int x, int y, int column);
    /// A part of a section whose texts have grown, at the left margin.
    void addPart(const Section& section, const GrownSection::Part& part, int y);

private:
    /// A band that begins with the next item.
    PageBand bandAt(const Section& section, int x, int y, int column) const;
    void addPiece(const Section& section, const GrownSection::Piece& piece, int y);
    void leaveLabelOut(const PageBand& band);
    std::size_t indexOf(const Section& section) const;
    PageItem itemOf(const Control& control, std::size_t index, std::uint16_t style, int x, int y) const;
    std::uint16_t styleOf(const Section& section, std::size_t index);
    void addItem(const Section& section, std::size_t index, int x, int y);
    void addText(const Control& control, PageItem& item, int clear);
    void addFootnote();

    const ReportDefinition& m_definition;
    PageDocument& m_document;
    TextFitting m_fitting;
    PageUse m_use;
    Page m_page;
    std::size_t m_lastItems = 0, m_lastRuns = 0;  ///< of the page before, which the next is likely to be like
    std::vector<std::vector<int>> m_clear;        ///< by section and control: see clearances()
    std::vector<std::vector<int>> m_styles;  ///< of the document, by section and control; -1: not yet there
    std::vector<const Control*> m_hidden;    ///< values of the section being written that stand as "####"
    bool m_footnote = false;                 ///< the page has a value that stands as "####"
};

}  // namespace platform
