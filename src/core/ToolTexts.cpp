// One row a text, in the order in which a fresh language file gains them. A "&" marks the access key and
// is part of the text that is looked up.
#include "core/ToolTexts.h"

#include "platform/widgets/CommandBar.h"
#include "shared/Translator.h"

namespace sorvanto {
namespace {

enum class Field { ToolTip, Caption, BandCaption };

struct TextRow {
    const char* band;
    Field field;
    const char* tool;  ///< none for a band's own caption
    const char* english;
};

constexpr TextRow texts[] = {
    {"FormBar", Field::ToolTip, "cmdCurrent", "Current Formula"},
    {"FormBar", Field::ToolTip, "cmdFormulas", "Formulas"},
    {"FormBar", Field::ToolTip, "cmdChemicals", "Chemicals"},
    {"FormBar", Field::ToolTip, "cmdLogs", "Logs"},
    {"FormBar", Field::ToolTip, "cmdPatients", "Patients"},

    {"MainBar", Field::ToolTip, "cmdFirst", "First Record"},
    {"MainBar", Field::ToolTip, "cmdPrevious", "Previous Record"},
    {"MainBar", Field::ToolTip, "cmdNext", "Next Record"},
    {"MainBar", Field::ToolTip, "cmdLast", "Last Record"},
    {"MainBar", Field::ToolTip, "cmdEdit", "Edit Record"},
    {"MainBar", Field::ToolTip, "cmdSave", "Save Record"},
    {"MainBar", Field::ToolTip, "cmdCopy", "Copy Record"},
    {"MainBar", Field::ToolTip, "cmdCancel", "Cancel Edit"},
    {"MainBar", Field::ToolTip, "cmdNew", "New Record"},
    {"MainBar", Field::ToolTip, "cmdDelete", "Delete Record"},
    {"MainBar", Field::ToolTip, "cmdSearch", "Find"},
    {"MainBar", Field::ToolTip, "cmdPrint", "Print"},
    {"MainBar", Field::ToolTip, "cmdExport", "Export"},

    {"mnuPrint", Field::Caption, "mnuLabel", "&Label"},
    {"mnuPrint", Field::Caption, "mnuWorksheet", "&Worksheet"},
    {"mnuPrint", Field::Caption, "mnuFormulaLog", "&Formula Log"},
    {"mnuPrint", Field::Caption, "mnuReport", "&Report"},
    {"mnuPrint", Field::Caption, "mnuJarReport", "&Jar Report"},

    {"mnuExport", Field::Caption, "mnuLabelx", "&Label"},
    {"mnuExport", Field::Caption, "mnuWorksheetx", "&Worksheet"},
    {"mnuExport", Field::Caption, "mnuFormulaLogx", "&Formula Log"},
    {"mnuExport", Field::Caption, "mnuReportx", "&Report"},
    {"mnuExport", Field::Caption, "mnuJarReportx", "&Jar Report"},

    {"mnuForms", Field::Caption, "mnuCurrentFormula", "C&urrent Formula"},
    {"mnuForms", Field::Caption, "mnuFormulas", "&Formulas"},
    {"mnuForms", Field::Caption, "mnuChemicals", "&Chemicals"},
    {"mnuForms", Field::Caption, "mnuLogs", "&Logs"},
    {"mnuForms", Field::Caption, "mnuPatients", "&Patients"},

    {"MainBar", Field::ToolTip, "cmdMake", "&Make Formula"},
    {"MainBar", Field::ToolTip, "cmdOptions", "&Options"},

    {"mnuFile", Field::BandCaption, nullptr, "&File"},
    {"mnuPrint", Field::BandCaption, nullptr, "&Print"},
    {"mnuExport", Field::BandCaption, nullptr, "&Export"},

    {"mnuFile", Field::Caption, "mnuPrint", "&Print"},
    {"mnuFile", Field::Caption, "mnuOptions", "&Options"},
    {"mnuFile", Field::Caption, "mnuExit", "E&xit"},
    {"mnuFile", Field::Caption, "mnuExport", "&Export"},

    {"mnuHelp", Field::BandCaption, nullptr, "&Help"},
    {"mnuHelp", Field::Caption, "mnuUpdate", "&Update Sorvanto"},
    {"mnuHelp", Field::Caption, "mnuAbout", "&About"},

    {"mnuMain", Field::Caption, "mnuFile", "&File"},
    {"mnuMain", Field::Caption, "mnuHelp", "&Help"},
    {"mnuMain", Field::Caption, "mnuActivities", "&Activities"},

    {"mnuHelp", Field::Caption, "mnuHealth", "&Health"},
    {"MainBar", Field::ToolTip, "txtSearch", "Find by name"},
    {"mnuForms", Field::Caption, "mnuTrace", "&Where Did It Go"},
    {"MainBar", Field::ToolTip, "cmdTrace", "Where Used"},
    {"mnuHelp", Field::Caption, "mnuManual", "&Manual"},
    {"mnuForms", Field::Caption, "mnuHistory", "&History"},
    {"MainBar", Field::ToolTip, "cmdNewLot", "New Lot"},
    {"mnuForms", Field::Caption, "mnuRecalculate", "&Recalculate"},
    {"MainBar", Field::ToolTip, "cmdImport", "Import prices"},
};

void put(platform::Band& band, const TextRow& row, const QString& text) {
    if (row.field == Field::BandCaption)
        return band.setCaption(text);
    auto& tool = band.tool(QString::fromLatin1(row.tool));
    if (row.field == Field::ToolTip)
        tool.setToolTip(text);
    else
        tool.setCaption(text);
}

}  // namespace

void translateTools(platform::CommandBar& bar) {
    for (const TextRow& row : texts)
        put(bar.band(QString::fromLatin1(row.band)), row, translated(QString::fromLatin1(row.english)));
}

}  // namespace sorvanto
