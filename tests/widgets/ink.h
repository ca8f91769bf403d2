#pragma once

#include <QImage>
#include <QRect>

#include <algorithm>
#include <vector>

/// A row of inked pixels in one column of a picture.
struct InkRun {
    int top;
    int thickness;
};

/// The runs of dark pixels in a column, from the top. A pixel that is neither paper nor ink counts
/// as a run of thickness 0, so that a blurred line never looks like a crisp one.
inline std::vector<InkRun> inkRuns(const QImage& image, int x) {
    std::vector<InkRun> runs;
    bool inside = false;
    for (int y = 0; y < image.height(); ++y) {
        const int grey = qGray(image.pixel(x, y));
        const bool ink = grey <= 5;
        if ((ink && !inside) || (!ink && grey < 250))
            runs.push_back({y, 0});
        if (ink)
            ++runs.back().thickness;
        inside = ink;
    }
    return runs;
}

/// The rectangle around the pixels in which two pictures differ.
inline QRect changeBetween(const QImage& one, const QImage& other) {
    QRect around;
    for (int y = 0; y < one.height(); ++y) {
        const auto* row = one.constScanLine(y);
        const bool same = std::equal(row, row + one.bytesPerLine(), other.constScanLine(y));
        for (int x = 0; !same && x < one.width(); ++x) {
            if (std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 60)
                around |= QRect(x, y, 1, 1);
        }
    }
    return around;
}
