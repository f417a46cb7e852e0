#include "core/WindowPlace.h"

#include "platform/widgets/WindowState.h"

#include <QScreen>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString geometryKey = u"window/geometry"_s;
constexpr QSize firstSize(1366, 768);
constexpr int frameHeight = 48;  // about what title and borders take

}  // namespace

void restoreWindowPlace(QWidget& window) {
    if (window.restoreGeometry(platform::windowValue(geometryKey).toByteArray()))
        return;
    const QSize available = window.screen() ? window.screen()->availableSize() : firstSize;
    window.resize(firstSize.boundedTo(available));
    // No room for the window with its frame: it fills the screen.
    if (available.width() <= firstSize.width() || available.height() <= firstSize.height() + frameHeight)
        window.setWindowState(Qt::WindowMaximized);
}

bool windowSetting(const char* key, bool unset) {
    return platform::windowValue(QLatin1String(key), unset).toBool();
}

void saveWindowSetting(const char* key, bool value) { platform::keepWindowValue(QLatin1String(key), value); }

void saveWindowPlace(const QWidget& window) { platform::keepWindowValue(geometryKey, window.saveGeometry()); }

}  // namespace sorvanto
