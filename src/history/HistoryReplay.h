// Whether the records of a file are what its history has made of them: a change that went past the history shows here.
#pragma once

#include "platform/data/Engine.h"

#include <QStringList>

namespace sorvanto {

/// One sentence for each record that differs, the first ones only. Fields that have no history yet (the record is older and
/// was not changed since) can't be told. Empty for a file without history.
QStringList recordProblems(platform::Engine& database);

}  // namespace sorvanto
