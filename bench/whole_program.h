// The main window with all its screens over a large file, driven from inside, each action up to its picture.
#pragma once

#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "program_folder.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace bench {

/// Shows a modal window, lets it paint, hands it to the reply and hides it. Deletions are confirmed,
/// and what is told is written down; no other question may come.
class ReplyingAsker : public platform::Asker {
public:
    std::function<void(QWidget&)> reply;
    QString file;  ///< the one chosen where a file is asked for

    platform::Answer messageBox(const QString& prompt, platform::BoxStyle style,
                                const QString& title) override;
    QString inputBox(const QString&, const QString&, const QString&, const platform::LineGuide&) override {
        return {};
    }
    QString openFile(const QString&, const QString&) override { return file; }
    void showModal(QObject& window, const std::function<void()>& exec) override;
};

class WholeProgram {
public:
    /// rows: of every table; statements: run on the file before the start; prepare: then, with the program folder set.
    WholeProgram(int rows, const char* statements, const std::function<void()>& prepare = {});
    /// Ends the process when anything was reported: what failed is no figure.
    ~WholeProgram();

    sorvanto::frmMain& window() { return *m_window; }
    const ProgramFolder& folder() const { return m_folder; }
    /// A tool click, and everything it set going painted.
    void click(const char* band, const char* tool);

    ReplyingAsker asker;

private:
    ProgramFolder m_folder;
    std::unique_ptr<sorvanto::frmMain> m_window;
};

/// Runs what is posted, paints included.
void settle();

}  // namespace bench
