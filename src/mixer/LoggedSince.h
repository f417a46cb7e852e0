// Mixes that were logged and whose journals are closed. When an older copy of the database is put back, those
// that the copy doesn't know are opened again, so that they are offered for the log once more.
#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <vector>

namespace sorvanto {

struct LoggedMix {
    QString path;  ///< of its journal
    QString lot;
};

/// Mixes of that database that were logged at that moment or later; where the journal doesn't tell when they were signed or
/// of which database they are, as those of the first version, it is when the journal was closed, and any database.
/// Journals that can't be read are passed over.
std::vector<LoggedMix> mixesLoggedSince(const QDateTime& moment, const QString& identity);

/// Puts the journal among the open ones, as a finished mix that is not in the log. Throws what writeFile throws.
void openAgain(const LoggedMix& mix);

}  // namespace sorvanto
