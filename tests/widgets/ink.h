#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QScreen>
#include <QWidget>

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

/// What the screen shows of a widget, which a widget that does not repaint itself leaves as it was.
inline QImage onScreen(QWidget& widget) {
    QWidget& window = *widget.window();
    QEvent repaint(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &repaint);
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    return window.screen()
        ->grabWindow(window.winId(), place.x(), place.y(), place.width(), place.height())
        .toImage();
}

/// The rectangle around the pixels in which two pictures differ by more than some of 256 greys;
/// from -1 on it is any difference.
inline QRect changeBetween(const QImage& one, const QImage& other, int greys = 60) {
    QRect around;
    for (int y = 0; y < one.height(); ++y) {
        const auto* row = one.constScanLine(y);
        const bool same = std::equal(row, row + one.bytesPerLine(), other.constScanLine(y));
        for (int x = 0; !same && x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y), b = other.pixel(x, y);
            if (a != b && std::abs(qGray(a) - qGray(b)) > greys)
                around |= QRect(x, y, 1, 1);
        }
    }
    return around;
}
