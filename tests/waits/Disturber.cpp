#include "Disturber.h"

#include "core/BenchWatch.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/UnderWay.h"

#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

constexpr int usualDelay = 60, longDelay = 420;  // milliseconds; the latter until the wait shows itself
constexpr unsigned oneIsLong = 12;
constexpr int less = 20;  // pixels

Disturber* ofTheTest = nullptr;
QMap<QString, int> counts;

bool isWaitShown() {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal->objectName() == "longWork"_L1;
}

}  // namespace

Disturber::Disturber(support::ServerProxy& line, unsigned seed)
    : m_line(line), m_random(seed), m_things(things()) {
    ofTheTest = this;
    m_line.whenAsked([this] { QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest)); });
    qApp->installEventFilter(this);
}

Disturber::~Disturber() {
    ofTheTest = nullptr;
    m_line.whenAsked({});
    m_line.delay(0);
}

Disturber& Disturber::current() { return *ofTheTest; }

std::vector<Disturber::Thing> Disturber::things() {
    const auto look = [this] {
        if (auto* benches = m_window ? m_window->findChild<BenchWatch*>() : nullptr)
            benches->look();
    };
    return {
        {"painted", false,
         [] {
             for (QWidget* each : QApplication::allWidgets())
                 each->update();
         }},
        {"looked at benches", false, [=, this] { QTimer::singleShot(1, this, look); }},
        {"asked when idle", false, [=, this] { platform::whenIdle(*this, look); }},
        {"resized", true,
         [this] { m_window->resize(m_window->width(), m_window->height() + (pick(2) == 0 ? less : -less)); }},
        {"tool pressed", true, [this] { pressTool(); }},
        {"clicked", true, [this] { click(); }},
        {"keys pressed", true, [this] { pressKeys(); }},
        {"colours changed", true,
         [] { QCoreApplication::postEvent(qApp, new QEvent(QEvent::ApplicationPaletteChange)); }},
    };
}

// As assistive technology does it, whatever is on top.
void Disturber::pressTool() {
    std::vector<QAction*> on;
    for (const QString& band : {u"MainBar"_s, u"FormBar"_s}) {
        for (const auto& tool : m_window->bar().band(band).tools()) {
            if (tool->enabled() && tool->name().startsWith("cmd"_L1))
                on.push_back(&tool->action());
        }
    }
    if (!on.empty())
        on.at(pick(static_cast<qsizetype>(on.size())))->trigger();
}

// As the system hands it in: what QTest does to windows turns an event loop of its own.
void Disturber::click() {
    const auto buttons = m_window->findChildren<QToolButton*>();
    const QToolButton* button = buttons.at(static_cast<int>(pick(buttons.size())));
    const QPoint place = button->mapTo(m_window, button->rect().center());
    for (const bool pressed : {true, false}) {
        qt_handleMouseEvent(m_window->windowHandle(), place, m_window->mapToGlobal(place),
                            pressed ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                            pressed ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, {}, 0);
    }
}

void Disturber::pressKeys() {
    for (const auto key : {Qt::Key_PageDown, Qt::Key_F9, Qt::Key_A, Qt::Key_Delete}) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
            qt_handleKeyEvent(m_window->windowHandle(), type, key, {}, {});
    }
}

bool Disturber::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && !m_window) {
        m_window = dynamic_cast<frmMain*>(watched);
        m_line.delay(m_window ? usualDelay : 0);
    }
    // A desktop gives the window before it the keys again.
    if (event->type() == QEvent::Hide && watched->objectName() == "longWork"_L1) {
        if (QWidget* before = static_cast<QWidget*>(watched)->parentWidget())
            QApplication::setActiveWindow(before->window());
    }
    return false;
}

bool Disturber::event(QEvent* event) {
    if (event->type() != QEvent::UpdateRequest)
        return QObject::event(event);
    if (m_window && platform::UnderWay::any()) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest));
        disturb();
    }
    return true;
}

void Disturber::disturb() {
    ++counts[u"turns"_s];
    m_line.delay(pick(oneIsLong) == 0 ? longDelay : usualDelay);  // the next answer
    if (also)
        also();
    if (m_things.empty())
        return;
    const Thing& thing = m_things.at(pick(static_cast<qsizetype>(m_things.size())));
    if (thing.aboveWindow && !isWaitShown())
        return;
    ++counts[QLatin1String(thing.name)];
    m_orders << QLatin1String(thing.name);
    thing.happen();
}

QString Disturber::account() {
    QStringList told;
    for (auto each = counts.begin(); each != counts.end(); ++each)
        told << u"%1 %2"_s.arg(each.key()).arg(each.value());
    return told.join(u", "_s);
}
