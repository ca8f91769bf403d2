#pragma once

#include <QProxyStyle>

class QStyleOptionSlider;

/// The Fusion style with the program's own buttons, bars and boxes, see `control_painting`. The
/// icons of message boxes are drawn in the palette's colours at any scale, and what is clicked is
/// at least 24 units high.
class WindowStyle : public QProxyStyle {
    Q_OBJECT

public:
    WindowStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

private:
    void drawComboBox(const QStyleOptionComplex& option, QPainter& painter,
                      const QWidget* widget) const;
    void drawSlider(const QStyleOptionSlider& option, QPainter& painter,
                    const QWidget* widget) const;
    void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter,
                       const QWidget* widget) const;
};
