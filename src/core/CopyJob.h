// One copy of the database, or of the records of a server, as DailyBackup has it made in a thread of its own: into the first place, tried out where
// that is due; and by a job of its own into the second place, which may hang. What goes wrong behind the copy itself
// does not undo it.
#pragma once

#include "platform/data/DatabaseCopy.h"

#include <QDateTime>
#include <QString>
#include <exception>

namespace sorvanto {

struct CopyJob {
    QString location;  ///< of the records: path of a file, or address of a server
    QString identity;
    QDateTime moment;
    bool rehearse = false;
};

struct CopyResult {
    bool copied = false;
    std::exception_ptr rehearsal{};  ///< why it failed; empty when not
};

struct SecondPlaceJob {
    QString place, identity;
    QDate day;
    /// A copy was made: the place must be there. Else it gets the newest one where it is there and lacks one of the day.
    bool justCopied = false;
};

/// Where the copies of the first place lie.
QString copiesFolder();

/// Into the first place, without a look at the second one. Throws when there is no copy.
CopyResult makeCopy(const CopyJob& job, const platform::Cancelled& cancelled);

/// Puts the newest copy of the first place into the second one; it gets a newer number where the second place has one
/// as high. A second place that has gone away can hold this up for ever: never to be called on the thread of the windows.
void fillSecondPlace(const SecondPlaceJob& job, const platform::Cancelled& cancelled);

}  // namespace sorvanto
