#pragma once

#include <QImage>
#include <QRect>

#include <vector>

/// The rectangle around the pixels of an area that two pictures of 32 bits a pixel do not share.
inline QRect difference(const QImage& a, const QImage& b, const QRect& area) {
    QRect around;
    const QRect inside = area & a.rect() & b.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        const auto* rowA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* rowB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = inside.left(); x <= inside.right(); ++x) {
            if (rowA[x] != rowB[x])
                around |= QRect(x, y, 1, 1);
        }
    }
    return around;
}

/// How many strokes there are that do not touch each other. The picture is used up.
inline int strokesIn(QImage image) {
    auto* pixels = reinterpret_cast<QRgb*>(image.bits());
    const int width = image.width();
    const int end = width * image.height();
    const auto inked = [&](int i) { return i >= 0 && i < end && qAlpha(pixels[i]) > 90; };
    int count = 0;
    for (int start = 0; start < end; ++start) {
        count += inked(start) ? 1 : 0;
        for (std::vector<int> open{start}; !open.empty();) {
            const int i = open.back();
            open.pop_back();
            if (!inked(i))
                continue;
            pixels[i] = 0;
            open.insert(open.end(), {i - 1, i + 1, i - width, i + width});
        }
    }
    return count;
}
