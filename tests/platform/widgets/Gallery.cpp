// Sample windows; texts are those of an everyday formula.
#include "Gallery.h"

#include "SampleRows.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/ReportList.h"
#include "platform/widgets/Theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace support {

using namespace platform;

namespace {

const char* const recordTools[][4] = {
    {"cmdFirst", "first", "First Record", ""},
    {"cmdPrevious", "previous", "Previous Record", ""},
    {"cmdNext", "next", "Next Record", ""},
    {"cmdLast", "last", "Last Record", ""},
    {"", "", "", ""},
    {"cmdMake", "make", "&Make Formula", "Ctrl+M"},
    {"", "", "", ""},
    {"cmdNew", "new", "New Record", "Ctrl+N"},
    {"cmdEdit", "edit", "Edit Record", "F2"},
    {"cmdSave", "save", "Save Record", "Ctrl+S"},
    {"cmdCopy", "copy", "Copy Record", ""},
    {"cmdCancel", "cancel", "Cancel Edit", ""},
    {"cmdDelete", "delete", "Delete Record", ""},
    {"", "", "", ""},
    {"cmdPrint", "print", "Print", ""},
    {"", "", "", ""},
    {"cmdSearch", "search", "Find", ""},
    {"txtSearch", "", "Find", "Ctrl+F"},
    {"", "", "", ""},
    {"cmdOptions", "options", "&Options", ""},
    {"", "", "", ""},
    {"cmdExport", "export", "Export", ""},
};

const char* const screens[][3] = {{"cmdCurrent", "current", "Current Formula"},
                                  {"cmdFormulas", "formulas", "Formulas"},
                                  {"cmdChemicals", "chemicals", "Chemicals"},
                                  {"cmdLogs", "logs", "Logs"},
                                  {"cmdPatients", "patients", "Patients"}};

void addMenus(CommandBar& bar) {
    const auto menu = [&bar](const char* band,
                             std::initializer_list<std::pair<const char*, const char*>> entries) {
        Band& made = bar.addBand(QLatin1String(band), BandKind::Menu);
        for (const auto& [name, caption] : entries) {
            if (made.tools().size() > 0)
                made.addSeparator();
            const bool opens = QLatin1String(name) == "mnuPrint"_L1;
            made.addTool(opens ? ToolKind::SubMenu : ToolKind::MenuEntry, QLatin1String(name), {}, {},
                         opens ? u"mnuPrint"_s : QString())
                .setCaption(QLatin1String(caption));
        }
    };
    Band& top = bar.addBand(u"mnuMain"_s, BandKind::MenuBar);
    top.addTool(ToolKind::SubMenu, "mnuFile", {}, {}, "mnuFile").setCaption("&File");
    top.addTool(ToolKind::SubMenu, "mnuActivities", {}, {}, "mnuForms").setCaption("&Activities");
    top.addTool(ToolKind::SubMenu, "mnuHelp", {}, {}, "mnuHelp").setCaption("&Help");
    menu("mnuFile", {{"mnuPrint", "&Print"}, {"mnuOptions", "&Options"}, {"mnuExit", "E&xit"}});
    menu("mnuForms", {{"mnuFormulas", "&Formulas"}, {"mnuChemicals", "&Chemicals"}});
    menu("mnuHelp", {{"mnuUpdate", "&Update Sorvanto"}, {"mnuAbout", "&About"}});
    menu("mnuPrint", {{"mnuWorksheet", "&Worksheet"}, {"mnuReport", "&Report"}, {"mnuLabel", "&Label"}});
    menu("mnuExport", {{"mnuWorksheetx", "&Worksheet"}, {"mnuReportx", "&Report"}});
}

}  // namespace

void buildSampleBar(CommandBar& bar) {
    bar.addBand("Panel", BandKind::Host).addTool(ToolKind::Host, "frmPanel");
    Band& forms = bar.addBand("Forms", BandKind::Group);
    forms.addChildBand("Formulas").addTool(ToolKind::Host, "frmFormula");
    forms.addChildBand("Chemicals").addTool(ToolKind::Host, "frmChemical");
    Band& main = bar.addBand("MainBar", BandKind::ToolBar);
    for (const auto& [name, picture, tip, keys] : recordTools) {
        const QString toolName = QLatin1String(name);
        if (toolName.isEmpty()) {
            main.addSeparator();
            continue;
        }
        const bool opens = toolName == "cmdPrint" || toolName == "cmdExport";
        const ToolKind kind = toolName == "txtSearch" ? ToolKind::TextBox
                              : opens                 ? ToolKind::SubMenu
                                                      : ToolKind::Button;
        main.addTool(kind, toolName, "Navigation", QLatin1String(picture),
                     opens ? toolName == "cmdPrint" ? "mnuPrint" : "mnuExport" : QString(),
                     QLatin1String(keys))
            .setToolTip(QLatin1String(tip));
    }
    addMenus(bar);
    Band& side = bar.addBand("FormBar", BandKind::SideBar);
    for (const auto& [name, picture, tip] : screens) {
        if (!side.tools().empty())
            side.addSeparator();
        side.addTool(ToolKind::Button, QLatin1String(name), "Forms", QLatin1String(picture))
            .setToolTip(QLatin1String(tip));
    }
    bar.addBand("Formulas", BandKind::Host).addTool(ToolKind::Host, "frmFormula");
    bar.addBand("Chemicals", BandKind::Host).addTool(ToolKind::Host, "frmChemical");
}

namespace {

QLabel* fieldLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    makeFieldLabel(*label);
    return label;
}

QFrame* generalCard(bool locked, bool german, QWidget* parent) {
    auto* card = new QFrame(parent);
    makeCard(*card);
    auto* cells = new QGridLayout(card);
    cells->setContentsMargins(20, 20, 20, 20);
    cells->setHorizontalSpacing(14);
    cells->setVerticalSpacing(12);
    cells->setColumnStretch(1, 1);
    cells->setColumnStretch(3, 1);
    const auto place = [&](int row, int column, const char* text, const char* translation, QWidget* box) {
        cells->addWidget(fieldLabel(QString::fromUtf8(german ? translation : text), card), row, column * 2,
                         Qt::AlignRight | Qt::AlignVCenter);
        cells->addWidget(box, row, column * 2 + 1);
        if (auto* lockable = dynamic_cast<Lockable*>(box))
            lockable->setReadOnlyBox(locked);
    };
    const auto text = [card](const char* value) {
        auto* box = new TextBox(card);
        box->setText(QLatin1String(value));
        return box;
    };
    const auto number = [card](const char* format, double value) {
        auto* box = new NumberBox(card);
        box->setFormats(QLatin1String(format), QLatin1String(format));
        box->setValue(value);
        return box;
    };
    auto* type = new ChoiceBox(card);
    type->addItems({"Combination", "Custom"});
    type->setListIndex(1);
    auto* jar = new ChoiceBox(card);
    jar->addItems({"100 ml", "300 ml"});
    jar->setBoxText(locked ? "100 ml" : "Select Jar Size");
    auto* date = new DateBox(card);
    date->setValue(QDateTime(QDate(2026, 3, 7), QTime(0, 0), Qt::UTC));
    place(0, 0, "Formula Name", "Bezeichnung der Rezeptur", text("Hydrocortisone 1% Cream"));
    place(0, 1, "Formula Type", "Zubereitungsart", type);
    place(1, 0, "Jar Size", "Gefäßgröße", jar);
    place(1, 1, "Description", "Beschreibung", text("Topical corticosteroid in vanishing base"));
    place(2, 0, "Quantity", "Gesamtmenge", number("####0", 100));
    place(2, 1, "Units", "Maßeinheiten", text("GMS"));
    place(3, 0, "Strength", "Wirkstoffkonzentration", text("1 %"));
    place(3, 1, "Birthdate", "Herstellungsdatum", date);
    place(4, 0, "Cost", "Einkaufspreis", number("$ ###,##0.00", 4.87));
    place(4, 1, "AWP", "Apothekenverkaufspreis", number("$ ###,##0.00", 1211.2));
    auto* notes = new MemoBox(card);
    notes->setText("Levigate the powder with a little glycerin.\nAdd half of the base, mix one programme, "
                   "scrape the jar, add the rest.");
    notes->setReadOnlyBox(locked);
    notes->setFixedHeight(76);
    cells->addWidget(fieldLabel(german ? "Herstellungshinweise" : "Mix Notes", card), 5, 0,
                     Qt::AlignRight | Qt::AlignTop);
    cells->addWidget(notes, 5, 1, 1, 3);
    return card;
}

QFrame* gridCard(bool locked, const SampleRows& rows, QWidget* parent) {
    auto* card = new QFrame(parent);
    makeCard(*card);
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(20, 20, 20, 20);
    auto* grid = new RecordGrid(card);
    grid->setObjectName("grdLines");
    grid->setColumns({{"LineID", "LineID", 0, false, true, {}},
                      {"Name", "Name", 0, true, false, {}},
                      {"Qty", "Qty", 120, true, false, "#0.000"},
                      {"Cost", "Cost", 120, true, false, "$ ###,##0.00"},
                      {"Done", "QS", 90, true, false, {}},
                      {"Made", "Date", 150, false, false, {}}});
    grid->setAllowUpdate(!locked);
    grid->setDataSource(rows.open());
    if (!locked)
        grid->selectRow(1);
    column->addWidget(grid);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    for (const char* caption : {"Add", "Remove"}) {
        auto* button = new QPushButton(caption, card);
        button->setEnabled(!locked);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    column->addLayout(buttons);
    return card;
}

}  // namespace

QWidget* sampleScreen(bool locked, bool german, const SampleRows& rows, QWidget* parent) {
    auto* screen = new QWidget(parent);
    auto* outer = new QVBoxLayout(screen);
    outer->setContentsMargins(24, 16, 24, 24);
    auto* tabs = new QTabWidget(screen);
    tabs->setObjectName("tabs");
    const auto page = [tabs](QWidget* card, const QString& caption) {
        auto* holder = new QWidget(tabs);
        auto* column = new QVBoxLayout(holder);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(card);
        column->addStretch();
        tabs->addTab(holder, caption);
    };
    page(generalCard(locked, german, tabs), german ? "Allgemein" : "General");
    page(gridCard(locked, rows, tabs), german ? "Bestandteile" : "Ingredients");
    page(new QFrame(tabs), german ? "Mischeinstellungen" : "Mix Options");
    outer->addWidget(tabs);
    return screen;
}

namespace {

QWidget* buttonRow(QWidget* parent) {
    auto* card = new QFrame(parent);
    makeCard(*card);
    auto* row = new QHBoxLayout(card);
    row->setContentsMargins(20, 20, 20, 20);
    auto* plain = new QPushButton("Plain", card);
    auto* main = new QPushButton("Main", card);
    setLook(*main, "primary");
    auto* stop = new QPushButton("Stop", card);
    setLook(*stop, "danger");
    auto* off = new QPushButton("Off", card);
    off->setEnabled(false);
    auto* check = new QCheckBox("Print worksheet", card);
    check->setChecked(true);
    auto* empty = new QCheckBox("Not", card);
    auto* one = new QRadioButton("One", card);
    one->setChecked(true);
    auto* progress = new QProgressBar(card);
    progress->setValue(40);
    progress->setFixedWidth(120);
    for (QWidget* each : std::initializer_list<QWidget*>{plain, main, stop, off, check, empty, one, progress})
        row->addWidget(each);
    row->addStretch();
    return card;
}

QWidget* stepsCard(QWidget* parent) {
    auto* box = new QGroupBox("Optional precision settings", parent);
    auto* cells = new QGridLayout(box);
    auto* list = new ReportList(box);
    list->setColumnCaptions({"Lift RPM", "Mix RPM", "Time", "Cycles"});
    list->addRow({"1200", "1200", "00:02:00", "0"});
    list->addRow({"1440", "1992", "00:06:00", "0"});
    list->addRow({"1200", "1800", "00:00:00", "3"});
    list->setCurrentRow(1);
    cells->addWidget(list, 0, 0, 1, 6);
    const char* const names[] = {"Lift RPM", "Mix RPM"};
    for (int i = 0; i < 2; ++i) {
        auto* label = new QLabel(QString::number(1200 + i * 12), box);
        auto* arrows = new UpDown(box);
        arrows->setBuddy(label);
        cells->addWidget(fieldLabel(names[i], box), 1, i * 3);
        cells->addWidget(label, 1, i * 3 + 1);
        cells->addWidget(arrows, 1, i * 3 + 2);
    }
    return box;
}

}  // namespace

QWidget* sampleControls(QWidget* parent) {
    auto* screen = new QWidget(parent);
    auto* column = new QVBoxLayout(screen);
    column->setContentsMargins(24, 20, 24, 24);
    column->setSpacing(16);
    column->addWidget(buttonRow(screen));
    column->addWidget(stepsCard(screen));
    auto* number = new NumberBox(screen);
    number->setObjectName("refused");
    number->setFixedWidth(160);
    column->addWidget(number);
    column->addStretch();
    return screen;
}

QWidget* samplePanel(QWidget* parent) {
    auto* panel = new QWidget(parent);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(20, 16, 20, 20);
    auto* title = new QLabel("Sorvanto Control Panel", panel);
    setLook(*title, "heading");
    auto* state = new QHBoxLayout;
    auto* port = new QLabel("COM1 · firmware SIM-2.1", panel);
    setLook(*port, "quiet");
    auto* badge = new QLabel("simulated", panel);
    setLook(*badge, "badge");
    state->addWidget(port);
    state->addWidget(badge);
    state->addStretch();
    column->addWidget(title);
    column->addLayout(state);
    column->addStretch();
    return panel;
}

}  // namespace support
