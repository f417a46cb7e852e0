// Start of the program: application, look, resources, main window.
#include "core/Application.h"
#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "platform/widgets/QtAsker.h"
#include "platform/widgets/Theme.h"
#include "shared/basMain.h"

#include <QIcon>

using namespace Qt::StringLiterals;

using sorvanto::Application;

int main(int argc, char** argv) {
    Application application(argc, argv);
    const QString name = u"Sorvanto Control Panel"_s;
    Application::setApplicationName(name);
    Application::setOrganizationName(name);
    Application::setApplicationVersion(sorvanto::programVersion());
    Application::setDesktopFileName(u"sorvanto"_s);
    Application::setWindowIcon(QIcon(u":/app/sorvanto.svg"_s));
    platform::setApplicationTitle(name);
    platform::prepareTheme(application);

    platform::QtAsker asker;
    platform::setAsker(&asker);
    sorvanto::frmMain window;
    asker.setParent(&window);
    window.Form_Load();
    platform::finishTheme();
    window.show();
    return Application::exec();
}
