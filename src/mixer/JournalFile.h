// One file of the journal: its place, its form, and its head, which tells of a closed mix without the rest.
#pragma once

#include "mixer/MixJournal.h"

#include <optional>

namespace sorvanto::journal_file {

QString folder();
QString closedFolder();
QString openPath(const protocol::MixId& mix);
/// Where the mix lies among the closed ones, or is to lie: sorted by name, the later closed ones come later.
QString closedPath(const JournalEntry& entry);

/// Nothing when the file is no whole journal of a mix.
std::optional<JournalEntry> read(const QString& path);
std::optional<ClosedMix> readHead(const QString& path);
/// Whole or not at all; throws as writeFile does.
void write(const JournalEntry& entry, const QString& path);

}  // namespace sorvanto::journal_file
