#include "core/WindowPlace.h"

#include "platform/widgets/WindowState.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr auto geometryKey = "window/geometry";
constexpr QSize firstSize(1366, 768);
constexpr int frameHeight = 48;  // about what title and borders take

}  // namespace

void restoreWindowPlace(QWidget& window) {
    const QSettings settings(platform::windowStateFile(), QSettings::IniFormat);
    if (window.restoreGeometry(settings.value(QLatin1String(geometryKey)).toByteArray()))
        return;
    const QSize available = window.screen() ? window.screen()->availableSize() : firstSize;
    window.resize(firstSize.boundedTo(available));
    // No room for the window with its frame: it fills the screen.
    if (available.width() <= firstSize.width() || available.height() <= firstSize.height() + frameHeight)
        window.setWindowState(Qt::WindowMaximized);
}

bool windowSetting(const char* key, bool unset) {
    return QSettings(platform::windowStateFile(), QSettings::IniFormat)
        .value(QLatin1String(key), unset)
        .toBool();
}

void saveWindowSetting(const char* key, bool value) {
    QSettings(platform::windowStateFile(), QSettings::IniFormat).setValue(QLatin1String(key), value);
}

void saveWindowPlace(const QWidget& window) {
    QSettings settings(platform::windowStateFile(), QSettings::IniFormat);
    settings.setValue(QLatin1String(geometryKey), window.saveGeometry());
    settings.sync();
}

}  // namespace sorvanto
