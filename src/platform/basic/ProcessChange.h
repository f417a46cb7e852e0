// Another program in the place of this one.
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Ends this program at once, without destructors, and begins another in the same process: what this one held, its locks and
/// open files among them, is free before that begins. Returns only where the other can't be begun.
void changeProcess(const QString& program, const QStringList& arguments);

/// What this process was begun with, without the program's name, as the system knows it: with the toolkit's own options.
QStringList ownArguments();

}  // namespace platform
