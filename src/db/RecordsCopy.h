// All records from one place to another: from a file or a server, into a new file or an empty server. Keys, counters, the
// identity of the database and its history go along, so that what has come back is what has gone.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/WholeStore.h"

#include <QString>
#include <QStringList>
#include <cstdint>

namespace sorvanto {

/// As platform::copyDatabase, also of the records of a server, as of one moment.
bool copyToFile(const QString& location, const QString& target, const platform::Cancelled& cancelled = {});

struct CopiedRecords {
    bool whole = false;  ///< false when it was ended; there is nothing at the target then
    std::int64_t rows = 0;
    QStringList leftOut;  ///< tables that are none of the records', and that a server has no place for
};

/// from, to: each the path of a file or the address of a server. What is copied is checked before anything is written,
/// and what was written is read once more and compared. Killed or failed at any moment, the target is what it was.
/// Throws permissionDenied for a file that exists, a server that holds records, and one whose address is not its owner's;
/// general when the source is not sound, an archive or of another version, or when what was written differs.
CopiedRecords copyRecords(const QString& from, const QString& to, const platform::RowProgress& progress);

/// Makes the sample pharmacy on an empty server. As createSample, and throws as copyRecords.
void createServerSample(const QString& address, int rows);

}  // namespace sorvanto
