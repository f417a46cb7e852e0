// One run of a report: the report, its layout and the document that grows page by page.
#pragma once

#include "platform/report/PageMaker.h"

#include <functional>
#include <memory>
#include <utility>

namespace platform {

class ReportRun {
public:
    /// Takes the report over. A null measure stands for the fonts of the system.
    explicit ReportRun(std::unique_ptr<Report> report, std::unique_ptr<TextMeasure> measure = nullptr,
                       PageUse use = PageUse::Shown);
    ~ReportRun();

    /// Asked between the pieces of a page that takes long, of some milliseconds each; false cancels the run, and that page is
    /// not made.
    void setPace(std::function<bool()> goesOn) { m_measure->setPace(std::move(goesOn)); }
    /// Makes the next page; false when the report is over. An error of an event is thrown once; the pages
    /// before it stay.
    bool makePage();
    /// Makes all pages. The callback may end the run by giving false; gives whether the run came to its end.
    bool makeAll(const std::function<bool(double progress)>& go = {});
    /// Ends the run after the pages made so far.
    void cancel();

    bool isOver() const { return m_over; }
    bool wasCancelled() const { return m_cancelled; }
    /// Part of the rows that are through, 0 to 1; -1 where the report has no rows to count.
    double progress() const;
    const Report& report() const { return *m_report; }
    const PageDocument& document() const { return m_document; }
    /// The last page made leaves the document, which keeps its place.
    Page takePage();
    /// The pages made so far leave the document; only at the end of a run that nobody looks at any more.
    std::vector<Page> takePages() { return std::move(m_document.pages); }

private:
    std::unique_ptr<Report> m_report;
    std::unique_ptr<TextMeasure> m_measure;
    PageDocument m_document;
    PageMaker m_maker;
    bool m_over = false;
    bool m_cancelled = false;
};

}  // namespace platform
