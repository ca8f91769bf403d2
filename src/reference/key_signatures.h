#pragma once

#include "core/grand_staff.h"

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
    {0, "Do", "La"},
    {1, "Sol", "Mi"},
    {2, "Re", "Si"},
    {3, "La", "Fa diesis"},
    {4, "Mi", "Do diesis"},
    {5, "Si", "Sol diesis"},
    {6, "Fa diesis", "Re diesis"},
    {7, "Do diesis", "La diesis"},
    {-1, "Fa", "Re"},
    {-2, "Si bemolle", "Sol"},
    {-3, "Mi bemolle", "Do"},
    {-4, "La bemolle", "Fa"},
    {-5, "Re bemolle", "Si bemolle"},
    {-6, "Sol bemolle", "Mi bemolle"},
    {-7, "Do bemolle", "La bemolle"},
});

/// A sharp or a flat: the note it alters, and where it stands on the stave of the treble clef, in
/// half spaces from the bottom line.
struct Sign {
    const char* note;
    int position;
};

constexpr std::array<Sign, 7> kSharps{
    {{"Fa", 8}, {"Do", 5}, {"Sol", 9}, {"Re", 6}, {"La", 3}, {"Mi", 7}, {"Si", 4}}};
constexpr std::array<Sign, 7> kFlats{
    {{"Si", 4}, {"Mi", 7}, {"La", 3}, {"Re", 6}, {"Sol", 2}, {"Do", 5}, {"Fa", 1}}};

/// The same sign stands so much lower on the stave of the bass clef.
constexpr int kBassShift = grand_staff::kBassShift;

constexpr std::span<const Sign> signsOf(const KeySignature& key) {
    return std::span(key.isSharp() ? kSharps : kFlats).first(static_cast<std::size_t>(key.count()));
}

QString majorName(const KeySignature& key);     ///< "Re maggiore"
QString minorName(const KeySignature& key);     ///< "Si minore"
QString signsInWords(const KeySignature& key);  ///< "2 diesis: Fa, Do"

}  // namespace key_signatures
