#include "ServerlessTour.h"

#include "Program.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

void say(const QString& text) {
    if (!text.isEmpty())
        std::printf("%s\n", qUtf8Printable(text));
}

/// Tips included: they name the place of the records.
void sayTextsOf(const QWidget& window) {
    say(window.windowTitle());
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        say(each->toolTip());
        say(each->accessibleName());
        say(each->accessibleDescription());
        if (const auto* label = qobject_cast<const QLabel*>(each))
            say(label->text());
        if (const auto* line = qobject_cast<const QLineEdit*>(each))
            say(line->text());
        if (const auto* page = qobject_cast<const QPlainTextEdit*>(each))
            say(page->toPlainText());
    }
}

}  // namespace

void runServerless(const QString& programFolder) {
    Visitor visitor(QDir(programFolder).filePath(u"tour"_s), u"serverless-"_s);
    Program program(visitor, programFolder);
    program.start(0, [&](QWidget& question) {
        visitor.picture(u"start"_s, &question);
        sayTextsOf(question);
        Visitor::click(Visitor::find<QAbstractButton>(question, u"cmdNone"_s));
    });
    require(!program.ended(), u"the program ended at its start."_s);
    const auto lookAt = [&](const QString& dialog, const QString& button) {
        visitor.robot().expectDialog(dialog, [&visitor, dialog, button](QWidget& window) {
            visitor.picture(dialog, &window);
            sayTextsOf(window);
            Visitor::click(Visitor::find<QAbstractButton>(window, button));
        });
    };
    lookAt(u"HealthPage"_s, u"cmdClose"_s);
    program.menuBar(u"mnuHelp"_s, u"mnuHealth"_s);
    lookAt(u"frmOptions"_s, u"cmdCancel"_s);
    visitor.tool(u"cmdOptions"_s);
    sayTextsOf(visitor.window());
    program.leave();
}

}  // namespace tour
