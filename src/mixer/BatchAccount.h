// Holds the journal against the log: completes batches that a failure has left half written, closes those that
// stand in the log, offers again what has left it, and counts what became of each preparation.
#pragma once

#include "mixer/LogBook.h"
#include "mixer/MixJournal.h"
#include "mixer/PanelTexts.h"
#include "mixer/Reconciliation.h"

#include <functional>
#include <vector>

namespace sorvanto {

class BatchAccount {
public:
    explicit BatchAccount(MixJournal& journal) : m_journal(journal) {}

    /// Outlives the account. Without one only the lot tells whether a mix is logged.
    void setLogBook(LogBook* book) { m_book = book; }
    void setLoggedTest(std::function<bool(const QString& lot)> test) { m_isLogged = std::move(test); }

    /// Of the database that was open when it was last looked at; empty when not known.
    const QString& identity() const { return m_identity; }
    void readIdentity();
    /// See LogBook. Nothing is settled, opened again or counted then: all of it waits for the log itself.
    bool isLogCopy() const { return m_book && m_book->isCopy(); }
    /// Whether some batch in the log bears the lot; false when that can't be found out.
    bool isLotLogged(const QString& lot) const;

    /// See LogBook; empty when that can't be found out.
    QString otherBenchWith(const QString& serial) const;

    enum class Settled {
        NotInLog,
        Closed,  ///< it stands whole in the log, if need be only now, and its journal is closed
        Stuck,   ///< it stands there in a way that only the user can clear up
    };
    /// Of a finished mix. What was done or could not be done is among the findings. Throws when the journal can't
    /// be written.
    Settled settle(const protocol::MixId& mix);
    /// Looks at closed mixes as well: what was logged and stands no longer in the log, without having been
    /// deleted there, is open again. A failure is among the findings.
    void reopenLost();
    const std::vector<PanelMessage>& findings() const { return m_findings; }
    void clearFindings() { m_findings.clear(); }

    void reconcile();
    /// The mixer has results that the journal does not know, or knows otherwise.
    void noteUnknown(const QString& lot);
    const Reconciliation& reconciliation() const { return m_reconciliation; }

private:
    void openLost();
    Settled settleByRows(const JournalEntry& entry);
    QString firstMoment(const std::vector<ClosedMix>& closed) const;
    void find(PanelText text, QStringList parts) { m_findings.push_back({text, std::move(parts)}); }
    void count(const ClosedMix& mix, const QHash<LogBook::Batch, int>& lines);
    void count(const JournalEntry& entry, const QHash<LogBook::Batch, int>& lines);
    bool isOurs(const ClosedMix& mix) const;

    MixJournal& m_journal;
    QString m_identity;
    LogBook* m_book = nullptr;
    std::function<bool(const QString&)> m_isLogged;
    std::vector<PanelMessage> m_findings;
    QStringList m_unknown;
    Reconciliation m_reconciliation;
};

}  // namespace sorvanto
