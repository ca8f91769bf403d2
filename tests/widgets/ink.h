#pragma once

#include <QColor>
#include <QImage>

#include <vector>

/// A row of inked pixels in one column of a picture.
struct InkRun {
    int top;
    int thickness;
    bool operator==(const InkRun&) const = default;
};

/// The runs of dark pixels in a column, from the top. A pixel that is neither paper nor ink counts
/// as a run of thickness 0, so that a blurred line never looks like a crisp one.
inline std::vector<InkRun> inkRuns(const QImage& image, int x) {
    std::vector<InkRun> runs;
    bool inside = false;
    for (int y = 0; y < image.height(); ++y) {
        const int grey = qGray(image.pixel(x, y));
        if (grey > 5 && grey < 250)
            runs.push_back({y, 0});
        const bool ink = grey <= 5;
        if (ink && !inside)
            runs.push_back({y, 0});
        if (ink)
            ++runs.back().thickness;
        inside = ink;
    }
    return runs;
}
