// The one port through which anything asks the user: message boxes, a line of text, a file, a dialog.
// The program installs the Qt side of it; tests install a scripted one.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class QObject;

namespace platform {

enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Icon { None, Critical, Exclamation, Information };
/// The answers' numbers are those that callers hand on.
enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// Look of a message box.
struct BoxStyle {
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    bool secondIsDefault = false;  ///< Enter presses the second button
    bool systemModal = false;      ///< stays above everything
    QString note{};                ///< a quiet line below the prompt
    bool low = false;              ///< at the foot of its window, so that what it asks about stays in sight
};
/// Yes/No/Cancel, exclamation, second button default: the box before a deletion.
inline const BoxStyle deletionStyle{Buttons::YesNoCancel, Icon::Exclamation, true, false, {}, true};

/// What is said beside a line while it is typed.
struct LineNote {
    QString text{};
    bool doubtful = false;  ///< shown in amber
};

/// Company for the line of an input box. It never refuses anything.
struct LineGuide {
    /// The line to put in the place of a line just typed or pasted; it has as many characters.
    std::function<QString(const QString& line)> corrected{};
    /// The note for a line, asked for at the start and after each change.
    std::function<LineNote(const QString& line)> note{};
};

class Asker {
public:
    virtual ~Asker() = default;
    virtual Answer messageBox(const QString& prompt, BoxStyle style, const QString& title) = 0;
    /// The line typed, or the empty text when cancelled.
    virtual QString inputBox(const QString& prompt, const QString& title, const QString& preset,
                             const LineGuide& guide) = 0;
    /// Path of an existing file, native separators, or the empty text when cancelled. The filter is
    /// "Label|name pattern"; names match without regard to case.
    virtual QString openFile(const QString& title, const QString& filter) = 0;
    /// Runs a modal window to its end: exec blocks until the window is hidden. A scripted asker drives
    /// the window by its child objects instead.
    virtual void showModal(QObject& window, const std::function<void()>& exec) = 0;
};

/// Replaces the asker. Not owned; nullptr leaves none, and asking then throws objectNotSet.
void setAsker(Asker* asker);
Asker& asker();

/// Title of a box that states none.
void setApplicationTitle(const QString& title);
QString applicationTitle();

/// A message box. Without a title the application's title stands; an explicitly empty title means none.
Answer MsgBox(const QString& prompt, BoxStyle style = {}, const std::optional<QString>& title = std::nullopt);
QString InputBox(const QString& prompt, const std::optional<QString>& title = std::nullopt,
                 const QString& preset = {}, const LineGuide& guide = {});

}  // namespace platform
