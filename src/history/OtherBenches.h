// What other benches do with the same records: how far each of them has written its history, what they have written of one
// record since, and which of them are at work. Only for records on a server.
#pragma once

#include "history/HistoryBook.h"

#include <QDateTime>
#include <QMap>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace sorvanto {

/// Number of the last row that each bench has written. Within a bench numbers rise as they become visible.
using HistoryEnds = QMap<QString, std::int64_t>;

/// A mix that is under way.
struct BenchMix {
    int formula = 0;  ///< key; 0: not stored in these records
    QDateTime since;  ///< by the clock of this computer
};

/// Asks how far each bench has written, and tells on the way what is mixed here: one message there and one back.
HistoryEnds lookAround(platform::Engine& server, const std::optional<BenchMix>& mixedHere);

/// What stands behind the last @ of a person; empty for another program.
QString benchOf(const QString& person);

/// Whether anybody but this user of this computer has written between the two.
bool haveOthersWritten(platform::Engine& server, const HistoryEnds& before, const HistoryEnds& now);

/// What they have written of the record and its lines between the two, newest first; of a formula also the changes of its
/// ingredients that it shows: name, unit and prices.
std::vector<HistoryEntry> writtenByOthers(platform::Engine& server, const QString& table, std::int64_t key,
                                          const HistoryEnds& before, const HistoryEnds& now);

struct BenchAtWork {
    QString name;  ///< account, computer and version of the program
    std::optional<BenchMix> mix;
    QString formula;  ///< name of what it mixes; empty where that is not stored
};

/// In the order in which they came.
std::vector<BenchAtWork> benchesAtWork(platform::Engine& server);

}  // namespace sorvanto
