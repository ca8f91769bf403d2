#include "composer/score/spelling.h"

#include <utility>

namespace score {
namespace {

/// The semitones of the degrees above Do.
constexpr std::array<int, pitch::kDegrees> kNaturals{0, 2, 4, 5, 7, 9, 11};

/// The degrees in fifths, as the sharps are added; the flats go the other way.
constexpr std::array<int, pitch::kDegrees> kInFifths{3, 0, 4, 1, 5, 2, 6};

constexpr int kMinorIsFurther = 3;  ///< fifths from the tonic of a major key to its minor key's

int naturalOf(int degree) {
    return kNaturals[static_cast<std::size_t>(degree)];
}

/// The place of a degree in fifths from Do, without its alteration.
int fifthsOf(int degree) {
    constexpr int kDoIs = 1;
    int place = 0;
    while (kInFifths[static_cast<std::size_t>(place)] != degree)
        ++place;
    return place - kDoIs;
}

int modulo(int number, int by) {
    return (number % by + by) % by;
}

bool sounds(int degree, int alter, int pitchClass) {
    return modulo(naturalOf(degree) + alter - pitchClass, pitch::kSemitones) == 0;
}

/// The degree of the key's tonic.
int tonicOf(const Key& key) {
    const int fifths = key.fifths + (key.minor ? kMinorIsFurther : 0);
    constexpr int kDoIs = 1;
    return kInFifths[static_cast<std::size_t>(modulo(fifths + kDoIs, pitch::kDegrees))];
}

std::optional<std::pair<int, int>> ofTheKey(int pitchClass, const Key& key) {
    for (int degree = 0; degree < pitch::kDegrees; ++degree) {
        const int alter = signatureAlter(key, degree);
        if (sounds(degree, alter, pitchClass))
            return std::pair(degree, alter);
    }
    if (!key.minor)
        return std::nullopt;
    for (const int above : {5, 6}) {
        const int degree = (tonicOf(key) + above) % pitch::kDegrees;
        const int alter = signatureAlter(key, degree) + 1;
        if (sounds(degree, alter, pitchClass))
            return std::pair(degree, alter);
    }
    return std::nullopt;
}

std::pair<int, int> outsideTheKey(int pitchClass, const Key& key) {
    const int sign = key.fifths < 0 ? -1 : 1;
    for (const int alter : {0, sign}) {
        for (int degree = 0; degree < pitch::kDegrees; ++degree) {
            if (sounds(degree, alter, pitchClass))
                return {degree, alter};
        }
    }
    return {};
}

}  // namespace

pitch::NoteNumber Spelling::note() const {
    return static_cast<pitch::NoteNumber>((octave + 1) * pitch::kSemitones + naturalOf(degree) +
                                          alter);
}

int signatureAlter(const Key& key, int degree) {
    // Fa, a fifth below Do, is the first to be sharp; Si, five fifths above it, the first flat.
    constexpr int kFirstSharp = -1;
    constexpr int kFirstFlat = 5;
    if (key.fifths > 0)
        return fifthsOf(degree) - kFirstSharp < key.fifths ? 1 : 0;
    return kFirstFlat - fifthsOf(degree) < -key.fifths ? -1 : 0;
}

Spelling spell(pitch::NoteNumber note, const Key& key) {
    const int pitchClass = note % pitch::kSemitones;
    const auto [degree, alter] = ofTheKey(pitchClass, key).value_or(outsideTheKey(pitchClass, key));
    const int octave = (note - alter - naturalOf(degree)) / pitch::kSemitones - 1;
    return {degree, alter, octave};
}

std::optional<int> Accidentals::signFor(const Spelling& spelling) {
    const int usual = signatureAlter(key_, spelling.degree);
    auto& changed = changed_[static_cast<std::size_t>(spelling.step())];
    bool& isDoubtful = tiedIn_[static_cast<std::size_t>(spelling.step())];
    const bool holds = changed.value_or(usual) == spelling.alter;
    if (holds && !isDoubtful && !(repeats_ && spelling.alter != usual))
        return std::nullopt;
    isDoubtful = false;
    changed = spelling.alter;
    return spelling.alter;
}

void Accidentals::tieIn(const Spelling& spelling) {
    const auto step = static_cast<std::size_t>(spelling.step());
    if (!changed_[step] && spelling.alter != signatureAlter(key_, spelling.degree))
        tiedIn_[step] = true;
}

}  // namespace score
