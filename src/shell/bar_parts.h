#pragma once

#include <QRect>

class QStyleOptionSlider;

/// Where the parts of a scroll bar or slider are.
struct BarParts {
    QRect groove;
    QRect thumb;
    QRect less, more;  ///< the arrow buttons at its ends; a slider has none
};

/// The parts of a bar that sets a value. Its thumb says nothing about a page; a short bar has short
/// arrow buttons, so that the thumb has room to move.
BarParts valueBarParts(const QStyleOptionSlider& option);
