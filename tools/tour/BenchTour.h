// One bench of several that share their records on a server.
#pragma once

#include <QString>

namespace tour {

/// Opens a formula, changes its description, makes so many batches of it and signs them, and prints the lot of each. Asks
/// no file: where the records are, is settled by the options of the folder.
void runBench(const QString& programFolder, const QString& description, int batches);

}  // namespace tour
