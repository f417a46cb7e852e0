// Reads the dates that stand between number signs in a statement.
#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

/// Month first, whatever the system's own order: "11-21-2026", "11/21/2026 2:05:09 PM". A first number
/// above 12 is taken as the day. A time alone lies on the zero date. Anything else is read as the
/// system's default date text. Throws RuntimeError(statement) when it is no date.
QDateTime dateLiteral(const QString& text);

}  // namespace platform
