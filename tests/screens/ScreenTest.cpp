// The screens' test world.
#include "ScreenTest.h"
#include "support/Waiting.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/RecordGrid.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

using namespace sorvanto;

void ScreenTest::SetUp() {
    TestProgram::SetUp();
    // No test may talk to a machine on a port of this computer: its first port is a file that is none.
    ASSERT_TRUE(QDir(folder.path()).mkdir("ports"));
    folder.write("ports/COM1", {});
    createDatabase();
    seed();
}

void ScreenTest::TearDown() {
    window.reset();
    TestProgram::TearDown();
}

void ScreenTest::load(Parts parts) {
    basMain::Options.reset();
    basMain::Language.reset();
    parts.reporter = [this] { return reporter; };
    window = std::make_unique<frmMain>(std::move(parts));
    window->Form_Load();
    window->show();
    window->showNormal();  // at first it fills the screen of the test
    window->resize(1366, 768);
    openDB()->setTrace([this](const QString& statement) { statements << statement; });
}

void ScreenTest::seedChemicals() const {
    sql("INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Form,"
        " chm_GUID, chm_Supplier, chm_Notes) VALUES"
        " (1, 'Aspirin', 'GMS', 'L100', '111-11', 0.5, 1.25, 'PWD', 'G1', 'Quill', ''),"
        " (2, 'Borax', 'GMS', 'L200', '222-22', 0.03, 0.075, 'PWD', 'G2', 'Northfield', 'keep dry'),"
        " (3, 'Camphor', 'GMS', 'L300', '333-33', 2, 4.5, 'CRYS', 'G3', 'Harbor', ''),"
        " (4, 'Menthol', 'MLS', 'L400', '444-44', 1.1, 2.2, 'SOLN', 'G4', 'Harbor', '');");
}

void ScreenTest::seedFormulas() const {
    seedChemicals();
    sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Desc, frm_Strength, frm_Units, frm_Instructions,"
        " frm_Quantity, frm_JarSize, frm_FormType, frm_AWP, frm_NDC, frm_GUID, frm_Mix) VALUES"
        " (1, 'Cooling Gel', 'For the skin', '2 %', 'GMS', 'Mix cold.', 10, 3, 9, 16.6, '777-01', 'F1',"
        "  '<CustomMix PreGrind=\"2\" FreeSpin=\"4\"><Mix LiftRPM=\"1200\" MixRPM=\"600\" MixTime=\"00:00:30\""
        " Cycles=\"0\"/><Mix LiftRPM=\"480\" MixRPM=\"1200\" MixTime=\"00:00:00\" Cycles=\"7\"/></CustomMix>'),"
        " (2, 'Plain Base', '', '', 'MLS', '', 50, 5, 3, 0, '777-02', 'F2',"
        "  '<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>'),"
        " (3, 'Arnica Salve', 'Old recipe', '1:10', 'GMS', '', 30, 9, 9, 0, '777-03', 'F3',"
        "  '<CustomMix PreGrind=\"15\" FreeSpin=\"16\"><Mix LiftRPM=\"2880\" MixRPM=\"3000\""
        " MixTime=\"00:10:00\" Cycles=\"0\"/></CustomMix>');"
        "INSERT INTO FormChem (FormChemID, FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES"
        " (11, 1, 3, 1.2345, 0, 1), (12, 1, 4, 5.0, 1, 1), (13, 1, 2, 0.5, 0, 0), (14, 3, 1, 3.0, 0, 1);");
}

void ScreenTest::seedLogs() const {
    seedFormulas();
    const QString rows =
        "INSERT INTO Log (LogID, FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType,"
        " log_Quantity, log_JarSize, log_NDC, log_Date, log_Lot, log_Initials, log_Verified, log_Results,"
        " log_Version, log_AWP, log_Cost, log_Notes, log_Mix) VALUES"
        " (1, 1, 'Cooling Gel', '2 %', 'For the skin', 'GMS', 9, 20, 2, '777-01', '2026-01-05 09:30:00',"
        "  'AB0010', 'RK', 'LM', '%1', 'S-2', 33.2, 20.1, 'first', '<CustomMix PreGrind=\"2\" FreeSpin=\"4\"/>'),"
        " (2, 1, 'Cooling Gel', '2 %', 'For the skin', 'GMS', 9, 25, 3, '777-01', '2026-03-01 16:00:00',"
        "  'AB0012', 'RK', 'LM', '%2', 'S-2', 41.5, 25.2, '', '<CustomMix PreGrind=\"2\" FreeSpin=\"4\"/>'),"
        " (3, 1, 'Cooling Gel', '2 %', 'For the skin', 'GMS', 3, 10, 1, '777-01', '2026-02-11 11:15:00',"
        "  'AB0011', 'TT', 'LM', '', 'S-2', 16.6, 10.1, '', '');"
        "INSERT INTO LogChem (LogChemID, LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost,"
        " lch_AWP, lch_Supplier, lch_Form, lch_GUID, lch_QTY) VALUES"
        " (21, 1, 3, 'Camphor', 'GMS', 'L300', '333-33', 4.94, 11.11, 'Harbor', 'CRYS', 'G3', 2.469),"
        " (22, 1, 4, 'Menthol', 'MLS', 'L400', '444-44', 11, 22, 'Harbor', 'SOLN', 'G4', 10.0),"
        " (23, 2, 3, 'Camphor', 'GMS', 'L300', '333-33', 6.17, 13.89, 'Harbor', 'CRYS', 'G3', 3.086),"
        " (24, 2, 4, 'Menthol', 'MLS', 'L400', '444-44', 13.75, 27.5, 'Harbor', 'SOLN', 'G4', 12.5);";
    sql(QString(rows).replace("%1", resultsXml("AB", "0010")).replace("%2", resultsXml()));
}

QString ScreenTest::resultsXml(const QString& lot, const QString& number) {
    return u"<Results Value=\"%1\"><Size Value=\"3\"/><Type Value=\"9\"/><LiftingCycles Value=\"42\"/>"
           u"<Interuption Value=\"No\"/><PreGrind Value=\"2\"/><PreparationNumber Value=\"%2\"/>"
           u"<TotalMixingRevolutions Value=\"007\"/><HardwareVersion Value=\"S-2\"/></Results>"_s.arg(lot,
                                                                                                      number);
}

platform::XmlDocumentPtr ScreenTest::document(const QString& xml) {
    const auto made = platform::XmlDocument::create();
    EXPECT_TRUE(made->loadXML(xml)) << str(xml);
    return made;
}

void ScreenTest::failStatement(const QString& part) {
    openDB()->setTrace([this, part](const QString& statement) {
        statements << statement;
        if (statement.contains(part))
            throw platform::RuntimeError(platform::error::statement, "Made to fail", "test", statement);
    });
}

bool ScreenTest::closePreview() {
    for (QWidget* found : QApplication::topLevelWidgets()) {
        if (found->objectName() == "preview" && found->isVisible()) {
            delete found;
            return true;
        }
    }
    return false;
}

void ScreenTest::typeInCell(platform::RecordGrid& grid, int row, const QString& field, const QString& text) {
    ASSERT_TRUE(grid.isVisible());
    grid.window()->activateWindow();
    ASSERT_TRUE(support::becomesActive(grid.window()));
    grid.setFocus();
    grid.setCurrentIndex(grid.model()->index(row, grid.columnByField(field)));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::keyClick(&grid, Qt::Key_F2);
    ASSERT_NE(cellEditor(grid), nullptr);
    cellEditor(grid)->selectAll();
    QTest::keyClicks(cellEditor(grid), text);
}

QLineEdit* ScreenTest::cellEditor(const platform::RecordGrid& grid) {
    return grid.viewport()->findChild<QLineEdit*>("cellEditor");
}

platform::Tool& ScreenTest::tool(const QString& name) const {
    for (const char* band :
         {"MainBar", "FormBar", "mnuPrint", "mnuExport", "mnuForms", "mnuFile", "mnuHelp"}) {
        for (const auto& found : window->bar().band(band).tools())
            if (found->name() == name)
                return *found;
    }
    throw platform::RuntimeError(platform::error::itemNotFound, "No tool " + name);
}

void ScreenTest::search(const QString& text) const {
    tool("txtSearch").setText(text);
    window->ActiveBar_ToolKeyPress(tool("txtSearch"), 13);
}

QString ScreenTest::text(ScreenNumber number, const QString& name) const {
    auto& found = control<QWidget>(number, name);
    if (auto* box = qobject_cast<platform::NumberBox*>(&found))
        return box->QLineEdit::text();
    if (auto* memo = qobject_cast<platform::MemoBox*>(&found))
        return memo->text();
    if (auto* choice = qobject_cast<platform::ChoiceBox*>(&found))
        return choice->boxText();
    if (auto* date = qobject_cast<platform::DateBox*>(&found))
        return date->text();
    return found.property("text").toString();
}

QStringList ScreenTest::recordTools() {
    QStringList names{"cmdFirst",  "cmdPrevious", "cmdNext",    "cmdLast",   "cmdMake",   "cmdNew",
                      "cmdEdit",   "cmdSave",     "cmdCopy",    "cmdCancel", "cmdDelete", "cmdPrint",
                      "cmdSearch", "txtSearch",   "cmdOptions", "cmdExport", "cmdTrace",  "cmdNewLot"};
    const QStringList entries{"mnuWorksheet", "mnuFormulaLog", "mnuLabel", "mnuReport", "mnuJarReport"};
    names << entries;
    for (const QString& entry : entries)
        names << entry + "x";
    return names;
}

QStringList ScreenTest::toolStates() const {
    QStringList states;
    for (const QString& name : recordTools())
        states << (on(name) ? "on" : "-");
    return states;
}

QString ScreenTest::stateTable(const std::vector<std::pair<QString, QStringList>>& columns) {
    constexpr int width = 18;
    QString table = u"tool"_s.leftJustified(width);
    for (const auto& [title, states] : columns)
        table += title.leftJustified(width);
    table = table.trimmed() + "\n";
    for (int row = 0; row < recordTools().size(); ++row) {
        QString line = recordTools().at(row).leftJustified(width);
        for (const auto& [title, states] : columns)
            line += states.at(row).leftJustified(width);
        table += line.trimmed() + "\n";
    }
    return table;
}

QString ScreenTest::lockStates(ScreenNumber number) const {
    QStringList lines;
    for (QWidget* found : window->screen(number)->findChildren<QWidget*>()) {
        const QString name = found->objectName();
        QString state;
        if (auto* box = dynamic_cast<platform::Lockable*>(found))
            state = box->isReadOnlyBox() ? "read-only" : "open";
        else if (auto* grid = qobject_cast<platform::RecordGrid*>(found))
            state = grid->allowUpdate() ? "open" : "closed";
        else if (qobject_cast<platform::UpDown*>(found) || qobject_cast<QPushButton*>(found))
            state = found->isEnabledTo(found->parentWidget()) ? "open" : "off";
        if (!state.isEmpty() && !name.isEmpty() && !name.startsWith("qt_"))
            lines << name + ": " + state;
    }
    lines.sort();
    return lines.join('\n') + "\n";
}
