#include "core/WindowPlace.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/SettingsFile.h"
#include "platform/widgets/WindowState.h"

#include <QScreen>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString geometryKey = u"window/geometry"_s;
constexpr QSize firstSize(1366, 768);
constexpr int frameHeight = 48;  // about what title and borders take

platform::SettingsFile settings() { return platform::SettingsFile(platform::windowStateFile()); }

void save(const QString& key, const QVariant& value) {
    try {
        settings().setValue(key, value);
    } catch (const platform::RuntimeError&) {
        // How the window looks is no reason for a word in the midst of work.
    }
}

}  // namespace

void restoreWindowPlace(QWidget& window) {
    if (window.restoreGeometry(settings().value(geometryKey).toByteArray()))
        return;
    const QSize available = window.screen() ? window.screen()->availableSize() : firstSize;
    window.resize(firstSize.boundedTo(available));
    // No room for the window with its frame: it fills the screen.
    if (available.width() <= firstSize.width() || available.height() <= firstSize.height() + frameHeight)
        window.setWindowState(Qt::WindowMaximized);
}

bool windowSetting(const char* key, bool unset) {
    return settings().value(QLatin1String(key), unset).toBool();
}

void saveWindowSetting(const char* key, bool value) { save(QLatin1String(key), value); }

void saveWindowPlace(const QWidget& window) { save(geometryKey, window.saveGeometry()); }

}  // namespace sorvanto
