// The log screen: its tools and moves, a new batch coming in, three texts corrected, an entry deleted.
//   frmLogShow.cpp   what is shown of a batch        frmLogPrint.cpp   its reports
#include "screens/frmLog.h"

#include "mixing/FormulaDocument.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/ReportList.h"
#include "platform/widgets/Theme.h"
#include "screens/BatchCard.h"
#include "screens/Designed.h"
#include "screens/RecipeChanges.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"
#include "ui_frmLog.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const BrowsedRecords logRecords{
    .screen = u"frmLog"_s,
    .statement = u"SELECT LogID FROM Log"_s,
    .key = u"LogID"_s,
    .question = u"Log data not saved! Save Changes?"_s,
    .button = u"cmdLogs"_s,
    .locks = {.grids = true},
    .tools = {.edit = ToolRule::Locked,
              .cancelAndSave = ToolRule::Unlocked,
              .remove = ToolRule::Locked,
              .moves = ToolRule::Locked,
              .search = ToolRule::Locked,
              .printAndExport = ToolRule::Locked,
              .trace = ToolRule::On,
              .formulaLog = true,
              .label = true,
              .report = true,
              .jarReport = true},
};

const std::vector<RecordFields<clsLog>::Row> logFields{
    {&clsLog::log_Date, "txtlog_Date", "lbllog_Date", "Date", shownOnly},
    {&clsLog::log_Initials, "txtlog_Initials", "lbllog_Initials", "Logged"},
    {&clsLog::log_JarSize, "txtlog_JarSize", "lbllog_JarSize", "Jar Size", {.entries = &Context::jarSizes}},
    {&clsLog::log_Lot, "txtlog_Lot", "lbllog_Lot", "Lot #", shownOnly},
    {&clsLog::log_Name, "txtlog_Name", "lbllog_Name", "Formula Name", shownOnly},
    {&clsLog::log_NDC, "txtlog_NDC", "lbllog_NDC", "NDC", shownOnly},
    {&clsLog::log_Notes, "txtlog_Notes", "lbllog_Notes", "Log Notes"},
    {&clsLog::log_Quantity, "txtlog_Quantity", "lbllog_Quantity", "Quantity", shownOnly},
    {&clsLog::log_Strength, "txtlog_Strength", "lbllog_Strength", "Strength", shownOnly},
    {&clsLog::log_FormType, "txtlog_Type", "lbllog_Type", "Formula Type", {.entries = &Context::mixTypes}},
    {&clsLog::log_Units, "txtlog_Units", "lbllog_Units", "Units", shownOnly},
    {&clsLog::log_Verified, "txtlog_Verified", "lbllog_Verified", "Verified"},
    {&clsLog::log_Cost, "txtlog_Cost", "lblfrm_Cost", "Cost", shownOnly},
    {&clsLog::log_AWP, "txtlog_AWP", "lblfrm_AWP", "AWP", shownOnly},
};

constexpr int verifiedRow = 5;
constexpr int lastColumn = 3;

}  // namespace

frmLog::frmLog(Context& context, QWidget* parent)
    : BrowsingScreen(context, logRecords, parent), m_ui(designed<Ui::frmLog>(this)),
      m_log(std::make_shared<clsLog>()), m_fields(context, *this, logFields),
      m_recipeChanges(new RecipeChanges(context, this)) {
    m_fields.addLabels(*this, {
                                  {"lblInterrupted", "interrupted"},
                                  {"lbllog_PreGrind", "Pre Grind"},
                                  {"lbllog_FreeSpin", "Free Spin"},
                                  {"lblfrm_ReactTime", "Reaction Time"},
                                  {"lblfrm_ReactRPM", "Reaction RPM"},
                                  {"lblID", "Mix Identification"},
                                  {"lblJarSize", "Jar Size"},
                                  {"lblType", "Formula Type"},
                                  {"lblCycles", "Total Cycles"},
                                  {"lblInteruption", "A = Without Interuption U = With Interuption"},
                                  {"lblPreGrind", "Number of Additional PreGrind Cycles"},
                                  {"lblPrepNum", "Preparation Number"},
                                  {"lblTotalRev", "Total Mixing Motor Revolutions"},
                                  {"lblVersion", "Hardware Version"},
                              });
    for (QFrame* card : {m_ui->fraLog, m_ui->fraIngredients, m_ui->fraMixer, m_ui->fraResults})
        platform::makeCard(*card);
    m_ui->txtlog_Quantity->setFormats(u"####0"_s, u"####0"_s);
    m_ui->txtlog_Date->setWithTime(true);
    m_ui->grdIngredients->setColumns({{.field = u"lch_Name"_s, .caption = u"Name"_s},
                                      {.field = u"lch_Qty"_s, .caption = u"Qty"_s, .width = 96},
                                      {.field = u"lch_Lot"_s, .caption = u"Lot"_s, .width = 104},
                                      {.field = u"lch_Cost"_s, .caption = u"Cost"_s, .width = 112},
                                      {.field = u"lch_AWP"_s, .caption = u"AWP"_s, .width = 112},
                                      {.field = u"lch_NDC"_s, .caption = u"NDC"_s, .width = 128},
                                      {.field = u"lch_Supplier"_s, .caption = u"Supplier"_s, .width = 168}});
    m_ui->layout28->addWidget(m_recipeChanges, verifiedRow, lastColumn, Qt::AlignLeft | Qt::AlignVCenter);
    QWidget::setTabOrder(m_ui->txtlog_Verified, m_recipeChanges);
    addTools();
}

frmLog::~frmLog() = default;

void frmLog::addTools() {
    m_tools.onReport("mnuFormulaLog"_L1, [this](bool exportIt) { printLog(exportIt); });
    m_tools.onReport("mnuLabel"_L1, [this](bool exportIt) { printLabels(exportIt); });
    m_tools.onReport("mnuReport"_L1, [this](bool exportIt) { printReport(exportIt); });
    m_tools.onReport("mnuJarReport"_L1, [this](bool exportIt) { printJarReport(exportIt); });
    m_tools.on({"cmdLogs"_L1, "mnuLogs"_L1}, [this] {
        if (m_log)
            showCaption(u"Logs"_s, m_log->log_Name);
    });
}

void frmLog::Form_Load() {
    guarded(u"frmLog:Form_Load"_s, [&] {
        m_log = std::make_shared<clsLog>();
        translateForm();
        getData();
        if (!identifiers().eof())
            openFirst();
        refreshForm();
        lockForm();
        m_ui->tabLog->setCurrentIndex(0);
    });
}

// Into an object of its own: a preview that is still laid out, or a question still open, keeps its batch.
void frmLog::openRecord(std::int16_t key) {
    const clsLogPtr log = platform::deref(m_log).copy();
    log->openLog(key, QString());
    m_log = log;
}

// An archive run gives batches new keys, also while the text of another bench waits for its own.
DraftRecord frmLog::recordOnView() const {
    if (!m_log)
        return DraftRecord{draftTable()};
    const QString batch = (m_log->log_Lot + u' ' + platform::storedDate(m_log->log_Date)).trimmed();
    return {draftTable(), m_log->LogID, batch, m_log->log_Name};
}

void frmLog::translateForm() {
    guarded(u"frmLog:translateForm"_s, [&] {
        m_fields.translate();
        translateColumns();
    });
}

void frmLog::translateColumns() {
    const QString tabs[] = {u"General"_s, u"Ingredients"_s, u"Mix Options"_s, u"Mix Results"_s};
    for (int tab = 0; tab < 4; ++tab)
        m_ui->tabLog->setTabText(tab, translated(tabs[tab]));
    m_ui->grdIngredients->setAccessibleName(m_ui->tabLog->tabText(1));
    m_ui->lstCustom->setAccessibleName(m_ui->tabLog->tabText(2));
    m_ui->fraCustom->setTitle(translated(u"Optional precision settings"_s));
    m_ui->fraReaction->setTitle(translated(u"Reaction Options"_s));
    for (const QString& caption :
         {u"Name"_s, u"Qty"_s, u"Lot"_s, u"Cost"_s, u"AWP"_s, u"NDC"_s, u"Supplier"_s})
        m_ui->grdIngredients->setShownCaption(m_ui->grdIngredients->columnByCaption(caption),
                                              translated(caption));
    QStringList captions;
    for (const QString& caption : {u"Lift RPM"_s, u"Mix RPM"_s, u"Time"_s, u"Cycles"_s})
        captions << translated(caption);
    m_ui->lstCustom->setColumnCaptions(captions);
}

// Beyond an end the record is opened once, at the end.
void frmLog::moveNext() {
    guarded(u"frmLog:moveNext"_s, [&] {
        identifiers().moveNext();
        if (identifiers().eof())
            identifiers().moveLast();
        openCurrent();
        refreshForm();
    });
}

void frmLog::movePrevious() {
    guarded(u"frmLog:movePrevious"_s, [&] {
        identifiers().movePrevious();
        if (identifiers().bof())
            identifiers().moveFirst();
        openCurrent();
        refreshForm();
    });
}

// A search selects the lines of key 0; opening the record again by its own key brings its lines, also
// those of the former record when nothing was found.
void frmLog::searchLog(const QString& searchText) {
    guarded(u"frmLog:searchLog"_s, [&] {
        const clsLogPtr log = platform::deref(m_log).copy();  // a list may stay open for long
        log->openLog(0, searchText);
        if (log->LogID > 0)
            log->openLog(log->LogID, QString());
        m_log = log;
        refreshForm();
    });
}

void frmLog::unlockForm() {
    guarded(u"frmLog:unlockForm"_s, [&] {
        m_ui->txtlog_Initials->setReadOnlyBox(false);
        m_ui->txtlog_Verified->setReadOnlyBox(false);
        m_ui->txtlog_Notes->setReadOnlyBox(false);
        setEnabled(true);
        m_ui->tabLog->setEnabled(true);
        m_locked = false;
    });
}

bool frmLog::addLog(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) {
    const ResumeNext step(u"frmLog:addLog"_s);
    std::int16_t formulaID = 0;
    clsLogPtr added;
    bool logIt = false;
    step([&] { formulaID = formulaDocumentID(formula); });
    step([&] {
        const platform::BoxStyle style{platform::Buttons::YesNo, platform::Icon::Exclamation};
        logIt = (formulaID > 0 && formula) ||
                platform::MsgBox(translated(u"Log Formula"_s), style, translated(u"Logs"_s)) ==
                    platform::Answer::Yes;
    });
    step([&] {
        if (logIt)
            added = clsLog().addLog(formula, results);
    });
    if (!added)
        return false;
    step([&] { m_log = added; });
    step([&] { getData(); });
    step([&] { added->openLog(added->LogID, QString()); });
    step([&] { refreshForm(); });
    step([&] {
        MainWindow& main = platform::deref(m_context.window);
        main.ActiveBar_ToolClick(main.bar().band(u"FormBar"_s).tool(u"cmdLogs"_s));
    });
    announceLogged(m_context, *added);
    return true;
}

bool frmLog::isLogged(const QString& lot) {
    const auto rows = platform::Recordset::create();
    rows->open(u"SELECT LogID FROM Log WHERE log_Lot = '"_s + platform::doubledApostrophes(lot) + u"'"_s,
               openDB(m_context), platform::LockType::ReadOnly);
    return rows->recordCount() > 0;
}

// Nothing of a log but the three texts can be changed, whatever the other boxes show.
bool frmLog::saveForm() {
    return guarded(u"frmLog:saveForm"_s, false, [&] {
        lockForm();
        clsLog& log = platform::deref(m_log);
        m_fields.read(log);
        m_ui->grdIngredients->commitEdit();
        const bool saved = clsLog().saveLog(m_log);
        if (saved)
            recordSaved();
        identifiers().requery();
        identifiers().find(u"LogID = "_s + QString::number(log.LogID));
        return saved;
    });
}

void frmLog::cmdSave() {
    saveForm();
    refreshForm();
}

void frmLog::emptyForm() {
    guarded(u"frmLog:clearForm"_s, [&] {
        m_log = std::make_shared<clsLog>();
        clearControls(*this);
    });
}

void frmLog::deleteLog() {
    guarded(u"frmLog:deleteLog"_s, [&] {
        Asked asked = askedRecord();
        asked.name = platform::deref(m_log).log_Lot + u", "_s + asked.name;
        if (clsLog().deleteLog(m_log))
            recordDeleted(asked);
    });
}

}  // namespace sorvanto
