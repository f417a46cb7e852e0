// What the worksheet before a batch and the formula log after it have in common: page, captions, warning,
// store block, and the page header that is filled on the first page alone.
#pragma once

#include "platform/report/Report.h"

#include <QString>
#include <cstdint>

namespace sorvanto {

struct Context;

class BatchSheet : public platform::Report {
protected:
    /// The sections that are not the same on both sheets: from page header to page footer.
    BatchSheet(Context& context, const char* name, std::vector<platform::Section> sections);

    /// Captions that both sheets have, and the two that differ.
    void translateSheet(const char* titleKey, const char* quantityKey);
    /// The page header's own texts; called on the first page alone.
    virtual void fillPageHeader() = 0;
    /// Hands the lines over, standing on the first.
    void setLines(const platform::RecordsetPtr& lines);
    /// Whether the lines stand on a row.
    bool hasLine() const;

    void fetchData(bool& eof) override;
    void pageHeaderFormat() override;
    void pageFooterFormat() override;

    Context& m_context;

private:
    bool m_pageHeaderDone = false;
    std::int64_t m_line = -1;  ///< the line being printed, from 0
};

/// What a text keeps off a frame or off the number in front of it.
inline constexpr int textGap = 60;

/// A caption beside a value, of a line's height unless another is given.
platform::Control sheetCaption(const char* name, int left, int top, int width, const char* text,
                               int height = 270);

/// Title, date and the other controls at the head of the page; height of the section and its further
/// controls differ.
platform::Section batchPageHeader(int height, std::vector<platform::Control> further);

/// Captions of the ingredient columns at their left edges, and the rule below them.
struct ColumnEdges {
    int name, form, quantity, unit, lot, supplier, cost, notes;
};
void addColumnHeads(std::vector<platform::Control>& controls, const ColumnEdges& edges);

/// A line of the sheet, set in the lines' own size where a field has none.
platform::Section batchDetail(int height, std::vector<platform::Control> controls);

/// Description and instructions, the latter from the given top edge.
platform::Section batchGroupFooter(int height, int instructionsTop);

/// Rule, lot block, warning and store block.
platform::Section batchPageFooter(int height, std::vector<platform::Control> lotBlock);

}  // namespace sorvanto
