#pragma once

#include <QProxyStyle>

/// The Fusion style with corrections: buttons are alike in every window, the icons of message boxes
/// are drawn in the palette's colours at any scale, and boxes have a visible outline in a dark
/// theme.
class WindowStyle : public QProxyStyle {
    Q_OBJECT

public:
    WindowStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};
