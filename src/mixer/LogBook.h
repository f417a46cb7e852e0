// The log as the mixer's journal sees it: whether a signed batch stands in it, whole or not. The layer of the
// records fills it in.
#pragma once

#include "mixer/BatchRows.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <utility>

namespace sorvanto {

/// How a signed batch was found in the log.
struct BatchStanding {
    enum class Kind {
        Absent,
        Whole,
        Completed,  ///< lines were missing and have been added
        Twice,      ///< several rows are the same in every column: nothing was written
        Different,  ///< its lines are others than those that were signed: nothing was written
    };
    Kind kind = Kind::Absent;
    int added = 0;        ///< lines
    QStringList twins{};  ///< keys of the rows
};

class LogBook {
public:
    using Batch = std::pair<QString, QString>;  ///< lot and moment, as stored

    virtual ~LogBook() = default;
    /// Of the open database; empty for none and for one without.
    virtual QString identity() = 0;
    /// Whether this is only a copy of the log, read while its server can't be reached: it tells neither what has been logged
    /// since nor takes anything.
    virtual bool isCopy() { return false; }
    virtual bool hasLot(const QString& lot) = 0;
    /// Keeps the mixer of that serial number for this bench, among all that share the log: lots of two mixers of one
    /// number could not be told apart. Gives the bench that has such a one; empty where this one may work with it.
    virtual QString otherBenchWith(const QString& /*serial*/) { return {}; }
    /// Finds the batch by all its columns and adds the lines that its row lacks, all of them or none.
    /// Throws when the log can't be read or written.
    virtual BatchStanding settle(const BatchRows& rows) = 0;
    virtual int batchCount() = 0;
    /// How many lines each batch since that moment has ("2026-03-07 14:05:09"). Throws when it can't be read.
    virtual QHash<Batch, int> linesSince(const QString& moment) = 0;
    /// Whether the batch was moved into an archive, or deleted by another bench, whose journal notes that.
    virtual bool isArchived(const Batch& batch) = 0;
};

}  // namespace sorvanto
