// Tool clicks: what concerns the window itself is done here, then the click goes to the screen that listens.
#include "config/clsOptions.h"
#include "core/HealthPage.h"
#include "core/Help.h"
#include "core/KeysLeft.h"
#include "core/RecordListPlace.h"
#include "core/StatusLine.h"
#include "core/ToolTexts.h"
#include "core/frmAbout.h"
#include "core/frmMain.h"
#include "mixer/LinkRow.h"
#include "mixer/ctlSorvanto.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/UnderWay.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::deref;

namespace {

constexpr int enterKey = 13;
const QString searchBox = u"txtSearch"_s;

QString panelName() { return translated(u"Sorvanto Control Panel"_s); }

void addPreparations(WindowHealth& health, const Reconciliation& all) {
    if (!all.done)
        return;
    const QString text =
        all.complete() ? translated(u"All %1 accounted for"_s) : translated(u"Not accounted for: %1"_s);
    const QString missing = all.missing.mid(0, 3).join(u", "_s);
    health.preparations = QString(text).replace(
        u"%1"_s, all.complete() ? platform::systemLocale().toString(all.preparations) : missing);
    health.preparationsNote =
        translated(u"On offer: %1"_s).replace(u"%1"_s, platform::systemLocale().toString(all.onOffer));
    health.preparationsGood = all.complete();
}

/// Text of a control of a screen, found by its name.
QString controlText(const RecordScreen& screen, const char* name) {
    return deref(screen.findChild<QWidget*>(QLatin1String(name))).property("text").toString();
}

}  // namespace

void frmMain::ActiveBar_ToolClick(platform::Tool& tool) {
    // No modal window keeps out a click of assistive technology.
    if (platform::UnderWay::any())
        return;
    guarded(u"frmMain:ActiveBar_ToolClick"_s, [&] {
        const QString name = tool.name();
        QString searchText;
        if (name == "cmdSearch"_L1)
            searchText = m_bar.band(u"MainBar"_s).tool(searchBox).text();
        if (name == "mnuExit"_L1) {
            close();
            if (m_ended)
                return;
        }
        if (name == "mnuAbout"_L1)
            showAbout();
        if (name == "mnuManual"_L1)
            findChild<Help*>()->open();
        if (name == "mnuHealth"_L1)
            showHealth();
        if (name == "mnuTrace"_L1 || name == "cmdTrace"_L1)
            showTrace();
        if (name == "mnuHistory"_L1)
            showHistory();
        act(name, searchText);
        if (!refusesTool(name)) {
            if (name == "cmdNewLot"_L1)
                showNewLot();
            if (name == "mnuRecalculate"_L1)
                showRepricing();
            raiseBtnClick(tool.name(), searchText);
        }
        refreshForm();
    });
}

// The tools look as they always do; what they would do could not be kept. A mix made while a copy stands in for the server
// is: in the journal, until it is back.
bool frmMain::refusesTool(const QString& toolName) const {
    static const QStringList changing{u"cmdEdit"_s,   u"cmdNew"_s,         u"cmdCopy"_s,
                                      u"cmdSave"_s,   u"cmdDelete"_s,      u"cmdMake"_s,
                                      u"cmdNewLot"_s, u"mnuRecalculate"_s, u"cmdImport"_s};
    const bool kept = m_context.standIn && toolName == "cmdMake"_L1;
    if (m_readingOnlyWhy.isEmpty() || kept || !changing.contains(toolName))
        return false;
    platform::MsgBox(m_readingOnlyWhy, {platform::Buttons::Ok, platform::Icon::Information});
    return true;
}

// The Find button ends in the last case and hands over an empty text; only Enter in the box carries one.
void frmMain::act(const QString& toolName, QString& searchText) {
    if (toolName == "cmdOptions"_L1 || toolName == "mnuOptions"_L1)
        editOptions();
    else if (toolName == "mnuPrint"_L1 || toolName == "mnuExport"_L1 || toolName == "mnuForms"_L1)
        return;
    else if (const ScreenRow* row = screenOfTool(toolName))
        switchTo(*row);
    else
        searchText.clear();
}

void frmMain::showAbout() {
    frmAbout about(m_context, this);
    about.Form_Load();
    platform::asker().showModal(about, [&] { about.exec(); });
}

void frmMain::showHealth() {
    HealthPage page(
        m_context, [this] { return windowHealth(); }, this);
    platform::asker().showModal(page, [&] { page.exec(); });
    showKeysLeft();
}

WindowHealth frmMain::windowHealth() const {
    WindowHealth health;
    health.readingOnly = m_readingOnlyWhy;
    if (m_control)
        addPreparations(health, m_control->reconciliation());
    if (const auto* link = m_control ? m_control->findChild<LinkRow*>(u"mixerLink"_s) : nullptr) {
        health.mixer = link->text();
        health.mixerNote = link->badge();
        health.mixerGood = link->kind() == LinkRow::Kind::Good;
    }
    return health;
}

// From 30,000 keys on the window says so at all times, and a click leads to the way out.
void frmMain::showKeysLeft() {
    guarded(u"frmMain:showKeysLeft"_s, [&] {
        const auto connection = m_context.connection;
        m_status->setKeysLeft({});
        if (!connection || connection->state() != 1)
            return;
        const TableKeys fewest = keysLeft(*connection).front();
        if (!fewest.isShort())
            return;
        QString text = translated(u"Keys left: %1 in %2"_s);
        m_status->setKeysLeft(text.replace(u"%2"_s, translated(fewest.name))
                                  .replace(u"%1"_s, platform::systemLocale().toString(fewest.left())));
    });
}

void frmMain::editOptions() {
    m_parts.editOptions();
    m_status->showDatabase();
}

void frmMain::switchTo(const ScreenRow& row) {
    SetCurrentForm(row.number);
    host(row);
    setCaption(captionOf(row));
}

void frmMain::host(const ScreenRow& row) {
    auto& tool = m_bar.band(QString::fromLatin1(row.band)).tool(toolNameOf(row));
    tool.setForm(&hosted(row.number));
    tool.setDescription(QString::fromLatin1(row.text));
    tool.setToolTip(QString::fromLatin1(row.text));
    tool.setEnabled(true);
}

QString frmMain::captionOf(const ScreenRow& row) {
    const QString panel = panelName();
    QString caption = panel + u": "_s + translated(QString::fromLatin1(row.text));
    if (row.number != currentFormula)
        caption += u"  :  "_s + recordNameOf(row);
    return caption;
}

QString frmMain::recordNameOf(const ScreenRow& row) {
    if (row.number == formulas)
        return m_parts.formName(hosted(formulas));
    const RecordScreen& screen = captionScreen(row);
    QString name = controlText(screen, row.caption[0]);
    if (row.caption[1])
        name += u", "_s + controlText(screen, row.caption[1]);
    return name;
}

RecordScreen& frmMain::captionScreen(const ScreenRow& row) {
    auto& screen = m_captionScreens[row.number];
    if (!screen) {
        screen = m_parts.screens[row.number]();
        screen->Form_Load();
    }
    return *screen;
}

void frmMain::SetCurrentForm(const std::int32_t& number) {
    guarded(u"frmMain:SetCurrentForm"_s, [&] {
        m_current = number;
        showBands(number);
        const auto listen = [&](ScreenNumber screen, bool on) {
            hosted(screen).Listener(static_cast<std::int16_t>(on ? -1 : 0));
        };
        for (const ScreenNumber screen : {currentFormula, formulas, chemicals, logs})
            listen(screen, number == screen);
        listen(patients, showsPatients(number));
        markScreen(number);
    });
}

bool frmMain::showsPatients(std::int32_t number) const {
    return number == patients && deref(m_context.options).ShowPatients() != 0;
}

void frmMain::showBands(std::int32_t number) {
    const auto show = [&](const char* band, bool on) { m_bar.band(QLatin1String(band)).setVisible(on); };
    show("CurrentFormula", number == currentFormula);
    show("Formulas", number == formulas);
    show("Chemicals", number == chemicals);
    show("Logs", number == logs);
    show("Patients", showsPatients(number));
}

void frmMain::markScreen(std::int32_t number) {
    auto& buttons = m_bar.band(u"FormBar"_s);
    const auto press = [&](const char* tool, bool on) { buttons.tool(QLatin1String(tool)).setChecked(on); };
    press("cmdFormulas", number == formulas);
    press("cmdCurrent", number == currentFormula);
    press("cmdChemicals", number == chemicals);
    press("cmdLogs", number == logs);
    press("cmdPatients", number == patients);
    RecordScreen* shown = m_screens[static_cast<std::size_t>(number)].get();
    m_list->setScreen(shown);
    m_status->setScreen(shown);
}

void frmMain::raiseBtnClick(const QString& toolName, const QString& searchText) {
    m_listeners.deliver(toolName, searchText);
}

void frmMain::ActiveBar_ToolKeyPress(platform::Tool& tool, int key) {
    guarded(u"frmMain:ActiveBar_ToolKeyPress"_s, [&] {
        if (tool.name() != searchBox || key != enterKey)
            return;
        const QString text = tool.text();
        raiseBtnClick(tool.name(), text);
        tool.setText(QString());
        refreshForm();
    });
}

// The screens lie one to a band, so a change of band needs nothing more.
void frmMain::ActiveBar_ChildBandChange(platform::Band&) {
    guarded(u"frmMain:ActiveBar_ChildBandChange"_s, [] {});
}

void frmMain::translateForm() {
    guarded(u"frmMain:translateForm"_s, [&] {
        const QString panel = panelName();
        setCaption(panel + u": "_s + translated(u"Current Formula"_s));
        translateTools(m_bar);
    });
}

}  // namespace sorvanto
