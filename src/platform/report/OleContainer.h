// The compound file in which spreadsheet programs look for a workbook.
#pragma once

#include <QByteArray>

namespace platform {

/// A compound file with one stream. Throws deviceIo when it can't be composed.
QByteArray inOleContainer(const QByteArray& streamName, const QByteArray& stream);

}  // namespace platform
