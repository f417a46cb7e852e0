// What is told of the screens as tables.
#include "DeskModel.h"

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace desk {
namespace {

// L: on while the screen is locked; not: on while it is not; on: always. Without records all are off, but "new"
// where a screen can make one: the formulas always, the chemicals and patients while locked; the logs never.
const char* const toolTable = R"(
tool           Current  Formulas  Chemicals  Logs  Patients
cmdEdit        -        L         L          L     L
cmdNew         -        L         L          -     L
cmdCancel      -        not       not        not   not
cmdSave        -        not       not        not   not
cmdCopy        -        L         -          -     -
cmdDelete      -        L         L          L     L
cmdFirst       -        L         L          L     L
cmdPrevious    -        L         L          L     L
cmdNext        -        L         L          L     L
cmdLast        -        L         L          L     L
cmdSearch      on       L         L          L     L
txtSearch      on       L         L          L     L
cmdMake        -        L         -          -     L
cmdPrint       on       L         L          L     L
cmdExport      on       L         L          L     L
cmdTrace       -        on        on         on    on
cmdNewLot      -        -         on         -     -
cmdImport      -        -         on         -     -
mnuWorksheet   on       on        -          -     -
mnuFormulaLog  -        -         -          on    -
mnuLabel       -        -         -          on    on
mnuReport      -        -         on         on    on
mnuJarReport   -        -         -          on    -
)";

// What a click does on the screen that hears it, word by word:
//   first previous next last   move over the set, open the record there, show it
//   search      open the record that the text finds       show       its values into the boxes, and the caption
//   read        the set anew                               clear      the boxes, and but for a formula the record
//   lock unlock the screen                                 add copy   a row in the table, opened
//   new old     the new flag                               forget     typed text: the user's will
//   drop        a new row goes, the first one is opened    save       or stop here
//   remove      ask; the row goes, first of the set as it was, read
//   hand-over prescribe find make paper worksheet label dates   what the tool asks and does with the answer
// Each click on the patients ends with show, whatever the tool, but for a make that went on to the current formula.
const char* const clickTable = R"(
cmdFirst      Formulas   first
cmdFirst      Chemicals  first
cmdFirst      Logs       first
cmdFirst      Patients   first
cmdPrevious   Formulas   previous
cmdPrevious   Chemicals  previous
cmdPrevious   Logs       previous
cmdPrevious   Patients   previous
cmdNext       Formulas   next
cmdNext       Chemicals  next
cmdNext       Logs       next
cmdNext       Patients   next
cmdLast       Formulas   last
cmdLast       Chemicals  last
cmdLast       Logs       last
cmdLast       Patients   last
cmdSearch     Formulas   search show
cmdSearch     Chemicals  search show
cmdSearch     Logs       search show
cmdSearch     Patients   search
cmdSearch     Current    find make
cmdEdit       Formulas   unlock show
cmdEdit       Chemicals  unlock show
cmdEdit       Logs       unlock show
cmdEdit       Patients   unlock
cmdSave       Formulas   save lock old show
cmdSave       Chemicals  save lock old show
cmdSave       Logs       lock save show
cmdSave       Patients   save lock old
cmdCancel     Formulas   forget drop lock show
cmdCancel     Chemicals  forget drop lock show
cmdCancel     Logs       forget lock show
cmdCancel     Patients   forget drop lock
cmdNew        Formulas   new clear add read unlock show
cmdNew        Chemicals  new clear add show read unlock
cmdNew        Patients   new unlock clear add read
cmdCopy       Formulas   copy read unlock show
cmdDelete     Formulas   old remove clear lock read first
cmdDelete     Chemicals  old remove clear lock read first
cmdDelete     Logs       remove
cmdDelete     Patients   old remove clear lock read first
cmdMake       Formulas   hand-over
cmdMake       Current    make
cmdMake       Patients   prescribe
mnuWorksheet  Formulas   worksheet show
mnuWorksheet  Current    paper
mnuFormulaLog Logs       show
mnuLabel      Logs       label show
mnuLabel      Patients   label
mnuReport     Logs       dates show
mnuReport     Patients   dates
mnuJarReport  Logs       dates show
cmdFormulas   Formulas   show
cmdChemicals  Chemicals  show
cmdLogs       Logs       caption
)";

// The first piece that a name contains decides. On the logs only three boxes are ever opened.
const char* const lockTable = R"(
txt  Formulas Chemicals Logs Patients
cbo  Formulas Chemicals Logs Patients
grd  Formulas Patients
upd  Formulas
cmd  Formulas Patients
)";
const QStringList openedOnLogs{"txtlog_Initials", "txtlog_Verified", "txtlog_Notes"};

const QStringList screenWords{"Current", "Formulas", "Chemicals", "Patients", "Logs"};  // by number

std::vector<QStringList> linesOf(const char* table) {
    std::vector<QStringList> lines;
    for (const QString& line : QString::fromLatin1(table).split('\n', Qt::SkipEmptyParts))
        lines.push_back(line.split(' ', Qt::SkipEmptyParts));
    return lines;
}

/// The menu entries of a screen are its button, and those of the export menu bear an "x".
QString plainTool(const QString& tool) {
    if (const ScreenRow* row = screenOfTool(tool))
        return QString::fromLatin1(row->button);
    if (tool == "txtSearch"_L1)
        return "cmdSearch";
    return tool.startsWith("mnu"_L1) && tool.endsWith('x') ? tool.chopped(1) : tool;
}

}  // namespace

QStringList recordTools() {
    QStringList tools;
    for (const QStringList& line : linesOf(toolTable))
        tools << line.first();
    return tools.mid(1);
}

bool isToolOn(const QString& tool, ScreenNumber screen, DeskState state) {
    static const auto table = linesOf(toolTable);
    static const QStringList recordOnes = recordTools();
    if (!recordOnes.contains(tool))
        return true;
    if (state == DeskState::Empty)
        return tool == "cmdNew"_L1 && screen != logs;
    const auto column = table.front().indexOf(screenWords.at(screen));
    for (const QStringList& line : table) {
        if (line.first() != tool)
            continue;
        const QString& rule = line.at(column);
        return rule == "on"_L1 || (rule == "L"_L1 && state == DeskState::Locked) ||
               (rule == "not"_L1 && state == DeskState::Unlocked);
    }
    return true;  // no record tool
}

QStringList wordsOf(const QString& tool, ScreenNumber screen) {
    static const auto table = linesOf(clickTable);
    if (screen == currentFormula && tool.endsWith('x'))
        return {};  // that entry is on and does nothing
    for (const QStringList& line : table) {
        if (line.at(0) == plainTool(tool) && line.at(1) == screenWords.at(screen))
            return line.mid(2);
    }
    return {};
}

bool isControlOpen(const QString& control, ScreenNumber screen, bool locked) {
    if (locked)
        return false;
    if (screen == logs)
        return openedOnLogs.contains(control);
    for (const QStringList& line : linesOf(lockTable)) {
        if (control.contains(line.first()))
            return line.contains(screenWords.at(screen));
    }
    return false;
}

const std::vector<Box>& boxes() {
    static const std::vector<Box> all{
        {formulas, "txtfrm_Name", "frm_Name", "Formula Name is required"},
        {formulas, "txtfrm_Desc", "frm_Desc"},
        {formulas, "txtfrm_Quantity", "frm_Quantity", "Quantity is required"},
        {chemicals, "txtchm_Name", "chm_Name", "Chemical Name is required"},
        {chemicals, "txtchm_Notes", "chm_Notes"},
        {logs, "txtlog_Name", "log_Name"},
        {logs, "txtlog_Initials", "log_Initials"},
        {logs, "txtlog_Notes", "log_Notes"},
        {patients, "txtpat_FName", "pat_FName", "First Name is required"},
        {patients, "txtpat_LName", "pat_LName", "Last Name is required"},
        {patients, "txtpat_Notes", "pat_Notes"},
    };
    return all;
}

const char* tableOf(ScreenNumber screen) {
    constexpr const char* tables[] = {"", "Formula", "Chemical", "Patient", "Log"};
    return tables[screen];
}

const char* keyOf(ScreenNumber screen) {
    constexpr const char* keys[] = {"", "FormulaID", "ChemicalID", "PatientID", "LogID"};
    return keys[screen];
}

}  // namespace desk
