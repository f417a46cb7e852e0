// Layout: places the sections of a report page by page. Asks for nothing but the report and a font
// measure, and makes one page a call, so that the first can be seen before the last exists.
// The rules of the sections are those of the reports as they are documented, which no library follows.
#pragma once

#include "platform/report/PageWriter.h"
#include "platform/report/Report.h"

#include <optional>

namespace platform {

class PageMaker {
public:
    /// The report, the document and the measure outlive the maker.
    PageMaker(Report& report, PageDocument& document, TextMeasure& measure, PageUse use = PageUse::Shown);
    /// Runs the terminate event if the run has not come to its end.
    ~PageMaker();

    /// Adds the next page to the document; false when there is none. An event that throws ends the run:
    /// the unfinished page is dropped and the error passed on.
    bool makePage();
    /// Ends the run after the pages made so far.
    void end() noexcept;

private:
    enum class Stage { Start, ReportHeader, GroupHeader, Details, GroupFooter, ReportFooter, Over };

    void fillPage();
    void startRun();
    /// The section to be placed next in the body of the page, or none when all have been.
    Section* upcoming();
    void placeBody(Section& section);
    void placeDetail(Section& section);
    void placeIfAny(SectionKind kind, int y);
    /// Formats the section and adds its items at the place.
    void place(Section& section, int x, int y, int column);
    /// The next part of a section whose texts have grown.
    void placeGrown();
    void endSection(const Section& section);
    void fetch();
    void advanceRow();
    int bodyBottom();
    void toNextStage() { m_stage = static_cast<Stage>(static_cast<int>(m_stage) + 1); }

    Report& m_report;
    PageDocument& m_document;
    TextMeasure& m_measure;
    PageUse m_use;
    std::optional<PageWriter> m_writer;   ///< from the first page on
    std::optional<GrownSection> m_grown;  ///< what is left of a section that goes on over pages
    Section* m_grownSection = nullptr;
    std::vector<Section*> m_boundFooters;  ///< footers with bound fields: they show the last row
    Stage m_stage = Stage::Start;
    bool m_ended = false;
    bool m_eof = false;
    int m_y = 0;
    int m_column = 0;  ///< detail column that comes next
    bool m_bodyEmpty = true;
};

}  // namespace platform
