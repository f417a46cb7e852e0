// Start, menus and end of the real main window.
#include "Program.h"

#include "core/frmMain.h"
#include "platform/basic/Paths.h"
#include "shared/basMain.h"

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {

Program::Program(Visitor& visitor, const QString& folder) : m_visitor(visitor) {
    platform::setProgramFolder(folder);
    platform::setAsker(&m_asker);
    sorvanto::basMain::endProgram = [this] { m_ended = true; };
}

Program::~Program() {
    m_visitor.setWindow(nullptr);
    m_window.reset();
    platform::setAsker(nullptr);
}

void Program::start(int language, Robot::Script firstDatabase) {
    m_visitor.robot().mayCome("frmWizard", [this, language](QWidget& wizard) {
        m_visitor.picture("language-wizard", &wizard);
        Visitor::click(Visitor::find<QPushButton>(wizard, u"optLanguage_%1"_s.arg(language)));
    });
    if (firstDatabase)
        m_visitor.robot().mayCome("StartQuestion", std::move(firstDatabase));
    m_window = std::make_unique<sorvanto::frmMain>(sorvanto::realParts(sorvanto::basMain::context()));
    m_asker.setParent(m_window.get());
    m_window->Form_Load();
    m_visitor.robot().forgetOptional();
    if (m_ended)
        return;
    m_window->show();
    m_visitor.setWindow(m_window.get());
    m_window->activateWindow();
    require(QTest::qWaitForWindowExposed(m_window.get()), "the main window does not show.");
    m_visitor.settle();
}

void Program::menuBar(const QString& menu, const QString& entry) {
    QMenuBar& bar = *m_window->menuBar();
    for (QAction* action : bar.actions()) {
        if (!action->menu() || action->menu()->objectName() != menu)
            continue;
        m_visitor.robot().expectMenu(entry);
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(action).center());
        m_visitor.settle();
        return;
    }
    stopTour(u"there is no menu %1."_s.arg(menu));
}

void Program::leave() {
    m_visitor.robot().alwaysAnswer("data not saved! Save Changes?", "No");
    menuBar("mnuFile", "mnuExit");
    require(m_ended, "the program does not end.");
    m_visitor.setWindow(nullptr);
}

}  // namespace tour
