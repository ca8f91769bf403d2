#pragma once

#include "composer/melody/melody.h"
#include "composer/score/bar_view.h"

#include <random>

/// What an entry of a random melody lasts, in 96ths of a quarter note: what the palette and the tie
/// make and, now and then, something that no values give.
inline int anyUnits(std::mt19937& random) {
    constexpr int kTriplets[] = {256, 128, 64, 32, 16, 8, 4};
    const int plain = 6 << random() % 7;
    switch (random() % 8) {
        case 0:
            return plain + plain / 2;
        case 1:
            return plain + (6 << random() % 7);
        case 2:
            return plain * 5 + kTriplets[random() % 7];
        case 3:
            return random() % 40 == 0 ? static_cast<int>(random() % 2) : 288;
        case 4:
        case 5:
            return kTriplets[random() % 7];
        default:
            return plain;
    }
}

/// A random melody; `units` are the lengths of its entries.
inline Melody anyMelody(std::mt19937& random, std::vector<int>& units) {
    units.resize(random() % 100 == 0 ? 300 : 1 + random() % 12);
    MelodyDelta delta;
    for (int& length : units) {
        length = anyUnits(random);
        const bool rest = random() % 4 == 0;
        const auto note = static_cast<pitch::NoteNumber>(rest ? 0 : 36 + random() % 60);
        const QString letter = rest ? "p" : QString("nsta"[random() % 4]);
        delta.others.push_back(MelodyEntry::make(note, length / 96.0, letter, ','));
    }
    Melody melody;
    melody.exchange(delta);
    return melody;
}

inline score::Notation anyNotation(std::mt19937& random) {
    score::Notation notation{score::kMetres[random() % 4], {static_cast<int>(random() % 15) - 7}};
    notation.key.minor = random() % 2;
    return notation;
}
