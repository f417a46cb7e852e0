// The program's look: metrics and drawing of every kind of widget, over Fusion, in the colors of the theme.
// What is drawn stands in StyleFields, StyleButtons, StyleBars and StyleViews; what a single widget gets
// beside the look of its kind, in Looks.
#pragma once

#include <QProxyStyle>

namespace platform {

class Style : public QProxyStyle {
public:
    Style();

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

    /// What stands at the end of a tool bar that is too narrow is only read when it is drawn.
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;

private:
    bool drawBarControl(ControlElement element, const QStyleOption& option, QPainter& painter,
                        const QWidget* widget) const;
    bool drawViewControl(ControlElement element, const QStyleOption& option, QPainter& painter,
                         const QWidget* widget) const;
    void drawToolButton(const QStyleOptionToolButton& option, QPainter& painter, const QWidget* widget) const;
};

}  // namespace platform
