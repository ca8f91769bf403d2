#pragma once

#include <QRectF>
#include <QWidget>

/// The tick of one step on the ruler. To a screen reader it is an item of a list, which can be
/// pressed while the ruler is enabled. The widget itself is always disabled: 46 changes at the
/// start of a session would keep a screen reader busy for two seconds, and it would drop what is
/// announced meanwhile.
class RegoloMarker : public QWidget {
    Q_OBJECT

public:
    RegoloMarker(int step, QWidget* parent);

    int step() const { return step_; }

    /// The tick in the parent's coordinates.
    void setTick(const QRectF& tick);
    const QRectF& tick() const { return tick_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int step_;
    QRectF tick_;
};
