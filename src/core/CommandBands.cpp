// The bar's content as data: one table of tools a band, read top to bottom in the order of the bar.
#include "core/CommandBands.h"

#include "platform/widgets/CommandBar.h"

#include <span>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Band;
using platform::BandKind;
using platform::CommandBar;
using platform::ToolKind;

/// One tool. A row without a name is a separator; a tool with a band of its own opens that band. No key may edit
/// text in a box on any desktop: those of Ctrl with Backspace, Delete, D, K, U, H, T, W, X, C, V, Y and Z do.
struct ToolRow {
    const char* name = nullptr;
    const char* category = nullptr;
    const char* caption = nullptr;
    const char* icon = nullptr;
    const char* subBand = nullptr;
    const char* shortcut = nullptr;
};
constexpr ToolRow separator{};

constexpr ToolRow mainBar[] = {
    {"cmdFirst", "Navigation", "First", "first", nullptr, "Alt+Home"},
    {"cmdPrevious", "Navigation", "Previous", "previous", nullptr, "Alt+Left"},
    {"cmdNext", "Navigation", "Next", "next", nullptr, "Alt+Right"},
    {"cmdLast", "Navigation", "Last", "last", nullptr, "Alt+End"},
    separator,
    {"cmdMake", "Forms", "Make", "make", nullptr, "Ctrl+M"},
    separator,
    {"cmdNew", "Editing", "New", "new", nullptr, "Ctrl+N"},
    {"cmdEdit", "Editing", "Edit", "edit", nullptr, "F2"},
    {"cmdSave", "Editing", "Save", "save", nullptr, "Ctrl+S"},
    {"cmdCopy", "Editing", "Copy", "copy", nullptr, "Ctrl+Shift+N"},
    {"cmdCancel", "Editing", "Cancel", "cancel", nullptr, "Shift+F2"},
    {"cmdDelete", "Editing", "Delete", "delete", nullptr, "Ctrl+Shift+D"},
    separator,
    {"cmdPrint", "Printing", "Print", "print", "mnuPrint"},
    separator,
    {"cmdSearch", "Navigation", "Find", "search"},
    {"txtSearch", "Navigation", nullptr, nullptr, nullptr, "Ctrl+F"},
    separator,
    {"cmdOptions", "Menus", "Options", "options"},
    separator,
    {"cmdExport", "Export", "Export", "export", "mnuExport"},
    separator,
    {"cmdTrace", "Menus", "Where Used", "trace"},
    {"cmdNewLot", "Menus", "New Lot", "newlot", nullptr, "Ctrl+Shift+L"},
    {"cmdImport", "Editing", "Import", "prices", nullptr, "Ctrl+I"},
};

constexpr ToolRow menuBar[] = {
    {"mnuFile", "Menus", "&File", nullptr, "mnuFile"},
    {"mnuActivities", "Menus", "&Activities", nullptr, "mnuForms"},
    {"mnuHelp", "Menus", "&Help", nullptr, "mnuHelp"},
};

constexpr ToolRow fileMenu[] = {
    {"mnuPrint", "Menus", "&Print", nullptr, "mnuPrint", "Ctrl+P"},    separator,
    {"mnuOptions", "Menus", "&Options", nullptr, nullptr, "Ctrl+,"},   separator,
    {"mnuExport", "Menus", "&Export", nullptr, "mnuExport", "Ctrl+E"}, separator,
    {"mnuExit", "Menus", "E&xit", nullptr, nullptr, "Ctrl+Q"},
};

constexpr ToolRow helpMenu[] = {
    {"mnuUpdate", "Menus", "&Update Sorvanto"},
    separator,
    {"mnuManual", "Menus", "&Manual", nullptr, nullptr, "F1"},
    separator,
    {"mnuHealth", "Menus", "&Health"},
    separator,
    {"mnuAbout", "Menus", "&About"},
};

constexpr ToolRow printMenu[] = {
    {"mnuWorksheet", "Printing", "&Worksheet"},
    separator,
    {"mnuReport", "Printing", "&Report"},
    separator,
    {"mnuLabel", "Printing", "&Label"},
    separator,
    {"mnuJarReport", "Printing", "&Jar Report"},
    separator,
    {"mnuFormulaLog", "Printing", "&Formula Log"},
};

constexpr ToolRow exportMenu[] = {
    {"mnuWorksheetx", "Export", "&Worksheet"},
    separator,
    {"mnuReportx", "Export", "&Report"},
    separator,
    {"mnuLabelx", "Export", "&Label"},
    separator,
    {"mnuJarReportx", "Export", "&Jar Report"},
    separator,
    {"mnuFormulaLogx", "Export", "&Formula Log"},
};

// Pictures with tips alone.
constexpr ToolRow formBar[] = {
    {"cmdCurrent", "Forms", nullptr, "current"},     separator,
    {"cmdFormulas", "Forms", nullptr, "formulas"},   separator,
    {"cmdChemicals", "Forms", nullptr, "chemicals"}, separator,
    {"cmdLogs", "Forms", nullptr, "logs"},           separator,
    {"cmdPatients", "Forms", nullptr, "patients"},
};

constexpr ToolRow formsMenu[] = {
    {"mnuCurrentFormula", "Forms", "C&urrent Formula", nullptr, nullptr, "Ctrl+1"},
    separator,
    {"mnuFormulas", "Forms", "&Formulas", nullptr, nullptr, "Ctrl+2"},
    separator,
    {"mnuChemicals", "Forms", "&Chemicals", nullptr, nullptr, "Ctrl+3"},
    separator,
    {"mnuLogs", "Forms", "&Logs", nullptr, nullptr, "Ctrl+4"},
    separator,
    {"mnuPatients", "Forms", "&Patients", nullptr, nullptr, "Ctrl+5"},
    separator,
    {"mnuTrace", "Menus", "&Where Did It Go", nullptr, nullptr, "Ctrl+6"},
    {"mnuHistory", "Menus", "&History", nullptr, nullptr, "Ctrl+7"},
    {"mnuRecalculate", "Menus", "&Recalculate", nullptr, nullptr, "Ctrl+8"},
};

/// Button and menu entry that do the same: the entry has the keys.
struct Twins {
    const char *buttonBand, *button, *menu, *entry;
};
constexpr Twins twins[] = {
    {"MainBar", "cmdPrint", "mnuFile", "mnuPrint"},
    {"MainBar", "cmdOptions", "mnuFile", "mnuOptions"},
    {"MainBar", "cmdExport", "mnuFile", "mnuExport"},
    {"FormBar", "cmdCurrent", "mnuForms", "mnuCurrentFormula"},
    {"FormBar", "cmdFormulas", "mnuForms", "mnuFormulas"},
    {"FormBar", "cmdChemicals", "mnuForms", "mnuChemicals"},
    {"FormBar", "cmdLogs", "mnuForms", "mnuLogs"},
    {"FormBar", "cmdPatients", "mnuForms", "mnuPatients"},
    {"MainBar", "cmdTrace", "mnuForms", "mnuTrace"},
};

ToolKind kindOf(const ToolRow& row, BandKind band) {
    if (band == BandKind::Host)
        return ToolKind::Host;
    if (row.subBand)
        return ToolKind::SubMenu;
    if (band == BandKind::Menu || band == BandKind::MenuBar)
        return ToolKind::MenuEntry;
    return qstrcmp(row.name, "txtSearch") == 0 ? ToolKind::TextBox : ToolKind::Button;
}

void fill(Band& band, std::span<const ToolRow> rows) {
    for (const ToolRow& row : rows) {
        if (!row.name) {
            band.addSeparator();
            continue;
        }
        auto& tool = band.addTool(kindOf(row, band.kind()), QString::fromLatin1(row.name),
                                  QString::fromLatin1(row.category), QString::fromLatin1(row.icon),
                                  QString::fromLatin1(row.subBand), QString::fromLatin1(row.shortcut));
        tool.setCaption(QString::fromLatin1(row.caption));
    }
}

/// A band that shows one window.
void addHost(Band& band, const QString& tool) { band.addTool(ToolKind::Host, tool, u"Forms"_s); }

void addFormsBand(CommandBar& bar) {
    auto& forms = bar.addBand(u"Forms"_s, BandKind::Group);
    forms.setVisible(false);
    constexpr const char* children[][2] = {{"Current", "frmCurrent"},
                                           {"Formulas", "frmFormula"},
                                           {"Chemicals", "frmChemical"},
                                           {"Logs", "frmLog"},
                                           {"Patients", "frmPatient"}};
    for (const auto& [child, tool] : children)
        addHost(forms.addChildBand(QString::fromLatin1(child)), QString::fromLatin1(tool));
}

void addScreenBand(CommandBar& bar, const char* name, const char* tool) {
    auto& band = bar.addBand(QString::fromLatin1(name), BandKind::Host);
    addHost(band, QString::fromLatin1(tool));
    band.setVisible(false);
}

}  // namespace

void buildCommandBands(CommandBar& bar) {
    const auto add = [&](const char* name, BandKind kind, const char* caption,
                         std::span<const ToolRow> tools) {
        fill(bar.addBand(QString::fromLatin1(name), kind, QString::fromLatin1(caption)), tools);
    };
    addHost(bar.addBand(u"Sorvanto"_s, BandKind::Host, u"Sorvanto Control Panel"_s), u"frmSorvanto"_s);
    addFormsBand(bar);
    add("MainBar", BandKind::ToolBar, "", mainBar);
    add("mnuMain", BandKind::MenuBar, "Main Menu", menuBar);
    add("mnuFile", BandKind::Menu, "&File", fileMenu);
    add("mnuHelp", BandKind::Menu, "&Help", helpMenu);
    add("mnuPrint", BandKind::Menu, "&Print", printMenu);
    add("FormBar", BandKind::SideBar, "", formBar);
    add("mnuForms", BandKind::Menu, "&Activities", formsMenu);
    addScreenBand(bar, "Formulas", "frmFormula");
    addScreenBand(bar, "CurrentFormula", "frmCurrent");
    addScreenBand(bar, "Chemicals", "frmChemical");
    addScreenBand(bar, "Logs", "frmLog");
    addScreenBand(bar, "Patients", "frmPatient");
    add("mnuExport", BandKind::Menu, "&Export", exportMenu);
    for (const Twins& twin : twins) {
        auto& entry = bar.band(QString::fromLatin1(twin.menu)).tool(QString::fromLatin1(twin.entry));
        bar.band(QString::fromLatin1(twin.buttonBand))
            .tool(QString::fromLatin1(twin.button))
            .setKeysOf(entry);
    }
}

}  // namespace sorvanto
