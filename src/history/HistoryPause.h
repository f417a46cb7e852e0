// A span in which a file doesn't write its history, for work that changes no record: new keys in an archive run, and the
// blanking that a patient has asked for. Within a transaction alone, so that no other program meets the file without it.
#pragma once

#include "history/HistoryChain.h"
#include "platform/data/Engine.h"

#include <QString>
#include <QStringList>

namespace sorvanto {

class HistoryPause {
public:
    /// Does nothing on a file without history.
    explicit HistoryPause(platform::Engine& database);
    /// The file writes its history again. To be called before the transaction is committed; without it the transaction is
    /// to be taken back.
    void end();

private:
    platform::Engine& m_database;
    QStringList m_triggers;
};

/// Writes a row that is about the file as a whole, sealed when the connection keeps history. Nothing on a file without.
void addHistoryRow(platform::Engine& database, const QString& what, const QString& fields);

/// Writes down in the file that it was put back from that copy. Throws when it can't be written.
void noteRestored(const QString& file, const QString& copy);

/// Where an archive has taken the history along: the file's own begins anew, numbered and sealed on from that head.
/// Within a pause.
void continueHistory(platform::Engine& database, const QString& archive, const HistoryHead& before);

}  // namespace sorvanto
