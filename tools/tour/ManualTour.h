// The pictures of the manual that no other run takes, in one language: windows of the sample pharmacy and of its start.
#pragma once

#include <QString>

namespace tour {

/// The folder has neither options nor a database; at the end it has the sample pharmacy, with a copy of today. A file
/// for each picture: <pictures>/<name on the pages>.png.
void runManual(const QString& programFolder, const QString& pictureFolder, int language);

/// In the folder as runManual left it: the window of a start at which something is wrong ("start-damaged", "-missing",
/// "-folder", "-locked", "-options"). What is broken for it is mended again; the lock is held by the caller.
void runBrokenStart(const QString& programFolder, const QString& pictureFolder, const QString& name);

}  // namespace tour
