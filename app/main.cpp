// Start of the program: command line, application, look, resources, folder, main window.
#include "core/Application.h"
#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/FontList.h"
#include "platform/widgets/QtAsker.h"
#include "platform/widgets/Theme.h"
#include "setup/CommandLine.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <optional>

using namespace Qt::StringLiterals;

using sorvanto::Application;

namespace {

QStringList wordsOf(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    return words;
}

void describe(Application& application) {
    const QString name = u"Sorvanto Control Panel"_s;
    Application::setApplicationName(name);
    Application::setOrganizationName(name);
    Application::setApplicationVersion(sorvanto::programVersion());
    Application::setDesktopFileName(u"sorvanto"_s);
    platform::setApplicationTitle(name);
    platform::applyTheme(application);
}

/// What could not be brought up to date; nothing, after a word on it, when there is no folder to work in.
std::optional<QStringList> enterFolder(const QString& argument) {
    try {
        return sorvanto::enterProgramFolder(argument);
    } catch (const platform::RuntimeError& failure) {
        platform::MsgBox(failure.description(), {platform::Buttons::Ok, platform::Icon::Critical});
        return std::nullopt;
    }
}

/// The program goes on with the files as they are.
void report(const QStringList& problems) {
    for (const QString& problem : problems) {
        sorvanto::guarded(u"main:enterFolder"_s,
                          [&] { throw platform::RuntimeError(platform::error::deviceIo, problem); });
    }
}

}  // namespace

int main(int argc, char** argv) {
    QTextStream out(stdout), err(stderr);
    const QStringList words = wordsOf(argc, argv);
    if (sorvanto::needsNoWindow(words))
        return sorvanto::runWithoutWindow(words, out, err);
    platform::FontList fonts;
    Application application(argc, argv);  // takes the toolkit's own options out of the line
    const sorvanto::StartOrder order = sorvanto::readStart(Application::arguments().mid(1));
    if (!order.mistake.isEmpty())
        return sorvanto::runWithoutWindow(Application::arguments().mid(1), out, err);
    describe(application);

    platform::QtAsker asker;
    platform::setAsker(&asker);
    const std::optional<QStringList> problems = enterFolder(order.folder);
    if (!problems)
        return 1;
    fonts.wait();
    sorvanto::Context& context = sorvanto::basMain::context();
    context.startsOnCopy = order.copy;
    sorvanto::frmMain window(sorvanto::realParts(context));
    asker.setParent(&window);
    window.Form_Load([&] { window.show(); });
    report(*problems);
    window.show();
    application.noteBlocks(context);
    Application::showLongSealing();
    return Application::exec();
}
