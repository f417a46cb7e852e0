// Where each text control of a report goes on a spreadsheet: columns follow the detail's fields and what stands
// between their headings, and each section takes as many rows as its controls stand in lines.
#pragma once

#include "platform/report/ReportDefinition.h"

#include <vector>

namespace platform {

struct CellPlace {
    int row = -1;  ///< within the section; -1: the control has no cell
    int column = 0;
};

/// The line of labels above the details, -1 where there is none.
struct HeadingPlace {
    int section = -1;
    int row = -1;  ///< within the section
    int firstColumn = 0, lastColumn = 0;
};

class SheetPlan {
public:
    explicit SheetPlan(const ReportDefinition& definition);

    CellPlace place(int section, int control) const { return m_places[section][control]; }
    int rows(int section) const { return m_rows[section]; }
    HeadingPlace heading() const { return m_heading; }
    /// Columns that one detail column takes.
    int columns() const { return static_cast<int>(m_columns.size()); }
    /// Width in twips.
    int columnWidth(int column) const { return m_columns[column].width; }

private:
    struct Column {
        int left, width;
    };
    using Line = std::vector<int>;  ///< indexes of controls side by side

    static std::vector<Line> lines(const Section& section);
    void chooseColumns(const ReportDefinition& definition);
    /// A line that has a control at every column's left edge and further ones between them (a heading over a
    /// blank to write on) adds columns of its own, so that values stay under their headings.
    void addColumnsBetween(const Section& section, const Line& line);
    void findHeading(const ReportDefinition& definition);
    void assign(const Section& section, const Line& line, int row, std::vector<CellPlace>& places);
    int nearestColumn(const Control& control) const;

    /// The detail's and its headings' from left to right, then any that other lines need.
    std::vector<Column> m_columns;
    int m_detailColumns = 0;  ///< how many of them are the detail's and its headings'
    std::vector<std::vector<CellPlace>> m_places;
    std::vector<int> m_rows;
    HeadingPlace m_heading;
};

}  // namespace platform
