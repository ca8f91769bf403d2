#pragma once

#include "widgets/mark_painting.h"

#include <QWidget>

/// The small square that says whether the last answer was right; it keeps its place while hidden.
class VerdictMark : public QWidget {
    Q_OBJECT

public:
    explicit VerdictMark(QWidget* parent = nullptr);

    void setMark(Mark mark, QRgb colour);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Mark mark_ = Mark::None;
    QRgb colour_ = 0;
};
