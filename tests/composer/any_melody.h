#pragma once

#include "composer/melody/melody.h"
#include "composer/score/bar_view.h"

#include <random>

/// What an entry of a random melody lasts, in 96ths of a quarter note: what the palette and the tie
/// make and, now and then, something that no values give.
inline int anyUnits(std::mt19937& random) {
    constexpr int kTriplets[] = {256, 128, 64, 32, 16, 8, 4};
    const int plain = 6 << random() % 7;
    const auto kind = random() % 8;
    if (kind == 1)
        return plain + (6 << random() % 7);
    if (kind == 3)
        return random() % 40 == 0 ? static_cast<int>(random() % 2) : 288;
    if (kind == 2 || kind == 4 || kind == 5)
        return kTriplets[random() % 7] + (kind == 2 ? plain * 5 : 0);
    return kind == 0 ? plain + plain / 2 : plain;
}

/// An entry of so many 96ths of a quarter note.
inline MelodyEntry lasting(int units, int note = 60, char letter = 'n') {
    return MelodyEntry::make(static_cast<pitch::NoteNumber>(note), units / 96.0,
                             QString(QChar(letter)), ',');
}

inline Melody melodyOf(std::vector<MelodyEntry> entries) {
    MelodyDelta delta{0, 0, std::move(entries), true, {}};
    Melody melody;
    melody.exchange(delta);
    return melody;
}

/// A random melody; `units` are the lengths of its entries.
inline Melody anyMelody(std::mt19937& random, std::vector<int>& units) {
    units.resize(random() % 100 == 0 ? 300 : 1 + random() % 12);
    std::vector<MelodyEntry> entries;
    for (int& length : units) {
        length = anyUnits(random);
        const bool rest = random() % 4 == 0;
        const int note = rest ? 0 : 36 + static_cast<int>(random() % 60);
        entries.push_back(lasting(length, note, rest ? 'p' : "nsta"[random() % 4]));
    }
    return melodyOf(std::move(entries));
}

inline score::Notation anyNotation(std::mt19937& random) {
    score::Notation notation{score::kMetres[random() % 4], {static_cast<int>(random() % 15) - 7}};
    notation.key.minor = random() % 2;
    return notation;
}
