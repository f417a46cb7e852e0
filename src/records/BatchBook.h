// The log of the open database as the mixer's journal asks about it.
#pragma once

#include "mixer/LogBook.h"

namespace sorvanto {

struct Context;

class BatchBook : public LogBook {
public:
    explicit BatchBook(Context& context) : m_context(context) {}
    QString identity() override;
    bool isCopy() override;
    bool hasLot(const QString& lot) override;
    QString otherBenchWith(const QString& serial) override;
    BatchStanding settle(const BatchRows& rows) override;
    int batchCount() override;
    QHash<Batch, int> linesSince(const QString& moment) override;
    bool isArchived(const Batch& batch) override;

private:
    Context& m_context;
};

/// The mixer's journal as the log record sees it. All of them throw when the journal can't be written.
class BatchJournal {
public:
    virtual ~BatchJournal() = default;
    /// These rows are about to be written.
    virtual void takeDown(const BatchRows& rows) = 0;
    /// This batch is about to be deleted; undoDeletion when it was not.
    virtual void noteDeletion(const BatchRows& rows) = 0;
    virtual void undoDeletion() = 0;
    /// This batch, deleted earlier, is in the log again as it was.
    virtual void noteRestored(const BatchRows& rows) = 0;
};

/// Set at start by the mixing layer; nothing without a mixer.
extern BatchJournal* batchJournal;

}  // namespace sorvanto
