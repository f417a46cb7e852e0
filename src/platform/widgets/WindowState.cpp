#include "platform/widgets/WindowState.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SettingsFile.h"

using namespace Qt::StringLiterals;

namespace platform {

QString windowStateFile() { return programFolder() + u"/window.ini"_s; }

QVariant windowValue(const QString& key, const QVariant& unset) {
    return SettingsFile(windowStateFile()).value(key, unset);
}

void keepWindowValue(const QString& key, const QVariant& value) {
    try {
        SettingsFile(windowStateFile()).setValue(key, value);
    } catch (const RuntimeError&) {
        // in the midst of work
    }
}

}  // namespace platform
