// The archives that a database has given off, and which of their files are at hand.
#pragma once

#include "platform/data/Connection.h"
#include "trace/TraceRows.h"

#include <QStringList>
#include <vector>

namespace sorvanto {

struct ArchiveShelf {
    std::vector<platform::ConnectionPtr> open;  ///< in the order of the oldest batch
    std::vector<GivenOffArchive> present;       ///< those of the open files, in their order
    std::vector<GivenOffArchive> absent;
};

/// Looks for the files in these folders by the identity inside, whatever they are called. database: open, the one in
/// use.
ArchiveShelf archivesOf(const platform::ConnectionPtr& database, const QStringList& folders);

}  // namespace sorvanto
