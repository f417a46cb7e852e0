// What was loaded, started and finished, kept in a file a mix, so that no power cut and no crash of the
// program loses a batch that was made.
#pragma once

#include "mixer/protocol/Messages.h"
#include "platform/xml/XmlDocument.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

namespace sorvanto {

enum class JournalState {
    Loaded,    ///< sent to the mixer, never started
    Started,   ///< its end is not known yet
    Finished,  ///< has results, not in the log
    Aborted,   ///< ended without results
    Logged,    ///< closed: in the log
    PutAside,  ///< closed: the user did not want it in the log
};

struct JournalEntry {
    protocol::MixId mix;
    JournalState state = JournalState::Loaded;
    QString serial;  ///< of the mixer
    QDateTime loaded, started, finished;
    /// The lot was in the log already when the mix finished: another mix bears it (a mixer whose counter
    /// was reset). The log can't tell then whether this one was logged.
    bool lotTaken = false;
    platform::XmlDocumentPtr formula, results;

    QString name() const;
    QString quantity() const;
    QString lot() const;
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

    // Each writes and throws what writeFile throws; the entry in memory has changed even so.
    void load(const protocol::MixId& mix, const platform::XmlDocumentPtr& formula);
    void start(const protocol::MixId& mix, const QString& serial);
    void undoStart(const protocol::MixId& mix);
    void finish(const protocol::MixId& mix, const platform::XmlDocumentPtr& results, bool lotTaken);
    void abort(const protocol::MixId& mix);
    /// Logged or PutAside. The entry is no longer open.
    void close(const protocol::MixId& mix, JournalState how);

private:
    JournalEntry& entry(const protocol::MixId& mix);
    void write(const JournalEntry& entry) const;
    void drop(const protocol::MixId& mix);

    std::vector<JournalEntry> m_open;
    QStringList m_unreadable;
};

}  // namespace sorvanto
