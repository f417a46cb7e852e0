// What the fields of the history are called on the screens, and how their values are shown there.
#pragma once

#include "history/HistoryBook.h"

#include <QString>
#include <QVariant>

namespace sorvanto {

/// In the user's language; empty for a column that no screen shows (keys, identities, the documents of a mix).
QString historyCaption(const QString& column);

/// As the user would read it: no text for NULL.
QString historyValue(const QString& column, const QVariant& value);

/// "made", "signed", "imported from prices.csv" and so on in the user's language.
QString historyDeed(const HistoryEntry& entry);

}  // namespace sorvanto
