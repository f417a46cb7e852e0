#include "platform/widgets/LaterIcon.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

LaterIcon::LaterIcon(std::function<QIcon()> read) : m_read(std::move(read)) {}

void LaterIcon::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    icon().paint(painter, rect, Qt::AlignCenter, mode, state);
}

QPixmap LaterIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return icon().pixmap(size, 1, mode, state);
}

QSize LaterIcon::actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return icon().actualSize(size, mode, state);
}

QIconEngine* LaterIcon::clone() const { return new LaterIcon(*this); }

QString LaterIcon::key() const { return u"platform-later"_s; }

const QIcon& LaterIcon::icon() {
    if (!m_icon)
        m_icon = m_read();
    return *m_icon;
}

}  // namespace platform
