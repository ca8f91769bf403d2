#pragma once

#include <QToolButton>

#include <functional>

class QPainter;
class QRectF;

/// A square button with an engraved picture. Checked, it has the highlight colour all over.
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
    QColor ink() const;

    Picture picture_;
};
