// Finding, clicking, typing and waiting, with real mouse and key events.
#include "Visitor.h"

#include "platform/widgets/Boxes.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {

Visitor::Visitor(QString pictureFolder, QString prefix)
    : m_folder(std::move(pictureFolder)), m_prefix(std::move(prefix)) {
    require(QDir().mkpath(m_folder), u"the folder %1 can't be made."_s.arg(m_folder));
    beforeStop([this] {
        if (QWidget* top = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : m_window)
            top->grab().save(QDir(m_folder).filePath(m_prefix + u"problem.png"_s));
    });
}

QWidget& Visitor::window() const {
    require(m_window, "the main window is not there.");
    return *m_window;
}

// A part of a scrolled area is scrolled to, as a user would with the wheel.
void Visitor::bringIntoView(QWidget& control) {
    for (QWidget* parent = control.parentWidget(); parent; parent = parent->parentWidget()) {
        if (auto* scroll = qobject_cast<QScrollArea*>(parent)) {
            scroll->ensureWidgetVisible(&control);
            QCoreApplication::processEvents();
        }
    }
    require(!control.visibleRegion().isEmpty(), u"%1 lies outside its window."_s.arg(control.objectName()));
}

void Visitor::click(QWidget& control) {
    require(control.isEnabled(), u"%1 is off."_s.arg(control.objectName()));
    bringIntoView(control);
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.visibleRegion().boundingRect().center());
}

void Visitor::type(QWidget& field, const QString& text) {
    require(field.isEnabled() && !field.property("readOnly").toBool(),
            u"%1 can't be edited."_s.arg(field.objectName()));
    bringIntoView(field);
    auto* memo = qobject_cast<QPlainTextEdit*>(&field);
    QTest::mouseClick(memo ? memo->viewport() : &field, Qt::LeftButton);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

void Visitor::choose(platform::ChoiceBox& box, const QString& text) {
    const int row = box.findText(text);
    require(row >= 0, u"%1 does not offer \"%2\"."_s.arg(box.objectName(), text));
    require(!box.isReadOnlyBox(), u"%1 can't be edited."_s.arg(box.objectName()));
    click(box);
    require(QTest::qWaitFor([&] { return box.view()->isVisible(); }),
            u"the list of %1 does not open."_s.arg(box.objectName()));
    QTest::keyClick(box.view(), Qt::Key_Home);
    for (int step = 0; step < row; ++step)
        QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    require(QTest::qWaitFor([&] { return !box.view()->isVisible(); }),
            u"the list of %1 does not close."_s.arg(box.objectName()));
}

void Visitor::step(platform::UpDown& upDown, int value) {
    require(upDown.isEnabled(), u"%1 is off."_s.arg(upDown.objectName()));
    while (upDown.value() != value) {
        const int before = upDown.value();
        click(find<QAbstractButton>(upDown, before < value ? u"up"_s : u"down"_s));
        require(upDown.value() != before,
                u"%1 does not go beyond %2."_s.arg(upDown.objectName()).arg(before));
    }
}

void Visitor::openTab(int index) {
    for (auto* tabs : window().findChildren<QTabWidget*>()) {
        if (!tabs->isVisible())
            continue;
        QTabBar& bar = *tabs->tabBar();
        require(bar.isTabEnabled(index), u"the tab \"%1\" is off."_s.arg(bar.tabText(index)));
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(index).center());
        require(tabs->currentIndex() == index, u"the tab \"%1\" does not open."_s.arg(bar.tabText(index)));
        return;
    }
    stopTour("there are no tabs on show.");
}

void Visitor::click(const QString& name) { click(find<QWidget>(name)); }

void Visitor::type(const QString& name, const QString& text) { type(find<QWidget>(name), text); }

void Visitor::choose(const QString& name, const QString& text) {
    choose(find<platform::ChoiceBox>(name), text);
}

void Visitor::tool(const QString& name) {
    auto& button = find<QAbstractButton>(name);
    wait(u"the tool %1"_s.arg(name), [&] { return button.isEnabled(); });
    click(button);
    settle();
}

void Visitor::menu(const QString& toolName, const QString& entry) {
    m_robot.expectMenu(entry);
    tool(toolName);
}

void Visitor::search(const QString& text) {
    auto& box = find<QLineEdit>("searchBox");
    type(box, text);
    QTest::keyClick(&box, Qt::Key_Return);
    settle();
}

void Visitor::wait(const QString& what, const std::function<bool()>& holds, int milliseconds) {
    require(QTest::qWaitFor(holds, milliseconds),
            u"%1 did not come within %2 seconds."_s.arg(what).arg(milliseconds / 1000));
}

void Visitor::settle(int milliseconds) {
    require(QTest::qWaitFor([this] { return m_robot.idle(); }, milliseconds),
            u"still awaited after %1 seconds: %2."_s.arg(milliseconds / 1000).arg(m_robot.awaited()));
    QCoreApplication::processEvents();
}

QString Visitor::textOf(const QWidget& control) {
    const auto* memo = qobject_cast<const QPlainTextEdit*>(&control);
    return memo ? memo->toPlainText() : control.property("text").toString();
}

void Visitor::requireText(const QString& name, const QString& expected) const {
    requireSame(name, textOf(find<QWidget>(name)), expected);
}

void Visitor::picture(const QString& name, QWidget* of) {
    QWidget& shown = of ? *of : window();
    QCoreApplication::processEvents();
    const QString number = m_numbered ? u"%1-"_s.arg(m_pictures.size() + 1, 2, 10, '0'_L1) : QString();
    const QString path = QDir(m_folder).filePath(m_prefix + number + name + u".png"_s);
    require(shown.grab().save(path), u"the picture %1 can't be written."_s.arg(path));
    m_pictures << path;
}

void Visitor::requireNoReport() const {
    for (const auto* strip : window().findChildren<QLabel*>("lblReport")) {
        if (strip->isVisible())
            stopTour(u"the program reports: %1"_s.arg(strip->text()));
    }
}

}  // namespace tour
