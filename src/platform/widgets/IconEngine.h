// Draws one of our pictures from its SVG at the size asked for, in the color of the state.
#pragma once

#include <QColor>
#include <QIconEngine>

namespace platform {

class IconEngine : public QIconEngine {
public:
    /// Drawn in the color (an invalid one: the theme's text), grey when off, accent when checked.
    IconEngine(QString name, QColor color);

    /// Whether our set has a picture of that name.
    static bool exists(const QString& name);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;
    QString key() const override;
    bool isNull() override { return false; }

private:
    QColor colorFor(QIcon::Mode mode, QIcon::State state) const;

    QString m_name;
    QColor m_color;
};

}  // namespace platform
