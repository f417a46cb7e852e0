// The copy that a lost database can be had back from, and what is known of the time since.
#pragma once

#include "mixer/LoggedSince.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <vector>

namespace sorvanto {

struct GoodCopy {
    QString path;
    QDateTime made;
    std::int64_t batches = 0;            ///< rows of its log
    std::vector<LoggedMix> unknownToIt;  ///< logged since it was made; their journals are still there
};

/// The newest copy of the database that belongs at this path, from backups/ and from the second place, that is
/// sound now. Only copies of that very database count: its identity is known from the last time it was open;
/// where it is not, all copies must be of one and the same database. Never throws.
std::optional<GoodCopy> newestGoodCopy(const QString& database);

/// Whether there is one at all, by the names alone; it may still turn out not to be sound. Never throws.
bool hasCopies(const QString& database);

/// "Copy of today 2:05 PM, checked."
QString madeText(const GoodCopy& copy);

struct PutBack {
    QString aside;          ///< name under which the damaged file is kept; empty when there was none
    QStringList notOpened;  ///< lots whose journals could not be opened, with the reason
};

/// Puts the copy in the database's place and opens the journals of the batches that it doesn't know. Throws as
/// restoreDatabase does, and then nothing has changed.
PutBack putBack(const GoodCopy& copy, const QString& database);

}  // namespace sorvanto
