// What the program has just done, in a line: "Saved 22:14". Who did it announces it, and knows nothing of where it is
// shown, or whether it is shown at all.
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace sorvanto {

/// What can be done about it. It may be run minutes later: what it needs, it holds or looks up then, and what fails is
/// reported.
struct HappeningAction {
    QString text;  ///< in the user's language, as on a button
    std::function<void()> run;
    bool once = false;  ///< taken away from everywhere once it was run
};

struct Happening {
    QString text;  ///< in the user's language
    std::vector<HappeningAction> actions;
    /// Shown as a card as well, which stays until it is answered or closed.
    bool card = false;
    /// Something to be warned of: the card bears that sign.
    bool caution = false;
};

/// Never throws.
void announce(const Happening& happening) noexcept;
void announce(const QString& text) noexcept;

/// "Exported Chemicals.xls", with Open and Show in folder. text: with %1 for the file's name.
Happening fileHappening(const QString& text, const QString& path);
void announceFile(const QString& text, const QString& path) noexcept;

}  // namespace sorvanto
