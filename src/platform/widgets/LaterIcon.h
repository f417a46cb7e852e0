// An icon that is read when it is first drawn: the toolkit's own pictures lie in files, and the first of them loads all that
// the toolkit knows of reading pictures.
#pragma once

#include <QIconEngine>
#include <functional>
#include <optional>

namespace platform {

class LaterIcon : public QIconEngine {
public:
    explicit LaterIcon(std::function<QIcon()> read);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;
    QString key() const override;
    bool isNull() override { return false; }

private:
    const QIcon& icon();

    std::function<QIcon()> m_read;
    std::optional<QIcon> m_icon;
};

}  // namespace platform
