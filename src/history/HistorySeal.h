// Who changes the records of a file, and the seal of what is written down about it. The file's own triggers write each
// change into its table History; a connection that keeps history adds the person and the seal to each of these rows,
// within the statement that made the change.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/Engine.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

namespace sorvanto {

/// What a row says of the program that wrote it when it was not this one.
inline constexpr char outsideProgram[] = "outside";

struct HistoryWriter {
    QString person;   ///< account and computer, "rkent@bench2"
    QString program;  ///< its version
};

/// The account and the computer as the system gives them, and this program.
HistoryWriter currentWriter();

/// Whether the file is of a version that keeps history.
bool hasHistory(platform::Engine& database);

/// From now on each change by this connection is sealed as that writer's. Rows without a seal that come before it in the
/// file were written by others: they are sealed first and marked as from outside. Nothing happens to a file
/// without history. To be called again when the file has been brought up to date.
void keepHistory(const platform::Connection& connection, const HistoryWriter& writer = currentWriter());

/// Rows of other programs that are sealed within a moment.
inline constexpr int quicklySealed = 5000;
/// Called within a change of this program that seals more of them before it, once, from the thread of the change. An empty
/// function: nobody is told. The change goes on afterwards: no statement may run in it.
void onLongSealing(std::function<void()> told);

/// Gives the engine history_hash(...): the SHA-256 of its arguments, each with its type and length. A row's digest
/// is that of salt, name and fields; its seal that of the seal before, its other values and its digest.
void installHistoryHash(platform::Engine& database);

/// The same sum.
QByteArray historyHash(const std::vector<platform::PlainValue>& values);

/// The arguments of history_hash for the seal of a row of History: %1 the seal before, %2 the person, %3 the program,
/// %4 the deed, %5 its note, %6 the digest.
QString sealArguments();

}  // namespace sorvanto
