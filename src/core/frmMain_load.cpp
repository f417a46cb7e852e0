// The start of the program. Each stage relies on those before it; each statement is guarded by itself, so
// that one failure is reported and the start goes on with whatever is there.
#include "config/LastGoodOptions.h"
#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "core/BenchWatch.h"
#include "core/CopySettings.h"
#include "core/DatabaseUpdater.h"
#include "core/DeskWatch.h"
#include "core/DraftOffers.h"
#include "core/ErrorStrip.h"
#include "core/Leftovers.h"
#include "core/ServerCopy.h"
#include "core/StatusLine.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SettingsFile.h"
#include "platform/data/Engine.h"
#include "platform/widgets/SystemTexts.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/UnderWay.h"
#include "platform/widgets/WindowState.h"
#include "shared/Context.h"
#include "shared/DraftStore.h"
#include "shared/ErrorReporter.h"
#include "shared/FileIdentity.h"
#include "shared/Guard.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "shared/databaseInUse.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::deref;

namespace {

/// Whose catalogue of Qt's own texts goes with the language; a number without a name leaves English.
QLocale localeOf(std::int16_t language) {
    switch (language) {
    case 1:
        return {QLocale::Spanish, QLocale::Spain};
    case 2:
        return {QLocale::German, QLocale::Germany};
    case 3:
        return {QLocale::French, QLocale::France};
    case 4:
        return {QLocale::Russian, QLocale::Russia};
    case 5:
        return {QLocale::Portuguese, QLocale::Brazil};
    case 6:
        return {QLocale::Italian, QLocale::Italy};
    case 7:
        return {QLocale::French, QLocale::Switzerland};
    default:
        return {QLocale::English, QLocale::UnitedStates};
    }
}

}  // namespace

void frmMain::Form_Load(const ShowWindow& show) {
    load(show);
    endOpening();
    if (!m_ended)
        platform::whenIdle(*m_others, [this] { m_others->look(); });
}

void frmMain::load(const ShowWindow& show) {
    using Stage = void (frmMain::*)(const ResumeNext&);
    constexpr Stage stages[] = {
        &frmMain::loadSharedObjects, &frmMain::describeReports,      &frmMain::updateDatabase,
        &frmMain::loadLanguage,      &frmMain::refuseSecondInstance, &frmMain::translateItself,
        &frmMain::loadMixerScreen,   &frmMain::hostMixerScreen,
    };
    const ResumeNext step(u"frmMain:Form_Load"_s);
    for (const Stage stage : stages) {
        (this->*stage)(step);
        if (m_ended)
            return;
    }
    hostScreens(step, show);
    keepDrafts(step);
    openFormulas(step);
}

void frmMain::loadSharedObjects(const ResumeNext& step) {
    step([&] { m_context.connection = std::make_shared<platform::Connection>(); });
    step([&] {
        m_context.reporter = m_parts.reporter();
        m_strip->follow(m_context.reporter);
    });
    step([] { platform::SettingsFile(platform::windowStateFile()).expectRead(); });
    const bool firstStart = !platform::fileExists(platform::programFolder() + u"\\options.xml"_s) &&
                            !lastGoodOptions::kept().isValid();
    if (m_parts.bringOptionsBack)
        step([&] { m_parts.bringOptionsBack(); });
    step([&] { m_context.options = std::make_shared<clsOptions>(m_context); });
    if (m_parts.rescueOptions)
        step([&] { m_parts.rescueOptions(deref(m_context.options)); });
    if (m_parts.databaseRescue)
        m_context.rescueDatabase = m_parts.databaseRescue(firstStart);
    if (m_context.startsOnCopy)
        step([&] { takeStandIn(m_context); });
    // The dialog opened for another location of the database shows its result in the window as well.
    m_context.editOptions = [this] { editOptions(); };
}

void frmMain::describeReports(const ResumeNext& step) {
    step([&] { deref(m_context.reporter).ReportPath(platform::programFolder()); });
    step([&] { deref(m_context.reporter).ReportProduct(platform::applicationTitle()); });
    step([&] { deref(m_context.reporter).ReportVersion(programVersion()); });
    step([&] { deref(m_context.reporter).ReportNote(QString()); });
    step([&] { deref(m_context.reporter).ReportStore(deref(m_context.options).StoreName()); });
    step([&] { deref(m_context.reporter).ReportPhone(deref(m_context.options).Phone()); });
}

// Before anything reads a record: the one moment at which the file's structure may change.
void frmMain::updateDatabase(const ResumeNext& step) {
    QString version;
    step([&] { version = deref(m_context.options).DBVersion(); });
    step([&] { m_updater = m_parts.updater(); });
    step([&] {
        QVariant unread;
        auto& options = deref(m_context.options);
        deref(m_updater).IdentifyStore(QString(), QString(), options.StoreName(), options.Phone(), unread);
    });
    platform::ConnectionPtr connection;
    step([&] { connection = openDB(m_context); });
    const QString path = platform::programFolder() + u"\\dbupdate.xml"_s;
    bool applied = false;
    step([&] { deref(m_updater).ApplyUpdates(connection, path, version, applied); });
    if (applied)
        step([&] { deref(m_context.options).DBVersion(version); });
    step([&] { rememberDatabase(); });
    if (m_parts.seekPreviousInstance && !m_ended)
        step([&] { m_parts.seekPreviousInstance(); });
}

// When the file is lost one day, its identity tells which copies are of it.
void frmMain::rememberDatabase() {
    const auto connection = m_context.connection;
    const auto identity = connection ? knownFileIdentity(*connection) : std::nullopt;
    if (identity && m_context.databaseLocation && !m_context.standIn)
        CopySettings::remember(m_context.databaseLocation(), identity->identity);
}

void frmMain::loadLanguage(const ResumeNext& step) {
    const auto language = std::make_shared<clsLanguage>();
    m_context.language = language;
    platform::setTextTranslator(translated);
    step([&] { language->setLanguage(deref(m_context.options).Language()); });
    step([&] { platform::setSystemLanguage(localeOf(deref(m_context.options).Language())); });
    m_status->showDatabase();
}

void frmMain::refuseSecondInstance(const ResumeNext& step) {
    InstanceState state;
    step([&] { state = m_parts.previousInstance(); });
    if (!state.runs) {
        step([&] { openForReading(state.readingOnly); });
        m_context.databaseOpened = [this] { databaseOpened(); };
        if (state.readingOnly.isEmpty())  // else another computer may be writing them
            removeLeftovers(databaseFile(m_context));
        return keepFoldersToOwner();
    }
    step([&] {
        platform::MsgBox(
            translated(u"Sorvanto control panel is already running, only one instance allowed."_s),
            {platform::Buttons::Ok, platform::Icon::Critical});
    });
    m_ended = true;
    m_context.endProgram();
}

// Another file than at the start, or the same one once more: told when it is not this program's alone.
void frmMain::databaseOpened() {
    guarded(u"frmMain:databaseOpened"_s, [&] {
        m_status->showDatabase();
        m_status->showCopy();
        showKeysLeft();
        rememberDatabase();
        if (m_control)
            m_control->databaseOpened();
        const InstanceState state = m_parts.previousInstance();
        openForReading(state.runs ? translated(u"The database is in use by another program."_s)
                                  : state.readingOnly);
    });
}

void frmMain::openForReading(const QString& reason) {
    const bool whole = reason.isEmpty() || m_context.standIn;
    m_readingOnlyWhy = whole ? reason : translated(u"Open for reading only: %1"_s).replace(u"%1"_s, reason);
    m_status->setReadingOnly(m_readingOnlyWhy);
    const auto connection = m_context.connection;
    if (m_readingOnlyWhy.isEmpty() || !connection || connection->state() != 1)
        return;
    connection->engine().refuseChanges();
}

void frmMain::translateItself(const ResumeNext& step) {
    step([&] { translateForm(); });
    step([&] { showKeysLeft(); });
}

void frmMain::loadMixerScreen(const ResumeNext& step) {
    step([&] {
        m_frmSorvanto = m_parts.mixerScreen();
        m_frmSorvanto->Form_Load();
    });
    step([&] {
        auto& options = deref(m_context.options);
        m_control = &mixer();
        m_control->setDesk(m_desk.get());
        m_control->setTextSource([language = m_context.language](const QString& english) {
            return language ? language->known(english) : QString();
        });
        m_control->SetStoreInfo(options.StoreName(), QString(), options.Phone());
    });
    step([&] {
        auto& options = deref(m_context.options);
        mixer().setSettings(options.CommPort(), options.Language(), options.OverrideSpeed(),
                            deref(m_context.language).translationPath());
    });
}

void frmMain::hostMixerScreen(const ResumeNext& step) {
    m_formNames = {u"frmCurrent"_s, u"frmFormula"_s, u"frmChemical"_s, u"frmPatient"_s, u"frmLog"_s};
    step([&] { m_sorvantoTool = &m_bar.band(u"Sorvanto"_s).tool(u"frmSorvanto"_s); });
    step([&] { deref(m_sorvantoTool).setForm(m_frmSorvanto.get()); });
    step([&] { deref(m_sorvantoTool).setDescription(u"Sorvanto Control Panel"_s); });
    step([&] { deref(m_sorvantoTool).setToolTip(u"Sorvanto"_s); });
    step([&] { m_context.mixTypes = mixer().MixTypes(); });
    step([&] { m_context.jarSizes = mixer().JarSizes(); });
    step([&] { m_context.mixTimes = mixer().MixTimes(); });
}

// What the first picture shows comes before it.
void frmMain::hostScreens(const ResumeNext& step, const ShowWindow& show) {
    step([&] { m_showPatients = deref(m_context.options).ShowPatients(); });
    step([&] { m_bar.band(u"FormBar"_s).tool(u"cmdPatients"_s).setVisible(m_showPatients != 0); });
    step([&] { m_bar.band(u"mnuForms"_s).tool(u"mnuPatients"_s).setVisible(m_showPatients != 0); });
    for (const ScreenRow& row : screenTable) {
        if (row.number != patients || m_showPatients != 0)
            hostScreen(step, row);
        if (row.number == formulas)
            showFirstPicture(show);
    }
}

void frmMain::hostScreen(const ResumeNext& step, const ScreenRow& row) {
    platform::Tool* tool = nullptr;
    auto& screen = m_screens[row.number];
    step([&] {
        auto& child = m_bar.band(u"Forms"_s).childBand(QString::fromLatin1(row.childBand));
        tool = &child.tool(toolNameOf(row));
    });
    step([&] {
        screen = m_parts.screens[row.number]();
        screen->Form_Load();
        screen->toolActions().expectOn(m_bar);
    });
    step([&] { deref(tool).setForm(&deref(screen)); });
    step([&] { deref(tool).setDescription(QString::fromLatin1(row.text)); });
    step([&] { deref(tool).setToolTip(QString::fromLatin1(row.text)); });
}

// Text that an earlier run left unsaved is offered from the first moment on.
void frmMain::keepDrafts(const ResumeNext& step) {
    m_drafts = std::make_unique<DraftStore>();
    m_offers = std::make_unique<DraftOffers>(*this, *m_drafts);
    for (const ScreenRow& row : screenTable) {
        if (auto* screen = dynamic_cast<DraftedScreen*>(m_screens[row.number].get()))
            step([&] {
                m_offers->addScreen(*screen, m_bar.band(u"FormBar"_s).tool(QLatin1String(row.button)));
            });
    }
    step([&] { m_drafts->read(); });
}

void frmMain::openFormulas(const ResumeNext& step) {
    step([&] { deref(m_frmSorvanto).Listener(-1); });
    step([&] { ActiveBar_ToolClick(m_bar.band(u"FormBar"_s).tool(u"cmdFormulas"_s)); });
    step([&] { refreshForm(); });
    step([&] { mixer().StartControl(); });
    watchServer();
}

}  // namespace sorvanto
