#pragma once

#include <QToolButton>

#include <functional>

class QPainter;
class QRectF;

/// A square button with an engraved picture. While checked it is filled with the highlight colour.
class PictureButton : public QToolButton {
    Q_OBJECT

public:
    /// Paints within the rectangle in the colour of the painter's pen.
    using Picture = std::function<void(QPainter&, const QRectF&)>;

    static constexpr QRgb kHighlight = qRgb(10, 254, 10);

    PictureButton(const QString& name, const QString& toolTip, Picture picture, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor penColour() const;

    Picture picture_;
};
