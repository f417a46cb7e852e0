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

/// Logged mixes whose journals were closed at that moment or later. Journals that can't be read are passed over.
std::vector<LoggedMix> mixesLoggedSince(const QDateTime& moment);

/// Puts the journal among the open ones, as a finished mix that is not in the log. Throws what writeFile throws.
void openAgain(const LoggedMix& mix);

}  // namespace sorvanto
