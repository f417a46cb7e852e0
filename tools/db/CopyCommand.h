// sorvanto-db copy: from a file or a server to the other.
#pragma once

#include "platform/data/Engine.h"

#include <QString>
#include <QTextStream>

namespace sorvanto {

/// Tells on err how far it is once it takes longer than a moment. Gives the exit code.
int copyCommand(const QString& from, const QString& to, QTextStream& out, QTextStream& err,
                const platform::Cancelled& cancelled);

/// Checks a file, or the records of a server as of one moment; against the archive that they go on from where one is named,
/// and that one too. Gives a line for each problem.
QStringList problemsOf(const QString& location, const QString& archive);

}  // namespace sorvanto
