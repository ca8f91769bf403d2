#pragma once

#include "core/pitch.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

/// A score as another program wrote it, before it is a melody. Durations and places are counted in
/// ticks, of which a quarter note has so many that every usual tuplet down to 128ths is whole.
namespace imported {

constexpr std::int64_t kTicksPerQuarter = 10080;

/// Longer ones are refused, so that sums stay far from any overflow.
constexpr std::int64_t kLongestDuration = 4096 * kTicksPerQuarter;

struct Note {
    std::int64_t onset = 0;  ///< from the beginning of its bar
    std::int64_t duration = 0;
    pitch::NoteNumber note = pitch::kRest;  ///< as it sounds; 0 for a rest
    int voice = 0;
    char letter = 'n';  ///< how it is played
    bool tieStarts = false;
    bool tieStops = false;

    std::int64_t end() const { return onset + duration; }
};

/// The signs of a bar that say which bar is played next.
struct BarSigns {
    bool startsRepeat = false;
    int timesRepeated = 0;      ///< the times that a repeat ending here is played; 0 without one
    std::uint32_t endings = 0;  ///< bit n is set in the bars of ending n
    bool segno = false;
    bool coda = false;
    bool fine = false;
    bool toCoda = false;
    bool daCapo = false;
    bool dalSegno = false;
};

struct Bar {
    QString number;  ///< as the score counts it
    std::vector<Note> notes;
    std::int64_t length = 0;
    BarSigns signs;
};

/// What stays out of a melody, each told once.
enum class LeftOut {
    Ornaments,
    Lyrics,
    Slurs,
    Dynamics,
    Articulations,
    Words,
    TempoChanges,
    Gaps,  ///< between notes, shorter than a rest that is written
    Others
};

struct Score {
    std::vector<Bar> bars;
    std::optional<double> tempo;  ///< quarter notes per minute
    std::optional<int> program;   ///< General MIDI program 0..127
    std::vector<LeftOut> leftOut;
    QStringList faults;  ///< why it cannot become a melody

    void leaveOut(LeftOut what);
};

}  // namespace imported
