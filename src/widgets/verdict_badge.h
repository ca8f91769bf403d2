#pragma once

#include "core/verdict.h"

#include <QWidget>

class QPalette;

/// The verdict on an answer at the place where it was given: over a control a coloured frame with a
/// tick or a cross in its corner, over a key or beside a note a coloured shape with the same mark.
/// It lets the mouse through and can be told from every background, in light and dark.
class VerdictBadge : public QWidget {
    Q_OBJECT

public:
    enum class Shape { Frame, Filled };

    /// Hidden until it is shown over something.
    explicit VerdictBadge(QWidget* parent = nullptr);

    /// Shows the verdict over a whole control, or over a place of a widget, of which it becomes a
    /// child.
    void showOver(QWidget& control, Verdict verdict);
    void showAt(QWidget& widget, const QRect& place, Verdict verdict);

    /// The verdict's colour for something drawn on the base colour.
    static QColor inkOf(Verdict verdict, const QPalette& palette);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show(QWidget& parent, const QRect& place, Shape shape, Verdict verdict);
    void paintCorner(QPainter& painter) const;

    Shape shape_ = Shape::Frame;
    Verdict verdict_ = Verdict::None;
};
