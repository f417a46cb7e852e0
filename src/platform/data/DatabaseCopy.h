// A checked copy of a database file, made by the engine, so that it is whole whatever happens
// to the file meanwhile. Uses connections of its own: it may run in any thread.
#pragma once

#include "platform/data/Engine.h"

#include <QString>
#include <functional>

namespace platform {

/// Copies the file, which may be in use, as of one moment. The copy is readable by its owner alone, bears the
/// name target + ".part" until it is checked, and then takes the place of an older file of that name; the folder
/// of the target is made when it is missing. With cancelled it is made in small pieces, between which other
/// connections can write. False when it was cancelled: nothing is left then.
/// Throws permissionDenied when the copy can't be made or another program keeps the file, general when the copy
/// is not sound, deviceIo or diskFull when the disk fails.
bool copyDatabase(const QString& file, const QString& target, const Cancelled& cancelled = {});

/// A new file in the same way, whatever it is made from. fill: writes everything into the empty file of that path; false
/// when it was cancelled.
bool makeCheckedFile(const QString& target, const std::function<bool(const QString& file)>& fill,
                     const Cancelled& cancelled = {});

}  // namespace platform
