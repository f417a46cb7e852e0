#include "mixer/BatchAccount.h"

#include "platform/basic/RuntimeError.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using protocol::MixId;

LogBook::Batch batchOf(const ClosedMix& mix) { return {mix.lot, mix.moment}; }

}  // namespace

void BatchAccount::readIdentity() {
    try {
        m_identity = m_book ? m_book->identity() : QString();
    } catch (...) {
        m_identity.clear();  // told where the records are read
    }
}

bool BatchAccount::isLotLogged(const QString& lot) const {
    try {
        if (lot.isEmpty())
            return false;
        return m_isLogged ? m_isLogged(lot) : m_book && m_book->hasLot(lot);
    } catch (...) {
        return false;  // not known: better offered once too often
    }
}

QString BatchAccount::otherBenchWith(const QString& serial) const {
    try {
        return m_book && !serial.isEmpty() ? m_book->otherBenchWith(serial) : QString();
    } catch (...) {
        return {};  // mixing goes on without records
    }
}

// ---- one batch ------------------------------------------------------------------------------------

BatchAccount::Settled BatchAccount::settle(const MixId& mix) {
    readIdentity();
    const JournalEntry* entry = m_journal.find(mix);
    if (!entry || entry->state != JournalState::Finished || !entry->belongsTo(identity()) || isLogCopy())
        return Settled::NotInLog;
    Settled settled = Settled::NotInLog;
    if (m_book && !entry->rows.empty())
        settled = settleByRows(*entry);
    // Lots can repeat. A batch is never written without its rows in the journal; version 1.0 took none down.
    else if (entry->database.isEmpty() && !entry->lotTaken && isLotLogged(entry->lot()))
        settled = Settled::Closed;
    if (settled == Settled::Closed)
        m_journal.close(MixId(mix), JournalState::Logged);
    return settled;
}

BatchAccount::Settled BatchAccount::settleByRows(const JournalEntry& entry) {
    using Kind = BatchStanding::Kind;
    const QString lot = entry.rows.lot();
    BatchStanding standing;
    try {
        standing = m_book->settle(entry.rows);
    } catch (...) {
        find(PanelText::LinesNotAdded, {lot, platform::currentError().description()});
        return Settled::Stuck;
    }
    switch (standing.kind) {
    case Kind::Absent:
        return Settled::NotInLog;
    case Kind::Whole:
        return Settled::Closed;
    case Kind::Completed:
        find(standing.added == 1 ? PanelText::LineAdded : PanelText::LinesAdded,
             {lot, QString::number(standing.added)});
        return Settled::Closed;
    case Kind::Twice:
        find(PanelText::BatchTwice, {lot, standing.twins.join(u", "_s)});
        break;
    case Kind::Different:
        find(PanelText::LinesDiffer, {lot});
        break;
    }
    return Settled::Stuck;
}

// ---- all of them ----------------------------------------------------------------------------------

/// Of the oldest batch that was signed; empty when none was.
QString BatchAccount::firstMoment(const std::vector<ClosedMix>& closed) const {
    QString first;
    const auto take = [&](const QString& moment) {
        if (!moment.isEmpty() && (first.isEmpty() || moment < first))
            first = moment;
    };
    for (const ClosedMix& mix : closed)
        take(mix.moment);
    for (const JournalEntry& entry : m_journal.open())
        take(entry.rows.moment());
    return first;
}

bool BatchAccount::isOurs(const ClosedMix& mix) const {
    const QString& ours = identity();
    return mix.database.isEmpty() || ours.isEmpty() || mix.database == ours;
}

// Only what this database's own journal says of a signed batch: an older one knows of no deletion.
void BatchAccount::reopenLost() {
    try {
        openLost();
    } catch (...) {
        find(PanelText::LogNotCompared, {platform::currentError().description()});
    }
}

void BatchAccount::openLost() {
    readIdentity();
    const QString ours = identity();
    if (!m_book || ours.isEmpty() || isLogCopy())
        return;
    const auto mixes = m_journal.closed();
    const QString since = firstMoment(mixes);
    if (since.isEmpty())
        return;
    const auto lines = m_book->linesSince(since);
    for (const ClosedMix& mix : mixes) {
        if (mix.moment.isEmpty() || mix.database != ours)
            continue;
        const bool stands = lines.contains(batchOf(mix));
        const bool lost = mix.state == JournalState::Logged && !stands && !m_book->isArchived(batchOf(mix));
        // The program died between the note of a deletion and the deletion itself.
        const bool notDeleted = mix.state == JournalState::Deleted && stands;
        const bool half = mix.state == JournalState::Logged && stands && lines[batchOf(mix)] < mix.lines;
        if (lost || notDeleted || half)
            m_journal.reopen(mix);
    }
}

void BatchAccount::count(const ClosedMix& mix, const QHash<LogBook::Batch, int>& lines) {
    Reconciliation& all = m_reconciliation;
    if (mix.state != JournalState::Logged) {
        ++all.preparations;
        ++all.closed;
        return;
    }
    // One without rows is among those that the log counts; how many lines it had is not known.
    if (mix.moment.isEmpty())
        return;
    const auto found = lines.constFind(batchOf(mix));
    if (found != lines.cend() && *found >= mix.lines)
        return;
    if (found == lines.cend()) {
        ++all.preparations;
        if (m_book->isArchived(batchOf(mix))) {
            ++all.archived;
            return;
        }
    }
    all.missing << mix.lot;
}

void BatchAccount::count(const JournalEntry& entry, const QHash<LogBook::Batch, int>& lines) {
    Reconciliation& all = m_reconciliation;
    if (entry.state == JournalState::Loaded)
        return;
    if (!entry.rows.empty() && lines.contains({entry.rows.lot(), entry.rows.moment()})) {
        all.missing << entry.rows.lot();  // not all of it is in the log
        return;
    }
    ++all.preparations;
    ++all.onOffer;
}

void BatchAccount::noteUnknown(const QString& lot) {
    if (isLogCopy() || m_unknown.contains(lot) || isLotLogged(lot))
        return;
    m_unknown << lot;
    reconcile();
}

void BatchAccount::reconcile() {
    m_reconciliation = {};
    readIdentity();
    if (!m_book || isLogCopy())
        return;
    Reconciliation& all = m_reconciliation;
    try {
        const auto mixes = m_journal.closed();
        const QString since = firstMoment(mixes);
        const auto lines = since.isEmpty() ? QHash<LogBook::Batch, int>() : m_book->linesSince(since);
        all.inLog = m_book->batchCount();
        all.preparations = all.inLog;
        for (const ClosedMix& mix : mixes) {
            if (isOurs(mix))
                count(mix, lines);
        }
        for (const JournalEntry& entry : m_journal.open())
            count(entry, lines);
        for (const QString& lot : std::as_const(m_unknown)) {
            ++all.preparations;
            all.missing << lot;
        }
        all.done = true;
    } catch (...) {
        m_reconciliation = {};  // a log that can't be read is told where it is read
    }
}

}  // namespace sorvanto
