#include "reports/BatchSheet.h"

#include "platform/basic/Dates.h"
#include "reports/ReportTexts.h"
#include "reports/StoreBlock.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr QRgb titleGrey = 0xFFC0C0C0;
constexpr double captionPoints = 8.5, headPoints = 7.25, linePoints = 8.25, warningPoints = 8.25;

const char* const warning = "Appropriate References Should\n"
                            "Be Consulted.\n"
                            "Safety And Efficacy Of These\n"
                            "Formulas Are The Responsibility Of\n"
                            "The Compounding Pharmacist.\n";

platform::ReportDefinition sheet(const char* name, std::vector<platform::Section> sections) {
    platform::ReportDefinition definition;
    definition.name = QLatin1String(name);
    definition.margins = {360, 360, 360, 720};
    definition.font.points = 9;
    definition.sections = std::move(sections);
    return definition;
}

}  // namespace

BatchSheet::BatchSheet(Context& context, const char* name, std::vector<platform::Section> sections)
    : Report(sheet(name, std::move(sections))), m_context(context) {
    previewPlace = {0.8, 0.95, 50};
}

void BatchSheet::translateSheet(const char* titleKey, const char* quantityKey) {
    translateCaptions(*this, {
                                 {"txtTitle", titleKey},
                                 {"lblDateMade", "Date Made"},
                                 {"lblInitials", "Made by"},
                                 {"lblVerified", "Verified"},
                                 {"lblMakeQTY", quantityKey},
                                 {"lblfrm_Cost", "Cost"},
                                 {"lblfrm_AWP", "AWP"},
                                 {"lblIngredients", "Chemical Ingredients"},
                                 {"lblchm_Name", "Chemical"},
                                 {"lblchm_Form", "Form"},
                                 {"lblchm_QTY", "Quantity"},
                                 {"lblchm_Unit", "Units"},
                                 {"lblchm_Lot", "Lot #"},
                                 {"lblchm_Supplier", "Supplier"},
                                 {"lblchm_Cost", "Cost"},
                                 {"lblchm_Notes", "Notes"},
                                 {"lblfrm_Desc", "Description"},
                                 {"lblfrm_Instructions", "Instructions"},
                                 {"lbllog_Lot", "Lot #"},
                                 {"lblExpDate", "Exp. Date"},
                                 {"lblWarning", "Worksheet Warning"},
                             });
    translateStoreBlock(*this);
    caption = control(u"txtTitle"_s).text;
}

void BatchSheet::setLines(const platform::RecordsetPtr& lines) { setRows(lines ? lines->copy() : nullptr); }

bool BatchSheet::hasLine() const { return rows() && !rows()->eof() && !rows()->bof(); }

// The heading of a page reads the row that comes next, so the place is kept here.
void BatchSheet::fetchData(bool& eof) {
    eof = !rows() || ++m_line >= rows()->recordCount();
    if (!eof)
        rows()->setPosition(m_line);
}

void BatchSheet::pageHeaderFormat() {
    if (rows() && m_line < rows()->recordCount())
        rows()->setPosition(m_line);
    if (m_pageHeaderDone)
        return;
    m_pageHeaderDone = true;
    setValue(u"txtDate"_s, QDateTime(platform::now().date(), {}, Qt::UTC), u"MM-DD-YY"_s);
    fillPageHeader();
}

void BatchSheet::pageFooterFormat() { fillStoreBlock(m_context, *this); }

platform::Control sheetCaption(const char* name, int left, int top, int width, const char* text, int height) {
    return platform::label(QLatin1String(name), left, top, width, height, QLatin1String(text))
        .points(captionPoints)
        .bold();
}

platform::Section batchPageHeader(int height, std::vector<platform::Control> further) {
    std::vector<platform::Control> controls{
        platform::label(u"txtTitle"_s, 0, 0, 5130, 360)
            .points(15.75)
            .bold()
            .background(titleGrey)
            .indented(90),
        platform::field(u"txtDate"_s, 9630, 0, 1080, 270),
    };
    controls.insert(controls.end(), further.begin(), further.end());
    return {platform::SectionKind::PageHeader, height, std::move(controls)};
}

void addColumnHeads(std::vector<platform::Control>& controls, const ColumnEdges& edges) {
    const auto head = [&](const char* name, int left, int width, const char* text) -> platform::Control& {
        return controls.emplace_back(
            platform::label(QLatin1String(name), left, 1260, width, 180, QLatin1String(text))
                .points(headPoints)
                .bold());
    };
    head("lblchm_Name", edges.name, 1080, "Chemical Name");
    head("lblchm_Form", edges.form, 540, "Form");
    head("lblchm_QTY", edges.quantity, 810, "Quantity").right();
    head("lblchm_Unit", edges.unit, 540, "Units");
    head("lblchm_Lot", edges.lot, 540, "Lot #");
    head("lblchm_Supplier", edges.supplier, 990, "Supplier");
    head("lblchm_Cost", edges.cost, 720, "Est Cost");
    head("lblchm_Notes", edges.notes, 900, "Note");
    controls.push_back(platform::line(u"Line1"_s, 270, 1440, 11520));
}

platform::Section batchDetail(int height, std::vector<platform::Control> controls) {
    for (platform::Control& control : controls) {
        if (control.isText() && control.style.points == 0)
            control.points(linePoints);
    }
    return {platform::SectionKind::Detail, height, std::move(controls)};
}

platform::Section batchGroupFooter(int height, int instructionsTop) {
    return {platform::SectionKind::GroupFooter,
            height,
            {
                platform::line(u"Line3"_s, 180, 0, 11340),
                sheetCaption("lblfrm_Desc", 0, 180, 1170, "Description"),
                platform::field(u"txtfrm_Desc"_s, 1170, 180, 10080, 270).growing(),
                sheetCaption("lblfrm_Instructions", 0, instructionsTop, 1890, "Instructions"),
                platform::field(u"txtfrm_Instructions"_s, 90, instructionsTop + 270, 11340, 270).growing(),
            }};
}

platform::Section batchPageFooter(int height, std::vector<platform::Control> lotBlock) {
    std::vector<platform::Control> controls{platform::line(u"Line4"_s, 90, 90, 11340)};
    controls.insert(controls.end(), lotBlock.begin(), lotBlock.end());
    controls.push_back(
        platform::label(u"lblWarning"_s, 360, 630, 2970, 1440, QLatin1String(warning)).points(warningPoints));
    const std::vector<platform::Control> store = storeBlock(0, 0);
    controls.insert(controls.end(), store.begin(), store.end());
    return {platform::SectionKind::PageFooter, height, std::move(controls)};
}

}  // namespace sorvanto
