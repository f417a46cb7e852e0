// Start of the program: application, look, resources, main window.
#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "platform/widgets/QtAsker.h"
#include "platform/widgets/Theme.h"
#include "shared/basMain.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QString name = QStringLiteral("Sorvanto Control Panel");
    QApplication::setApplicationName(name);
    QApplication::setOrganizationName(name);
    QApplication::setApplicationVersion(sorvanto::programVersion());
    QApplication::setDesktopFileName(QStringLiteral("sorvanto"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/app/sorvanto.svg")));
    platform::setApplicationTitle(name);
    platform::prepareTheme(application);

    platform::QtAsker asker;
    platform::setAsker(&asker);
    sorvanto::frmMain window;
    asker.setParent(&window);
    window.Form_Load();
    platform::finishTheme();
    window.show();
    return QApplication::exec();
}
