// The state of everything that the records depend on, line by line, as the health page shows it.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace sorvanto {

struct Context;

struct HealthLine {
    QString name, state, note;
    bool good = true;
    QString detail{};            ///< a second, quiet line; may be empty
    bool isSecondPlace = false;  ///< has the box for the place
};

/// What only the main window knows.
struct WindowHealth {
    QString mixer{};      ///< what the panel says of the line to the mixer
    QString mixerNote{};  ///< "simulated", or nothing
    bool mixerGood = true;
    QString readingOnly{};   ///< why nothing may be written; empty when it may
    QString preparations{};  ///< what became of every preparation; empty: not known yet
    QString preparationsNote{};
    bool preparationsGood = true;
};

/// What is found within a moment; never throws. The soundness of the file is looked at apart, since it takes longer.
std::vector<HealthLine> healthLines(const Context& context, const WindowHealth& window);

/// Of the database that is open, in the place of its line: the problems that the engine found in it.
HealthLine checkedDatabase(const Context& context, const QStringList& problems, const WindowHealth& window);

}  // namespace sorvanto
