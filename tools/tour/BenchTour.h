// One bench of several that share their records on a server.
#pragma once

#include <QString>

namespace tour {

struct BenchWork {
    QString description;  ///< what it writes into the formula
    int batches = 0;      ///< that it makes and signs; the lot of each is printed
    int batchesOfAll =
        0;  ///< so many does its list of the log show at the end, those of other benches too; 0: any
    bool watches =
        false;  ///< then it prints "watching", and waits for a change of the formula by another bench and for
                ///< one that mixes
};

/// Opens a formula, changes its description, and makes its batches. Asks no file: where the records are, is settled by the
/// options of the folder.
void runBench(const QString& programFolder, const QString& pictureFolder, const BenchWork& work);

/// While the server of the options is away: reads its newest copy, and makes a batch that waits.
void runBenchOnCopy(const QString& programFolder, const QString& pictureFolder);

/// The server is back: signs the batch that waits, and prints its lot.
void runBenchOffer(const QString& programFolder, const QString& pictureFolder);

}  // namespace tour
