// The proof that what is written down of the changes of a file is whole and as it was sealed.
#pragma once

#include "platform/data/Engine.h"

#include <QByteArray>
#include <QLatin1StringView>
#include <QStringList>
#include <cstdint>

namespace sorvanto {

/// The last sealed row, and the chain's length with it; of several chains the last row of this connection's bench.
struct HistoryHead {
    std::int64_t count = 0;  ///< number of the row; 0: nothing is sealed yet
    QByteArray seal;         ///< 32 bytes
};

HistoryHead historyHead(platform::Engine& database);

/// "17:9f3c..." as it is noted elsewhere, and back; a text that is none gives a count of 0.
QString toText(const HistoryHead& head);
HistoryHead headFromText(const QString& text);

/// The first row at which the chain is broken, in one sentence; empty when it is whole. Rows at the end that have no
/// seal yet are none of the chain's. Where each bench has its own chain, each is walked, and held against the end that was
/// noted of it. Also empty for a file without history.
QStringList chainProblems(platform::Engine& database);

/// Condition on the rows of History that lose their name, fields and salt when the patient of hst_Record is forgotten:
/// the patient's and his prescriptions'. Any other row without them breaks the chain.
inline constexpr QLatin1StringView forgettableRows(
    "hst_Table IN ('Patient', 'RXs') AND hst_What <> 'forgotten'");

/// Whether the chain goes through this head; false also when it ends before.
bool holdsHead(platform::Engine& database, const HistoryHead& head);

}  // namespace sorvanto
