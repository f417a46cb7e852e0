// The real program in this process: its main window with its real dialogs, started and left like by a user.
#pragma once

#include "Visitor.h"

#include "platform/widgets/QtAsker.h"

#include <memory>

namespace sorvanto {
class frmMain;
}

namespace tour {

class Program {
public:
    /// Everything the program reads and writes lies in the folder.
    Program(Visitor& visitor, const QString& folder);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Until the main window is on show. A first start asks the language; its number is then chosen. One without a
    /// database asks what it shall be, which the script answers.
    void start(int language = 0, Robot::Script firstDatabase = {});
    /// By the menu "File", "Exit"; unsaved input is given up.
    void leave();
    /// Opens a menu of the menu bar and chooses an entry.
    void menuBar(const QString& menu, const QString& entry);
    /// Whether it ended itself.
    bool ended() const { return m_ended; }

private:
    Visitor& m_visitor;
    platform::QtAsker m_asker;
    std::unique_ptr<sorvanto::frmMain> m_window;
    bool m_ended = false;
};

}  // namespace tour
