#include "core/frmMain.h"

#include "core/CommandBands.h"
#include "core/DailyBackup.h"
#include "core/DatabaseUpdater.h"
#include "core/DeskWatch.h"
#include "core/DraftOffers.h"
#include "core/ErrorStrip.h"
#include "core/Help.h"
#include "core/News.h"
#include "core/NewsCard.h"
#include "core/RecordListPlace.h"
#include "core/StatusLine.h"
#include "core/WindowPlace.h"
#include "mixer/ctlSorvanto.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/EnterKey.h"
#include "platform/widgets/FocusLoss.h"
#include "platform/widgets/UnderWay.h"
#include "shared/BatchLog.h"
#include "shared/Context.h"
#include "shared/Dispensary.h"
#include "shared/DraftStore.h"
#include "shared/Guard.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"
#include "shared/TypedText.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QStatusBar>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::deref;

frmMain::frmMain(Parts parts)
    : m_parts(std::move(parts)), m_context(m_parts.context), m_backup(m_parts.copies()), m_desk(watchDesk()) {
    setObjectName(u"frmMain"_s);
    m_context.window = this;
    buildCommandBands(m_bar);
    buildWindow();
    new Help(m_context, *this, [this] { return screen(m_current); });
    connect(&m_bar, &platform::CommandBar::toolClick, this, &frmMain::ActiveBar_ToolClick);
    connect(&m_bar, &platform::CommandBar::toolKeyPress, this, &frmMain::ActiveBar_ToolKeyPress);
    connect(&m_bar, &platform::CommandBar::toolClick, m_list, &RecordListPlace::follow);
    connect(&m_bar, &platform::CommandBar::toolKeyPress, m_list, &RecordListPlace::follow);
}

frmMain::~frmMain() {
    // The screens leave the listener list as they go, so they go while it is still there.
    m_ended = true;
    delete findChild<Help*>();
    m_offers.reset();
    m_list->setScreen(nullptr);
    m_status->setScreen(nullptr);
    m_screens = {};
    m_captionScreens = {};
    m_frmSorvanto.reset();
    if (m_context.window == this) {
        m_context.window = nullptr;
        m_context.editOptions = nullptr;
        m_context.rescueDatabase = nullptr;
        m_context.databaseOpened = nullptr;
    }
}

void frmMain::buildWindow() {
    m_bar.attach(*this, u"Sorvanto"_s);
    new platform::EnterKey(this);
    m_list = new RecordListPlace(m_context, *this, m_bar);

    m_strip = new ErrorStrip(this);
    auto* stripBar = new QToolBar(this);
    stripBar->setObjectName(u"barReports"_s);
    stripBar->setMovable(false);
    stripBar->setProperty("bare", true);
    stripBar->layout()->setContentsMargins(0, 0, 0, 0);
    stripBar->setContextMenuPolicy(Qt::PreventContextMenu);
    stripBar->toggleViewAction()->setVisible(false);
    QAction* strip = stripBar->addWidget(m_strip);
    stripBar->setVisible(false);
    addToolBar(Qt::BottomToolBarArea, stripBar);
    // A tool bar shows and hides its widgets by their actions.
    connect(m_strip, &ErrorStrip::shownChanged, strip, &QAction::setVisible);
    connect(m_strip, &ErrorStrip::shownChanged, stripBar, &QWidget::setVisible);

    statusBar()->addPermanentWidget(m_strip->problemsButton());
    m_news = new News(m_context, this);
    m_bar.addStrip(*new NewsCard(*m_news));
    m_status = new StatusLine(m_context, *statusBar(), *m_news);
    connect(m_status, &StatusLine::keysLeftClicked, this, &frmMain::showHealth);
    connect(m_list, &RecordListPlace::followed, m_status, &StatusLine::follow);
    watchBenches();
    m_backup->whenCopied([this] {
        m_status->showCopy();
        showKeysLeft();
    });
    restoreWindowPlace(*this);
    setFocus();  // nothing in the window has the keys before somebody gives them to it
}

void frmMain::setCaption(const QString& caption) {
    m_caption = caption;
    if (m_opening)
        return;
    setWindowTitle(titleOf(caption));
}

RecordScreen& frmMain::hosted(ScreenNumber number) const { return deref(m_screens[number]); }

frmCurrFormula& frmMain::currentFormulaScreen() { return m_parts.currentFormula(hosted(currentFormula)); }

BatchLog& frmMain::batchLog() { return deref(dynamic_cast<BatchLog*>(&hosted(logs))); }

Dispensary* frmMain::dispensary() { return dynamic_cast<Dispensary*>(m_screens[patients].get()); }

ctlSorvanto& frmMain::mixer() { return m_parts.mixerControl(deref(m_frmSorvanto)); }

std::unique_ptr<DeskWatch> frmMain::watchDesk() {
    return std::make_unique<DeskWatch>(DeskWatch::Window{
        [this] { return m_listeners.isDelivering(); },
        [this] { return dynamic_cast<TypedText*>(m_screens[static_cast<std::size_t>(m_current)].get()); },
        [this] { QApplication::alert(this); },
    });
}

void frmMain::refreshForm() {
    guarded(u"frmMain:refreshForm"_s, [&] {
        m_bar.recalcLayout();
        enableForm();
        m_list->follow();
        if (m_offers)
            m_offers->look();
    });
}

void frmMain::enableForm() {
    // Reports carry this procedure's error label, not its name.
    guarded(u"frmMain:enableForm_Error"_s, [&] {
        const auto enable = [](RecordScreen& screen) {
            if (screen.Listener() == -1)
                screen.setEnabled(true);
        };
        for (const ScreenNumber number : {formulas, currentFormula, chemicals, logs, patients})
            enable(hosted(number));
        enable(deref(m_frmSorvanto));
    });
}

void frmMain::Form_Activate() {
    const ResumeNext step(u"frmMain:Form_Activate"_s);
    step([&] { hosted(currentFormula).setEnabled(true); });
    step([&] { deref(m_frmSorvanto).setEnabled(true); });
    for (const ScreenNumber number : {formulas, chemicals, logs, patients})
        step([&] { hosted(number).setEnabled(true); });
}

bool frmMain::Form_QueryUnload() {
    bool cancel = true;
    guarded(u"frmMain:Form_QueryUnload"_s, [&] {
        constexpr std::int16_t refused = 2;
        deref(m_frmSorvanto).closeForm();
        for (const ScreenNumber number : {formulas, chemicals, logs}) {
            if (hosted(number).closeForm() == refused)
                return;
        }
        if (m_screens[patients] && m_screens[patients]->closeForm() == refused)
            return;
        cancel = false;
    });
    return cancel;
}

void frmMain::Form_Unload() {
    guarded(u"frmMain:Form_Unload"_s, [&] {
        m_ended = true;
        m_serverLook.reset();
        m_backup->stop();
        saveWindowPlace(*this);
        findChild<Help*>()->close();
        m_list->setScreen(nullptr);
        m_status->setScreen(nullptr);
        for (const ScreenNumber number : {patients, logs, currentFormula, chemicals, formulas})
            m_screens[number].reset();
        m_frmSorvanto.reset();
        m_sorvantoTool = nullptr;
        if (m_drafts)
            m_drafts->flush();
        m_context.endProgram();
    });
}

bool frmMain::staysForTheMix() {
    const auto mix = m_control ? m_control->mixUnderWay() : std::nullopt;
    if (!mix || m_desk->sessionEnds() || qApp->isSavingSession())
        return false;
    QString question;
    switch (mix->course) {
    case MixUnderWay::Course::Mixing:
        question = translated(u"\"%1\" is being mixed, %2 left. The mixer goes on without this program."_s);
        break;
    case MixUnderWay::Course::Paused:
        question = translated(u"The mix of \"%1\" is paused, %2 left. The mixer stays paused."_s);
        break;
    case MixUnderWay::Course::Unseen:
        question = translated(u"The mixer does not answer. It may still be mixing \"%1\"."_s);
        break;
    }
    question.replace(u"%2"_s, mix->timeLeft).replace(u"%1"_s, mix->name);
    question +=
        u"\r\n\r\n"_s + translated(u"The results will be offered for the log at the next start. Quit?"_s);
    return platform::MsgBox(question, {platform::Buttons::YesNo, platform::Icon::Exclamation, true, false}) !=
           platform::Answer::Yes;
}

bool frmMain::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate && !m_ended)
        m_opening ? void(m_activated = true) : Form_Activate();
    return handled;
}

bool frmMain::focusNextPrevChild(bool next) {
    return platform::hasLostFocus(*this) ? platform::passFocusOn(*this)
                                         : QMainWindow::focusNextPrevChild(next);
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (m_opening)
        return event->ignore();
    // A span of changes may be open, and the end of the session asks windows that are blocked.
    if (platform::UnderWay::any()) {
        platform::whenIdle(*this, [this] { close(); });
        return event->ignore();
    }
    if (!m_ended && (staysForTheMix() || Form_QueryUnload()))
        return event->ignore();
    event->accept();
    if (!m_ended)
        Form_Unload();
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    m_status->showCopy();
    if (m_readingOnlyWhy.isEmpty())
        m_backup->startSoon();
}

}  // namespace sorvanto
