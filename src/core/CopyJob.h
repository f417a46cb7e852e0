// One copy of the database, as DailyBackup has it made in a thread of its own: into the first place, tried out where
// that is due, and into the second place. What goes wrong behind the copy itself does not undo it.
#pragma once

#include "platform/data/DatabaseCopy.h"

#include <QDateTime>
#include <QString>
#include <exception>

namespace sorvanto {

struct CopyJob {
    QString file, identity;
    QDateTime moment;
    QString secondPlace;  ///< empty: none
    /// Else the newest copy goes to the second place alone, where that lacks one of the day.
    bool first = true;
    bool rehearse = false;
};

struct CopyResult {
    bool copied = false;                            ///< into the first place
    std::exception_ptr rehearsal{}, secondPlace{};  ///< why these failed; empty when not
};

/// Where the copies of the first place lie.
QString copiesFolder();

/// Throws when there is no copy in the first place. A second place that has gone away can hold it up for long: never to
/// be called on the thread of the windows.
CopyResult makeCopy(const CopyJob& job, const platform::Cancelled& cancelled);

}  // namespace sorvanto
