// Takes the deletion of a record or line back, whole or not at all.
#pragma once

#include "history/HistoryRestore.h"

namespace sorvanto {

struct Context;

/// What is about to be deleted from the open database.
DeletedRecord aboutToDelete(const Context& context, const QString& table, std::int64_t key);

/// The record stands there again with its lines, in one transaction, and its history says that it was restored. The mixer's
/// journal no longer counts a batch as deleted. Throws what the engine or the journal refuses; nothing has changed then.
Restored takeBackDeletion(Context& context, const DeletedRecord& deleted);

/// Why it could not be taken back, in the user's language; of Whole that it was. name: of the record.
QString restoredText(Restored result, const QString& name);

}  // namespace sorvanto
