#include "core/WindowPlace.h"

#include "platform/basic/Paths.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>

namespace sorvanto {
namespace {

constexpr auto geometryKey = "window/geometry";
constexpr QSize firstSize(1366, 768);

QString fileName() {
    return platform::platformPath(platform::programFolder() + QStringLiteral("\\window.ini"));
}

}  // namespace

void restoreWindowPlace(QWidget& window) {
    const QSettings settings(fileName(), QSettings::IniFormat);
    if (window.restoreGeometry(settings.value(QLatin1String(geometryKey)).toByteArray()))
        return;
    const QScreen* screen = window.screen();
    window.resize(screen ? firstSize.boundedTo(screen->availableSize()) : firstSize);
}

void saveWindowPlace(const QWidget& window) {
    QSettings settings(fileName(), QSettings::IniFormat);
    settings.setValue(QLatin1String(geometryKey), window.saveGeometry());
    settings.sync();
}

}  // namespace sorvanto
