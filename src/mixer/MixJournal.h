// What was loaded, started and finished, kept in a file a mix, so that no power cut and no crash of the
// program loses a batch that was made.
#pragma once

#include "mixer/BatchRows.h"
#include "mixer/protocol/Messages.h"
#include "platform/xml/XmlDocument.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace sorvanto {

enum class JournalState {
    Loaded,    ///< sent to the mixer, never started
    Started,   ///< its end is not known yet
    Finished,  ///< has results, not in the log
    Aborted,   ///< ended without results
    Logged,    ///< closed: in the log
    PutAside,  ///< closed: the user did not want it in the log
    Deleted,   ///< closed: the user has deleted it from the log
};

struct JournalEntry {
    protocol::MixId mix;
    JournalState state = JournalState::Loaded;
    QString serial;  ///< of the mixer
    QDateTime loaded, started, finished;
    /// The lot was in the log already when the mix finished: another mix bears it (a mixer whose counter
    /// was reset). The log can't tell then whether this one was logged.
    bool lotTaken = false;
    QString database;  ///< identity of the one that was open; empty: not known
    BatchRows rows;    ///< as signed; a batch that has them may stand in the log, in part or whole
    platform::XmlDocumentPtr formula, results;

    QString name() const;
    QString quantity() const;
    QString lot() const;
    /// Made while that database was open, as far as both are known.
    bool belongsTo(const QString& identity) const;
};

/// What is told of a closed mix without reading its whole file.
struct ClosedMix {
    QString path;
    protocol::MixId mix;
    JournalState state = JournalState::PutAside;
    QString serial, database, name;
    QString lot, moment;  ///< as signed; empty for one that was not
    int lines = 0;        ///< as signed
};

/// Open mixes are files of the folder "mixes" beside the program, closed ones lie in "mixes/closed".
/// Each write replaces the file whole or leaves the old one, so that every moment has a readable journal.
class MixJournal {
public:
    /// Reads the open mixes. Files of mixes never started, and of closed ones that a crash left in the
    /// wrong place, are tidied away.
    void read();
    const std::vector<JournalEntry>& open() const { return m_open; }
    const JournalEntry* find(const protocol::MixId& mix) const;
    /// Names of files that are no journal; they stay where they are.
    const QStringList& unreadable() const { return m_unreadable; }

    // Each writes, but for undoStart, and throws what writeFile throws; the entry in memory has changed even so.
    void load(const protocol::MixId& mix, const platform::XmlDocumentPtr& formula,
              const QString& database = {});
    void start(const protocol::MixId& mix, const QString& serial);
    /// The mix was never run and never will be: nothing is kept of it. A file that can't be removed is found at the
    /// next start, which asks the mixer for it.
    void undoStart(const protocol::MixId& mix);
    void finish(const protocol::MixId& mix, const platform::XmlDocumentPtr& results, bool lotTaken);
    void abort(const protocol::MixId& mix);
    /// Takes down what is about to be written to the log.
    void sign(const protocol::MixId& mix, const BatchRows& rows);
    /// Logged or PutAside. The entry is no longer open; one that can not be written as put aside stays so.
    void close(const protocol::MixId& mix, JournalState how);

    /// Newest first. Reads the head of each file only.
    std::vector<ClosedMix> closed() const;
    /// Of the results that a closed mix ended with; empty when it had none or is not known.
    QString closedLot(const protocol::MixId& mix) const;
    /// A closed mix is open again, as finished; its rows are kept.
    void reopen(const ClosedMix& closed);
    /// The user is about to delete the batch: it is closed for good. Nothing happens when the journal does not
    /// know it.
    void noteDeletion(const BatchRows& rows);
    /// The deletion that was noted last did not come about.
    void undoDeletion();
    /// A batch that the user had deleted is in the log again, whole: its mix is closed as logged. Nothing happens when the
    /// journal does not know it as deleted.
    void noteRestored(const BatchRows& rows);

private:
    JournalEntry& entry(const protocol::MixId& mix);
    void write(const JournalEntry& entry) const;
    void drop(const protocol::MixId& mix);
    void noteOpenDeletion(JournalEntry entry);
    bool noteClosedDeletion(const ClosedMix& mix, const BatchRows& rows);

    struct Deletion {
        JournalEntry before;
        QString path;  ///< of the closed file that notes it
    };

    std::vector<JournalEntry> m_open;
    std::vector<JournalEntry> m_left;  ///< in the log, and not taken down as such since the disk refused
    QStringList m_unreadable;
    std::optional<Deletion> m_deletion;
};

}  // namespace sorvanto
