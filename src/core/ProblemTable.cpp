// The sentences of the table. An ASCII apostrophe would shut a sentence out of the language files; they have ’ instead.
#include "core/ProblemTable.h"

#include "platform/basic/RuntimeError.h"

namespace sorvanto {
namespace {

namespace error = platform::error;

constexpr KnownProblem known[] = {
    {"clsChemical:chemicalOpen clsFormula:openFormula clsFormula:addChemical clsLog:openLog clsPatient:openPatient "
     "clsPatient:addRX",
     error::statement, " Like ",
     "A search text can’t hold an apostrophe: use the list’s filter, or the text before it."},
    {"clsLog:addLog", error::statement, "INSERT INTO",
     "Initials can’t hold an apostrophe; the batch is kept, sign again. If they hold none, take it out of the NDC of "
     "the formula first."},
    {"frmFormula:saveForm", error::subscriptOutOfRange, "",
     "No jar size is chosen, so nothing was saved. What you typed is kept: choose the jar and save again."},
    {"*:saveForm frmFormula:refreshForm frmChemical:refreshForm frmPatient:refreshForm", error::objectNotSet,
     "", "Nothing was found, so nothing was saved. Show a record first, or make a new one."},
    {"frmCurrFormula:refreshForm frmCurrFormula:makeFormula", error::objectNotSet, "",
     "No formula is on show: search for one, or press Make on the formula screen."},
    {"clsFormula:copyFormula", error::itemNotFound, "",
     "Page away and back before copying: lines were added. The copy has no ingredients: delete it."},
    {"frmPatient:saveForm", error::statement, "",
     "A postal code, phone or fax number can’t hold an apostrophe. What you typed is kept: take it out and save "
     "again."},
    {"clsFormula:addChemical", error::statement, "INSERT INTO",
     "The quantity can not be read, so the ingredient was not added. Add it again with a plain number."},
    {"clsFormula:addChemical", error::dataMismatch, "INSERT INTO",
     "The quantity can not be read, so the ingredient was not added. Add it again with a plain number."},
    {"clsFormula:getFormulaXML", error::objectNotSet, "",
     "The formula has no mix programme yet, so it did not go to the mixer. Edit and save it once, then press Make "
     "again."},
    {"clsFormula:addFormula clsChemical:chemicalAdd clsPatient:addPatient", error::overflow, "",
     "The keys of this table have run out, so the new record can not be used. The other records are unchanged; the "
     "manual tells how old batches go to an archive."},
    {"clsLog:openLog *:move* *:showRecord *:Form_Load *:m_frmMain_btnClick", error::overflow, "",
     "A record has a key beyond 32,767 and can not be opened. It is kept; the manual tells how old batches go to an "
     "archive."},
    {"clsLog:openLog", error::typeMismatch, "",
     "The date of this batch can not be read, so the batch is not shown whole. It stays in the log as it is."},
    {"frmLog:populateResults", 0, "",
     "The results of this batch are not complete, so some are not shown. The batch stays in the log as it is."},
    {"clsLanguage:setLanguage", error::general, "",
     "The language file can not be read, so the texts are English. It stays as it is: put the delivered one in its "
     "place."},
    {"clsLog:addLog frmLog:addLog", 0, "it is not known whether the change was saved",
     "The line to the server broke, and it is not known whether the batch is in the log. It is kept: the panel offers "
     "it again, and looks in the log first."},
    {"*:*", error::general, "belong to a newer program",
     "The records on the server belong to a newer program now, and this one changes nothing there. Click once more: a "
     "window says which version is needed."},
    {"*:*", 0, "it is not known whether the change was saved",
     "The line to the server broke, and it is not known whether the change was saved. Look at the record before you do "
     "it again."},
};

constexpr FailedDeed deeds[] = {
    // batches
    {"clsLog:addLog",
     "The batch is not in the log yet, or not whole. It is kept: the panel offers it again, or the "
     "next start completes it."},
    {"frmLog:addLog frmSorvanto:ctlSorvanto1_mixDone frmInitials:cmdOK_Click frmInitials:cmdCancel_Click",
     "Look whether the batch stands in the log. If it does not, it is kept, and the panel offers it again."},
    {"frmInitials:setformula frmInitials:getformula frmInitials:makeFormula frmInitials:txtfrm_Name_KeyPress",
     "The formula of the batch was not opened, so the batch is not in the log yet. It is kept, and the panel offers it "
     "again."},
    {"frmInitials:*",
     "The signing dialog is not shown whole. The batch is kept: sign it, or cancel and sign it later."},
    {"frmFormula:makeFormula frmCurrFormula:makeFormula frmPatient:makeFormula frmPatient:getFormula "
     "clsFormula:getFormulaXML",
     "The formula did not go to the mixer, or its worksheet was not made. Look at the panel before you start a mix."},
    {"frmMake:*", "The quantity was not taken over. Nothing was mixed or printed."},
    {"frmSorvanto:*", "The mixer panel could not look something up. The mix and its results are kept."},
    // records
    {"clsFormula:deleteChemical frmFormula:cmdRemove_Click clsFormula:addChemical frmFormula:cmdAdd_Click",
     "The ingredients were not changed, or are not shown as they are stored. Page away and back to see them."},
    {"clsPatient:addRX frmPatient:cmdAddRX_Click frmPatient:cmdDeleteRX_Click",
     "The prescriptions were not changed, or are not shown as they are stored. Page away and back to see them."},
    {"clsFormula:copyFormula",
     "The copy is not whole: delete it and copy again. The formula itself is unchanged."},
    {"clsFormula:addFormula clsChemical:chemicalAdd clsPatient:addPatient",
     "The new record was not made, or not whole. The other records are unchanged."},
    {"*:saveForm clsChemical:saveChemical clsFormula:saveFormula clsLog:saveLog",
     "The record was not saved. What you typed is kept."},
    {"*:delete*", "The record was not deleted, or not whole. Look at it before you delete it again."},
    {"clsChemical:chemicalOpen clsFormula:openFormula clsLog:openLog clsPatient:openPatient *:search* *:getData *:move* "
     "*:showRecord",
     "The record was not opened. Nothing stored was changed."},
    {"clsSearch:ShowList frmSearchRS:*",
     "The list of what was found is not shown whole. Nothing stored was changed."},
    {"frmFormula:cbofrm_* frmFormula:cmdAddMix_Click frmFormula:cmdDelete_Click frmFormula:lstCustom_* "
     "frmFormula:makeCustomXML",
     "The mix options were not taken over whole. Look at type, jar and steps before you save."},
    {"frmMain:refreshForm", "The window is not shown whole. Nothing stored was changed."},
    {"*:refreshForm *:clearForm *:populate*",
     "The record is not shown whole. What is stored is unchanged: page away and back before you edit it."},
    {"DraftStore:write *:keepTypedText",
     "What you typed and did not save is not kept on the disk. Save it before you go "
     "on."},
    {"*:fitOf *:bringBack",
     "The unsaved text was not brought back. It is kept, and the strip above still offers it."},
    // paper
    {"*:print* ReportFlow:* rptLogReport:* frmSelPrint:* frmReportDate:*",
     "Nothing was printed or exported, or not all of it. The records are unchanged."},
    {"frmPatient:offerBatch frmPatient:addBatch",
     "The batch was not prescribed, or not whole. Look at the prescriptions of the patient."},
    // the program itself
    {"frmMain:Form_Load",
     "A step of the start failed, and the program went on without it. The records are unchanged."},
    {"frmMain:openDB", "The database was not opened. It is unchanged."},
    {"frmMain:databaseOpened",
     "It is not known whether another program works with this database. Make sure before you change records."},
    {"frmMain:showKeysLeft", "How many keys are left is not known. The records are unchanged."},
    {"*:closeForm frmMain:Form_QueryUnload frmMain:Form_Unload",
     "Not everything was closed in order. What was saved is kept."},
    {"clsOptions:Class_Initialize clsOptions:DBVersion",
     "The options were not read, so some are not in force. Their file stays as it is."},
    {"clsOptions:*", "The options were not written. Their file stays as it is."},
    {"frmOptions:cmdSave_Click", "The options were not saved, or not all of them. Open them again and look."},
    {"frmOptions:*", "The options are not shown whole. Press Cancel, so that nothing is overwritten."},
    {"ServerDialog:*", "Whether the server answers is not known. Nothing was changed."},
    {"clsLanguage:* frmWizard:*",
     "The language file was not read or written, so texts may be English. The file stays as it is."},
    {"DailyBackup:copy",
     "The copy of the database was not made. The database and the older copies are unchanged."},
    {"DailyBackup:secondPlace",
     "A copy of the database was made, but not in the second place. Look whether the stick or share is there."},
    {"DailyBackup:rehearse",
     "A copy of the database was made, but trying it out failed, so it may be of no use. The next one is tried again."},
    {"DailyBackup:note",
     "A copy of the database was made, but this was not noted. The next copy may come sooner than needed."},
    {"BatchCard:announceLogged",
     "The card of the logged batch does not offer all that it should. The batch is in the log."},
    {"basMain:announce", "The status line does not say what was done. What was done is done."},
    {"HealthPage:setSecondPlace",
     "The second place for copies was not noted. The copies in the first one go on."},
    {"TraceWindow:* frmMain:showTrace",
     "What the lists show is not complete: do not rely on it, and search again. Nothing stored was changed."},
    {"Help:open", "The manual is not shown whole. Nothing stored was changed."},
    {"*:undo", "What was deleted was not brought back. The other records are unchanged."},
    {"*:useValues",
     "Not all of the earlier values were filled in. Nothing was saved yet: look at each before you do."},
    {"frmLog:recipeChanges",
     "Whether the formula has changed since the batch is not known. Nothing stored was changed."},
    {"HistoryWindow:* HistoryFileWindow:* frmMain:showHistory",
     "The history shown is not complete: open it again. Nothing stored was changed."},
    {"*:rereadRecord",
     "The record on show may not be the newest: show another one and come back. Nothing stored was changed."},
    {"NewLot:add NewLotWindow:* frmMain:showNewLot", "The lot was not added. Nothing was changed."},
    {"Repricing:store RepricingWindow:* frmMain:showRepricing",
     "The prices were not stored. Nothing was changed."},
    {"PriceWindow:take", "No price was taken: all of them or none. The records are as they were."},
    {"PriceWindow:*",
     "The price list is not shown whole: close it and import it again. No price was changed."},
    {"frmChemical:importPrices",
     "The price list was not shown, or the screen doesn’t show the prices taken. Look at the record again."},
    {"HealthPage:check", "The health page is not complete. Nothing stored was changed."},
    {"main:enterFolder", "Not all delivered files were brought up to date. Your own files are unchanged."},
    {"*:m_frmMain_btnClick frmMain:ActiveBar_* *:cancelEdit News:act ReportFlow:saved "
     "frmMain:beginAnew",
     "The command was not carried out to its end. What was saved before is kept."},
    {"Application:notify ServerLook:look",
     "Something unforeseen happened, and the program went on. What was saved before is kept."},
    {"*:Form_Load *:translateForm *:Form_Activate *:setMenuOptions *:lockForm *:unlockForm *:setListener frmMain:* "
     "frmAbout:*",
     "A screen is not set up whole: texts, lists or buttons may be missing. The records are unchanged."},
};

constexpr ProblemCause causes[] = {
    {error::permissionDenied, "by another program",
     "Another program holds the database: close it there, and try again."},
    {error::permissionDenied, "database file is read-only",
     "The database may not be written: ask for the right to write its file."},
    {error::permissionDenied, "A file beside the database",
     "The folder of the database may not be written: ask for the right to write there."},
    {error::permissionDenied, "wait for the server was ended",
     "You ended the wait for the server: try again when it answers."},
    {error::permissionDenied, "changed the records meanwhile",
     "Another bench has changed the same records at the same moment: look at them, and try again."},
    {error::permissionDenied, "Another statement is under way",
     "The program was still waiting for the server: try again."},
    {error::permissionDenied, "",
     "A file may not be written: close it in other programs, or ask for the right to write there."},
    {error::diskFull, "", "The disk is full: make room, and try again."},
    {error::deviceIo, "database file is damaged",
     "The database is damaged: start the program again, and it offers the newest good copy."},
    {error::deviceIo, "database file can't be read",
     "The disk or the share with the database does not answer: look after it, and try again."},
    {error::deviceIo, "server can't be reached",
     "The server can not be reached: look after it and the network, and try again."},
    {error::deviceIo, "printer", "The printer does not take the job: look after it, or choose another one."},
    {error::deviceIo, "", "A file can not be read or written: look after the disk, and try again."},
    {error::fileNotFound, "", "A file is missing: put it back, and try again."},
    {error::objectClosed, "",
     "No database is open: choose its file in the options, and start the program again."},
    {error::cannotOpen, "server",
     "The server with the records can not be opened: look at the network, and whether the server runs."},
    {error::cannotOpen, "", "The database may not be opened: ask for the right to read and write its file."},
    {error::general, "is related to", "Other records still use it: take it out there first."},
    {error::general, "server is not ready",
     "The server with the records is not ready: wait a minute, and try again."},
    {error::general, "database", "The file is locked or is no database: choose it anew in the options."},
    {error::dataMismatch, "", "A number or a date can not be read: correct it, and try again."},
    {error::typeMismatch, "", "A number or a date can not be read: correct it, and try again."},
    {error::overflow, "", "A number is too large: correct it, and try again."},
    {error::statement, "",
     "The database did not understand a text, most often because of an apostrophe: take it out, and try again."},
    {error::divisionByZero, "",
     "The quantity of the base batch is 0: enter it in the formula, save, and try again."},
    {error::noCurrentRecord, "", "The record is no longer there: show another one."},
    {error::invalidUseOfNull, "", "A value of the record is missing: fill it in, and try again."},
    {error::objectNotSet, "", "Something is missing that belongs to it: show another record and come back."},
    {error::itemNotFound, "", "Something is missing that belongs to it: show another record and come back."},
    {error::invalidProcedureCall, "Out of memory",
     "The memory is full: close other programs, and try again."},
};

}  // namespace

std::span<const KnownProblem> knownProblems() { return known; }
std::span<const FailedDeed> failedDeeds() { return deeds; }
std::span<const ProblemCause> problemCauses() { return causes; }

const char* const otherDeed =
    "Something unforeseen happened, and the program went on. What was saved before is kept.";
const char* const otherCause = "Try again; if it comes back, start the program again. Details tell more.";

}  // namespace sorvanto
