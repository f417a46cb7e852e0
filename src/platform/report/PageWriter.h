// Writes formatted sections onto a page: items at their places, texts as they fit, and what the reader must know.
#pragma once

#include "platform/report/GrownSection.h"
#include "platform/report/PageDocument.h"
#include "platform/report/TextFitting.h"

#include <vector>

namespace platform {

class PageWriter {
public:
    /// All three outlive the writer; sections and controls of the definition stay at their places in it.
    PageWriter(const ReportDefinition& definition, PageDocument& document, TextMeasure& measure);

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
    PageItem itemOf(const Control& control, std::size_t index, int x, int y);
    void addItem(const Section& section, std::size_t index, int x, int y);
    void addText(const Control& control, PageItem& item, int clear);
    void addFootnote();

    const ReportDefinition& m_definition;
    PageDocument& m_document;
    TextFitting m_fitting;
    Page m_page;
    std::vector<std::vector<int>> m_clear;  ///< by section and control: see clearances()
    std::vector<const Control*> m_hidden;   ///< values of the section being written that stand as "####"
    bool m_footnote = false;                ///< the page has a value that stands as "####"
};

}  // namespace platform
