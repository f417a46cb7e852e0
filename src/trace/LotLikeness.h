// Lots are typed by people: which ones may be meant by a text although they aren't the text.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvanto {

/// Those of the lots that may be meant: equal but for case, blanks, dashes and other marks, O and 0, I, l and 1, or
/// with one letter wrong, missing, too many, or two neighbours exchanged, where at least four letters are there to go
/// by. The text itself, whatever its case, is not among them. Keeps the order.
QStringList similarLots(const QString& text, const QStringList& lots);

}  // namespace sorvanto
