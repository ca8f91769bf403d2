#pragma once

#include "core/pitch.h"

#include <array>
#include <optional>

/// How notes are spelled and which accidentals they need.
namespace score {

/// A key, which decides about spelling alone.
struct Key {
    static constexpr int kMostSigns = 7;

    int fifths = 0;  ///< so many sharps, or as many flats if it is negative: -7..7
    bool minor = false;

    bool operator==(const Key&) const = default;
};

/// A note as it is written: 60 is degree 0 (Do), alteration 0, octave 4.
struct Spelling {
    int degree = 0;  ///< 0 (Do) to 6 (Si)
    int alter = 0;   ///< semitones: -2 for a double flat to 2 for a double sharp
    int octave = 0;  ///< of the degree: the Si below middle C, raised, is a Si of octave 3

    /// Counts degrees over all octaves, as `pitch` does.
    int step() const { return octave * pitch::kDegrees + degree; }
    pitch::NoteNumber note() const;

    bool operator==(const Spelling&) const = default;
};

/// The alteration that the signature gives to a degree.
int signatureAlter(const Key& key, int degree);

/// Notes of the key are spelled by its signature, in minor with the raised sixth and seventh degree
/// as well. The others are natural where they can be, otherwise sharp in a key without flats and
/// flat in one with flats.
Spelling spell(pitch::NoteNumber note, const Key& key);

/// The accidentals of one bar: each holds for its line or space to the end of the bar.
class Accidentals {
public:
    explicit Accidentals(const Key& key) : key_(key) {}

    /// The alteration whose sign stands before the note; nothing if none is needed.
    std::optional<int> signFor(const Spelling& spelling);

    /// A note that is tied to the one before. Where the bar before altered it, its sign does not
    /// hold here, but readers may think so: the next note on its line or space has a sign.
    void tieIn(const Spelling& spelling);

    /// Music without bars repeats what an accidental altered before.
    void setRepeats(bool on) { repeats_ = on; }

private:
    static constexpr std::size_t kSteps = 80;

    Key key_;
    bool repeats_ = false;
    std::array<std::optional<int>, kSteps> changed_{};
    std::array<bool, kSteps> tiedIn_{};
};

}  // namespace score
