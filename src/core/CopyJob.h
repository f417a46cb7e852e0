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
    bool first = true;    ///< else the newest copy goes to the second place alone
    bool rehearse = false;
};

struct CopyResult {
    bool copied = false;                            ///< into the first place
    std::exception_ptr rehearsal{}, secondPlace{};  ///< why these failed; empty when not
};

/// Where the copies of the first place lie.
QString copiesFolder();

/// Throws when there is no copy in the first place.
CopyResult makeCopy(const CopyJob& job, const platform::Cancelled& cancelled);

/// Whether the second place is there, and lacks today's copy.
bool secondPlaceLacks(const QString& secondPlace, const QString& identity);

}  // namespace sorvanto
