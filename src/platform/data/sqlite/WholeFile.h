// All rows of a file as they are stored.
#pragma once

#include "platform/data/WholeStore.h"

namespace platform::sqlite {

/// A file that nobody else uses. Throws as openFile.
std::unique_ptr<WholeStore> readWholeFile(const QString& path);

/// To be filled: its triggers rest until the commit.
std::unique_ptr<WholeStore> fillWholeFile(const QString& path);

/// Makes tables in a file that is there and empty. Throws when the engine refuses a statement.
void makeTables(const QString& path, const QByteArray& statements);

}  // namespace platform::sqlite
