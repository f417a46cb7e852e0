// The SVGs are drawn with currentColor; the color of the state takes its place before rendering.
#include "platform/widgets/IconEngine.h"

#include "platform/widgets/Theme.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

/// Keeps the linker from dropping the pictures out of the library. Outside a namespace, as it must be.
static void loadPictures() { Q_INIT_RESOURCE(widgets); }

namespace platform {

namespace {

QString fileOf(const QString& name) { return u":/widgets/icons/%1.svg"_s.arg(name); }

QByteArray drawing(const QString& name, const QColor& color) {
    QFile file(fileOf(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll().replace("currentColor", color.name().toLatin1());
}

}  // namespace

IconEngine::IconEngine(QString name, QColor color) : m_name(std::move(name)), m_color(color) {}

bool IconEngine::exists(const QString& name) {
    loadPictures();
    return QFile::exists(fileOf(name));
}

QColor IconEngine::colorFor(QIcon::Mode mode, QIcon::State state) const {
    if (mode == QIcon::Disabled)
        return theme().disabledText;
    if (state == QIcon::On)
        return theme().accent;
    return m_color.isValid() ? m_color : theme().text;
}

void IconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    QSvgRenderer(drawing(m_name, colorFor(mode, state))).render(painter, rect);
}

QPixmap IconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    const QColor color = colorFor(mode, state);
    const QString cached =
        u"icon/%1/%2/%3x%4"_s.arg(m_name, color.name()).arg(size.width()).arg(size.height());
    QPixmap result;
    if (QPixmapCache::find(cached, &result))
        return result;
    result = QPixmap(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, QRect(QPoint(), size), mode, state);
    painter.end();
    QPixmapCache::insert(cached, result);
    return result;
}

QIconEngine* IconEngine::clone() const { return new IconEngine(*this); }

QString IconEngine::key() const { return u"platform-picture"_s; }

}  // namespace platform
