// Looks from single shots of a timer that are renewed before anything is answered, so that windows opened by
// an answer are found as well.
#include "Robot.h"

#include "Stop.h"
#include "Visitor.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

constexpr int lookMilliseconds = 15;
constexpr int longestStay = 120'000;

QString promptOf(const QWidget& window) {
    const auto* label = window.findChild<QLabel*>("prompt");
    return label ? label->text() : QString();
}

bool isNamed(const QWidget& window, const QString& name) {
    return window.objectName() == name ||
           QString::fromLatin1(window.metaObject()->className()).section("::", -1) == name;
}

void press(QWidget& window, const QString& button) {
    Visitor::click(Visitor::find<QPushButton>(window, button));
}

QAction* entryOf(const QWidget& menu, const QString& name) {
    for (QAction* action : menu.actions()) {
        if (action->objectName() == name)
            return action;
    }
    return nullptr;
}

void chooseEntry(QWidget& window, const QString& name) {
    auto& menu = dynamic_cast<QMenu&>(window);
    const QAction* entry = entryOf(menu, name);
    require(entry->isEnabled(), u"The menu entry %1 is off."_s.arg(name));
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(const_cast<QAction*>(entry)).center());
}

}  // namespace

Robot::Robot() {
    m_lastAnswer.start();
    QTimer::singleShot(lookMilliseconds, this, &Robot::look);
}

void Robot::expectDialog(const QString& name, Script script) {
    m_expected.push_back(
        {name, [name](const QWidget& window) { return isNamed(window, name); }, std::move(script)});
}

void Robot::mayCome(const QString& name, Script script) {
    expectDialog(name, std::move(script));
    m_expected.back().optional = true;
}

void Robot::expectBox(const QString& part, const QString& button, Script before) {
    m_expected.push_back({u"the message \"%1\""_s.arg(part),
                          [part](const QWidget& window) { return promptOf(window).contains(part); },
                          [button, before = std::move(before)](QWidget& window) {
                              if (before)
                                  before(window);
                              press(window, button);
                          }});
}

void Robot::alwaysAnswer(const QString& part, const QString& button) {
    expectBox(part, button);
    m_always.push_back(std::move(m_expected.back()));
    m_expected.pop_back();
}

void Robot::expectLine(const QString& part, const QString& answer, Script before) {
    m_expected.push_back({u"the question \"%1\""_s.arg(part),
                          [part](const QWidget& window) {
                              return promptOf(window).contains(part) && window.findChild<QLineEdit*>("line");
                          },
                          [answer, before = std::move(before)](QWidget& window) {
                              auto& line = Visitor::find<QLineEdit>(window, "line");
                              Visitor::type(line, answer);
                              if (before)
                                  before(window);
                              QTest::keyClick(&line, Qt::Key_Return);
                          }});
}

void Robot::expectMenu(const QString& entry, Script before) {
    Expected menu{u"the menu with "_s + entry,
                  [entry](const QWidget& window) { return entryOf(window, entry) != nullptr; },
                  [entry, before = std::move(before)](QWidget& window) {
                      if (before)
                          before(window);
                      chooseEntry(window, entry);
                  }};
    m_expected.insert(m_expected.begin(), std::move(menu));
}

bool Robot::idle() const {
    return std::all_of(m_expected.begin(), m_expected.end(),
                       [](const Expected& each) { return each.optional; }) &&
           !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
}

QString Robot::awaited() const {
    QStringList names;
    for (const Expected& each : m_expected) {
        if (!each.optional)
            names << each.what;
    }
    if (const QWidget* modal = QApplication::activeModalWidget())
        names << u"the end of "_s + described(*modal);
    return names.join(", ");
}

void Robot::forgetOptional() {
    std::erase_if(m_expected, [](const Expected& each) { return each.optional; });
}

// The menu on top, else the dialog on top, unless it was dealt with already.
QWidget* Robot::newWindow() {
    m_seen.removeAll(QPointer<QWidget>());
    QWidget* window = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
    if (!window)
        window = QApplication::activeModalWidget();
    if (!window || !window->isVisible() || m_seen.contains(window))
        return nullptr;
    return window;
}

void Robot::look() {
    QTimer::singleShot(lookMilliseconds, this, &Robot::look);
    QWidget* window = newWindow();
    if (!window)
        watch(QApplication::activeModalWidget());
    if (!window || m_coming != window) {
        m_coming = window;
        return;
    }
    m_coming.clear();
    // A menu or a list window may be shown again: it is only dealt with while it is being answered.
    const QPointer<QWidget> shown(window);
    m_seen.append(shown);
    m_lastAnswer.restart();
    answer(*window);
    m_lastAnswer.restart();
    if (shown && !shown->isVisible())
        m_seen.removeAll(shown);
}

// A window that stays although it was answered keeps everything else waiting inside its own loop.
void Robot::watch(const QWidget* stays) {
    if (!stays)
        m_lastAnswer.restart();
    else if (m_lastAnswer.hasExpired(longestStay))
        stopTour(u"%1 does not close."_s.arg(described(*stays)));
}

void Robot::answer(QWidget& window) {
    for (const Expected& each : m_always) {
        if (each.fits(window))
            return each.act(window);
    }
    auto found = std::find_if(m_expected.begin(), m_expected.end(),
                              [&](const Expected& each) { return !each.optional || each.fits(window); });
    if (found == m_expected.end())
        stopTour(u"nobody expected %1."_s.arg(described(window)));
    if (!found->fits(window))
        stopTour(u"%1 was expected, but there is %2."_s.arg(found->what, described(window)));
    const Expected taken = std::move(*found);
    m_expected.erase(m_expected.begin(), found + 1);
    taken.act(window);
}

QString Robot::described(const QWidget& window) {
    const QString prompt = promptOf(window);
    const QString name = window.objectName().isEmpty() ? QString::fromLatin1(window.metaObject()->className())
                                                       : window.objectName();
    return prompt.isEmpty() ? u"the window %1 \"%2\""_s.arg(name, window.windowTitle())
                            : u"the message \"%1\""_s.arg(prompt);
}

}  // namespace tour
