#include "widgets/piano_key_layout.h"

#include <algorithm>
#include <array>

namespace piano_key_layout {
namespace {

/// In widths of a natural.
constexpr double kSharpWidth = 0.58;
constexpr double kSharpLength = 0.63;  ///< of the keyboard's height

/// A natural's left edge, or a sharp's middle, from the left of the octave in widths of a natural.
/// The outer sharps of each group stand a little away from the group's middle, as on a piano.
struct Place {
    double x;
    bool sharp;
};

constexpr std::array<Place, kKeysInOctave> kPlaces{{{0, false},
                                                    {0.91, true},
                                                    {1, false},
                                                    {2.09, true},
                                                    {2, false},
                                                    {3, false},
                                                    {3.88, true},
                                                    {4, false},
                                                    {5, true},
                                                    {5, false},
                                                    {6.12, true},
                                                    {6, false}}};
constexpr int kNaturalsInOctave = 7;

constexpr const Place& placeOf(int key) {
    return kPlaces[static_cast<std::size_t>(key % kKeysInOctave)];
}

}  // namespace

bool isSharp(int key) {
    return placeOf(key).sharp;
}

QRectF keyRect(int key, const QRectF& keyboard) {
    const double natural = keyboard.width() / kNaturals;
    const Place& place = placeOf(key);
    const int octaveStart = key / kKeysInOctave * kNaturalsInOctave;
    const double x = keyboard.left() + (octaveStart + place.x) * natural;
    if (!place.sharp)
        return {x, keyboard.top(), natural, keyboard.height()};
    const double width = kSharpWidth * natural;
    return {x - width / 2, keyboard.top(), width, kSharpLength * keyboard.height()};
}

QRectF faceRect(int key, const QRectF& keyboard) {
    QRectF face = keyRect(key, keyboard);
    if (!isSharp(key))
        face.setTop(face.top() + kSharpLength * keyboard.height());
    return face;
}

std::optional<int> keyAt(QPointF point, const QRectF& keyboard) {
    std::optional<int> found;
    for (int key = 0; key < kKeys; ++key) {
        const QRectF rect = keyRect(key, keyboard);
        const bool inside = point.x() >= rect.left() && point.x() < rect.right() &&
                            point.y() >= rect.top() && point.y() < rect.bottom();
        if (inside && (!found || isSharp(key)))
            found = key;
    }
    return found;
}

}  // namespace piano_key_layout
