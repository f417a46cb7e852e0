// A user at the screen: finds the control that is on show under a name, clicks, types, chooses, waits for
// what should come, and takes pictures. Whatever can't be done ends the tour with a sentence.
#pragma once

#include "Robot.h"
#include "Stop.h"

#include <QLineEdit>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>

namespace platform {
class ChoiceBox;
class MemoBox;
class UpDown;
}  // namespace platform

namespace tour {

using namespace Qt::StringLiterals;

class Visitor {
public:
    /// Pictures go to the folder, each name with the prefix in front; the main window comes later.
    Visitor(QString pictureFolder, QString prefix);

    void setWindow(QWidget* window) { m_window = window; }
    QWidget& window() const;
    Robot& robot() { return m_robot; }

    /// The control of that name which is visible in the window.
    template <class T>
    static T& find(const QWidget& root, const QString& name) {
        for (T* each : root.findChildren<T*>(name)) {
            if (each->isVisible() && each->window() == root.window())
                return *each;
        }
        stopTour(u"there is no %1 on show in \"%2\"."_s.arg(name, root.window()->windowTitle()));
    }
    template <class T>
    T& find(const QString& name) const {
        return find<T>(window(), name);
    }

    static void click(QWidget& control);
    /// Replaces what a field holds.
    static void type(QWidget& field, const QString& text);
    /// Chooses a row of a drop-down list by its text.
    static void choose(platform::ChoiceBox& box, const QString& text);
    /// Steps a pair of arrows to a value.
    static void step(platform::UpDown& upDown, int value);
    /// Chooses a tab of the one tab control on show.
    void openTab(int index);
    void click(const QString& name);
    void type(const QString& name, const QString& text);
    void choose(const QString& name, const QString& text);
    /// Clicks a tool of the command bar once it is on, and lets what it opens come to its end.
    void tool(const QString& name);
    /// Opens a menu of the command bar by its tool and chooses an entry.
    void menu(const QString& tool, const QString& entry);
    /// Text into the search box, then Enter.
    void search(const QString& text);

    /// Waits until it holds; ends the tour with "<what> did not come" after the deadline.
    void wait(const QString& what, const std::function<bool()>& holds, int milliseconds = 15'000);
    /// Waits until all windows that were announced have been answered.
    void settle(int milliseconds = 15'000);
    /// Requires the text of a control on show.
    void requireText(const QString& name, const QString& expected) const;

    void picture(const QString& name, QWidget* of = nullptr);
    /// Pictures bear their names alone from now on, without a number in front.
    void nameAlone() { m_numbered = false; }
    const QStringList& pictures() const { return m_pictures; }
    /// Stops when the program's strip tells of an error.
    void requireNoReport() const;

private:
    static void bringIntoView(QWidget& control);
    static QString textOf(const QWidget& control);

    QString m_folder, m_prefix;
    QWidget* m_window = nullptr;
    bool m_numbered = true;
    QStringList m_pictures;
    Robot m_robot;
};

}  // namespace tour
