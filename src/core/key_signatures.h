#pragma once

#include "core/grand_staff.h"
#include "platform/user_text.h"

#include <QString>

#include <array>
#include <cstdlib>
#include <span>

/// The fifteen key signatures: none, one to seven sharps, one to seven flats.
namespace key_signatures {

struct KeySignature {
    int fifths;  ///< so many sharps, or as many flats if it is negative
    const char* major;
    const char* minor;

    constexpr int count() const { return std::abs(fifths); }
    constexpr bool isSharp() const { return fifths > 0; }
};

constexpr auto kAll = std::to_array<KeySignature>({
    {0, QT_TRANSLATE_NOOP("UserText", "Do"), QT_TRANSLATE_NOOP("UserText", "La")},
    {1, QT_TRANSLATE_NOOP("UserText", "Sol"), QT_TRANSLATE_NOOP("UserText", "Mi")},
    {2, QT_TRANSLATE_NOOP("UserText", "Re"), QT_TRANSLATE_NOOP("UserText", "Si")},
    {3, QT_TRANSLATE_NOOP("UserText", "La"), QT_TRANSLATE_NOOP("UserText", "Fa diesis")},
    {4, QT_TRANSLATE_NOOP("UserText", "Mi"), QT_TRANSLATE_NOOP("UserText", "Do diesis")},
    {5, QT_TRANSLATE_NOOP("UserText", "Si"), QT_TRANSLATE_NOOP("UserText", "Sol diesis")},
    {6, QT_TRANSLATE_NOOP("UserText", "Fa diesis"), QT_TRANSLATE_NOOP("UserText", "Re diesis")},
    {7, QT_TRANSLATE_NOOP("UserText", "Do diesis"), QT_TRANSLATE_NOOP("UserText", "La diesis")},
    {-1, QT_TRANSLATE_NOOP("UserText", "Fa"), QT_TRANSLATE_NOOP("UserText", "Re")},
    {-2, QT_TRANSLATE_NOOP("UserText", "Si bemolle"), QT_TRANSLATE_NOOP("UserText", "Sol")},
    {-3, QT_TRANSLATE_NOOP("UserText", "Mi bemolle"), QT_TRANSLATE_NOOP("UserText", "Do")},
    {-4, QT_TRANSLATE_NOOP("UserText", "La bemolle"), QT_TRANSLATE_NOOP("UserText", "Fa")},
    {-5, QT_TRANSLATE_NOOP("UserText", "Re bemolle"), QT_TRANSLATE_NOOP("UserText", "Si bemolle")},
    {-6, QT_TRANSLATE_NOOP("UserText", "Sol bemolle"), QT_TRANSLATE_NOOP("UserText", "Mi bemolle")},
    {-7, QT_TRANSLATE_NOOP("UserText", "Do bemolle"), QT_TRANSLATE_NOOP("UserText", "La bemolle")},
});

/// A sharp or a flat: the note it alters, and where it stands on the stave of the treble clef, in
/// half spaces from the bottom line.
struct Sign {
    const char* note;
    int position;
};

constexpr std::array<Sign, 7> kSharps{{{QT_TRANSLATE_NOOP("UserText", "Fa"), 8},
                                       {QT_TRANSLATE_NOOP("UserText", "Do"), 5},
                                       {QT_TRANSLATE_NOOP("UserText", "Sol"), 9},
                                       {QT_TRANSLATE_NOOP("UserText", "Re"), 6},
                                       {QT_TRANSLATE_NOOP("UserText", "La"), 3},
                                       {QT_TRANSLATE_NOOP("UserText", "Mi"), 7},
                                       {QT_TRANSLATE_NOOP("UserText", "Si"), 4}}};
constexpr std::array<Sign, 7> kFlats{{{QT_TRANSLATE_NOOP("UserText", "Si"), 4},
                                      {QT_TRANSLATE_NOOP("UserText", "Mi"), 7},
                                      {QT_TRANSLATE_NOOP("UserText", "La"), 3},
                                      {QT_TRANSLATE_NOOP("UserText", "Re"), 6},
                                      {QT_TRANSLATE_NOOP("UserText", "Sol"), 2},
                                      {QT_TRANSLATE_NOOP("UserText", "Do"), 5},
                                      {QT_TRANSLATE_NOOP("UserText", "Fa"), 1}}};

/// The same sign stands so much lower on the stave of the bass clef.
constexpr int kBassShift = grand_staff::kBassShift;

/// Of so many sharps, or flats if it is negative.
constexpr std::span<const Sign> signsOf(int fifths) {
    return std::span(fifths > 0 ? kSharps : kFlats)
        .first(static_cast<std::size_t>(fifths < 0 ? -fifths : fifths));
}

constexpr std::span<const Sign> signsOf(const KeySignature& key) {
    return signsOf(key.fifths);
}

QString majorName(const KeySignature& key);  ///< "Re maggiore"
QString minorName(const KeySignature& key);  ///< "Si minore"

}  // namespace key_signatures
