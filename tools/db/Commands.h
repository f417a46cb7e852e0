// The commands of sorvanto-db, apart from the process around them.
#pragma once

#include "platform/data/Engine.h"

#include <QStringList>
#include <QTextStream>

namespace sorvanto {

/// cancelled: asked in the midst of what can be stopped. 0: done. 1: the check found something, or the work failed. 2: the command line is wrong.
int runCommand(const QStringList& arguments, QTextStream& out, QTextStream& err,
               const platform::Cancelled& cancelled = {});

/// Whether the command asks if it is to end, and then clears away what it has begun.
bool canBeStopped(const QStringList& arguments);

}  // namespace sorvanto
