// The file of the program's folder that keeps how the user has set up his windows and printers: window.ini.
#pragma once

#include <QString>
#include <QVariant>

namespace platform {

QString windowStateFile();

/// What a window has kept of itself under "group/key"; unset where there is nothing, or nothing can be read.
QVariant windowValue(const QString& key, const QVariant& unset = {});
/// Where it can't be written nothing is kept, without a word: how a window looks is no reason for one.
void keepWindowValue(const QString& key, const QVariant& value);

}  // namespace platform
