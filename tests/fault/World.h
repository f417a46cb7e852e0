// The whole program in a folder of its own, the mixer in memory, and a user who answers everything and remembers
// what he was told. A world can begin with what another one left on its disk.
#pragma once

#include "Image.h"
#include "mixer/MemoryLine.h"
#include "platform/ask/Ask.h"
#include "screens/ScreenTest.h"

#include <optional>

namespace fault {

/// Says Yes and OK, types "20" where a line is asked for, and signs.
class WillingUser : public platform::Asker {
public:
    platform::Answer messageBox(const QString& prompt, platform::BoxStyle style,
                                const QString& title) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& preset,
                     const platform::LineGuide& guide) override;
    QString openFile(const QString&, const QString&) override { return {}; }
    void showModal(QObject& window, const std::function<void()>& exec) override;

    QStringList boxes;
    int signings = 0;
};

class World : public ScreenTest {
public:
    /// OldFile: as Open, on a database of version 1.0.
    enum class Window { Open, None, OldFile };
    /// The sample records of the screens' tests, or that folder.
    /// mixer: as it stands, on the line.
    explicit World(Window window = Window::Open, const Image* left = nullptr,
                   const sorvanto::mixersim::SimulatedMixer* mixer = nullptr);
    ~World() override;
    void TestBody() override {}

    /// Starts the program; for a world that began without a window.
    void open();
    /// What the user was told: boxes, reports, the cards of the mixer's panel, and what say() took down.
    QStringList told();
    void say(const QString& text) { m_said << text; }
    /// Told a second time: everything that is not in the other list.
    QStringList toldBeyond(const QStringList& usual);

    QPushButton* panelButton(const char* name) const;
    bool isShown(const char* panelButtonName) const;
    QStringList offers() const;

    using ScreenTest::click;
    using ScreenTest::clock;
    using ScreenTest::databasePath;
    using ScreenTest::folder;
    using ScreenTest::search;
    using ScreenTest::window;
    WillingUser user;
    sorvanto::test::MemoryLine line;
    /// Called before each statement of the program.
    std::function<void()> onStatement;

protected:
    void seed() override;

private:
    void bringUpToDate() const;

    QtMessageHandler m_keptHandler;
    Window m_kind;
    const Image* m_left;
    QStringList m_said;
};

/// Everything that the tables hold, and which there are, as text. Identities are random and left out. A file that
/// is missing or can't be read gives a word in angle brackets.
std::string recordsOf(const QString& database);

/// What is wrong with a database file as sorvanto-db sees it; empty when nothing is.
QStringList problemsOf(const QString& database);

}  // namespace fault
