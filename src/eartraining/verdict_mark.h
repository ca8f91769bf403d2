#pragma once

#include "eartraining/ear_colours.h"
#include "eartraining/mark_painting.h"

#include <QWidget>

/// The small square that says whether the last answer was right; it keeps its place while hidden.
class VerdictMark : public QWidget {
public:
    explicit VerdictMark(QWidget* parent = nullptr);

    void setMark(Mark mark, ear_colours::Rgb colour);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Mark mark_ = Mark::None;
    ear_colours::Rgb colour_ = 0;
};
