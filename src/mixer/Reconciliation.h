// What became of every preparation that is known here: journal, log and the mixer's own memory held against
// each other at each start.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvanto {

struct Reconciliation {
    bool done = false;     ///< false until the control was started with a log that could be read
    int preparations = 0;  ///< known to the log, the journal or the mixer, each counted once
    int inLog = 0;
    int onOffer = 0;   ///< in the panel, for the user to log or to put aside; also those still being mixed
    int closed = 0;    ///< put aside, ended without results, or deleted from the log by the user
    int archived = 0;  ///< moved into an archive
    /// Lots (or names, where a mix has no lot) of those that are in none of these places, or not whole there.
    QStringList missing;

    bool complete() const { return done && missing.isEmpty(); }
};

}  // namespace sorvanto
