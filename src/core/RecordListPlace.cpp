#include "core/RecordListPlace.h"

#include "core/RecordListPane.h"
#include "core/WindowPlace.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/HostArea.h"
#include "platform/widgets/RecordList.h"
#include "platform/widgets/Theme.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"

#include <QAction>
#include <QEvent>
#include <QMainWindow>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int wideWindow = 1600;
constexpr QSize buttonSize(38, 38);
constexpr int buttonPicture = 22;
constexpr auto besideSetting = "window/recordList";

QAction* keyAction(QMainWindow& window, const QKeySequence& keys) {
    auto* action = new QAction(&window);
    action->setShortcut(keys);
    window.addAction(action);
    return action;
}

}  // namespace

RecordListPlace::RecordListPlace(const Context& context, QMainWindow& window, platform::CommandBar& bar)
    : QObject(&window), m_window(window), m_bar(bar), m_list(new platform::RecordList),
      m_pane(new RecordListPane(context, *m_list)), m_button(new QToolButton),
      m_beside(windowSetting(besideSetting, true)) {
    m_pane->setParent(m_list);
    m_bar.setCompanion(*m_list);
    m_button->setObjectName(u"cmdRecordList"_s);
    m_button->setCheckable(true);
    m_button->setFixedSize(buttonSize);
    m_button->setIconSize({buttonPicture, buttonPicture});
    m_button->setIcon(platform::icon(u"list"_s));
    m_button->setFocusPolicy(Qt::NoFocus);
    m_bar.addAtEnd(u"MainBar"_s, *m_button);
    connect(m_button, &QToolButton::toggled, this, [this](bool on) {  // also by a screen reader
        if (on != isOpen())
            toggle();
    });
    connect(keyAction(window, Qt::Key_F9), &QAction::triggered, this, &RecordListPlace::toggle);
    connect(keyAction(window, Qt::CTRL | Qt::Key_L), &QAction::triggered, this, &RecordListPlace::goToFilter);
    connect(m_pane, &RecordListPane::chose, this, &RecordListPlace::leave);
    connect(m_list, &platform::RecordList::left, this, &RecordListPlace::leave);
    window.installEventFilter(this);
}

void RecordListPlace::translate() {
    const QString tip = translated(u"Show or hide the list of records"_s);
    m_button->setToolTip(tip + u" (F9)"_s);
    m_button->setAccessibleName(tip);
}

void RecordListPlace::setScreen(RecordScreen* screen) {
    m_picks = false;
    m_pane->setScreen(dynamic_cast<ListedScreen*>(screen));
    if (m_pane->hasScreen())
        translate();
    place();
}

void RecordListPlace::follow() {
    const bool choosable = m_bar.band(u"MainBar"_s).tool(u"cmdNext"_s).enabled();
    m_pane->setChoosable(choosable);
    m_pane->follow();
    emit followed();
    if (m_picks && !choosable)
        leave();
}

void RecordListPlace::followOthers() {
    m_pane->followOthers();
    follow();
}

bool RecordListPlace::isWide() const { return m_window.width() >= wideWindow; }

bool RecordListPlace::isOpen() const { return m_pane->hasScreen() && (isWide() ? m_beside : m_picks); }

void RecordListPlace::place() {
    const bool open = isOpen();
    m_bar.showCompanion(!open      ? platform::Companion::Hidden
                        : isWide() ? platform::Companion::Beside
                                   : platform::Companion::Instead);
    m_button->setEnabled(m_pane->hasScreen());
    m_button->setChecked(open);
    m_pane->setShown(open);
    follow();
}

void RecordListPlace::toggle() {
    if (!m_pane->hasScreen())
        return;
    if (isWide()) {
        m_beside = !m_beside;
        saveWindowSetting(besideSetting, m_beside);
    } else {
        m_picks = !m_picks;
    }
    place();
    if (m_picks && !isWide())
        m_list->startFiltering();
}

void RecordListPlace::goToFilter() {
    if (!m_pane->hasScreen())
        return;
    if (!isOpen())
        toggle();
    m_list->startFiltering();
}

void RecordListPlace::leave() {
    m_picks = false;
    place();
}

bool RecordListPlace::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Resize)
        place();
    return false;
}

}  // namespace sorvanto
