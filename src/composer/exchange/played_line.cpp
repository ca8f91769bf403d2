#include "composer/exchange/played_line.h"

#include "composer/exchange/note_grid.h"
#include "composer/playback/articulation.h"
#include "composer/score/written_value.h"

#include <algorithm>

namespace midi_recording {
namespace {

constexpr double kMsPerMinute = 60'000;
/// An entry loses a millisecond at most. Rests that follow each other are read as one, which lost
/// one for each of them; a whole unit lost cannot be told.
constexpr double kNoLoss = 0.01;
constexpr double kLoss = 1.01;
constexpr double kLossOfRests = 20;

/// A note with the rest behind it.
struct Split {
    Value note;
    int rest = 0;
    int values = 0;  ///< that write both
};

/// Reads a note by what the player does with each letter.
class LetterReader {
public:
    LetterReader(const NoteGrid& grid, int tempo)
        : grid_(grid),
          tempo_(tempo),
          lossOfRests_(std::min(kLossOfRests, grid.unitTicks() - kNoLoss)) {}

    /// The units of a rest or of several.
    std::optional<int> restOf(std::int64_t ms) const {
        return grid_.sumOf(static_cast<double>(ms), lossOfRests_, kNoLoss);
    }

    /// `total` is the time to the next note.
    std::optional<Split> read(const Note& note, std::int64_t total) const {
        std::optional<Split> best;
        const std::int64_t sounds = note.off - note.on;
        for (const letter::EntryLetter& row : letter::kAll) {
            if (row.isRest() || row.velocity != note.velocity)
                continue;
            const std::int64_t gap = row.soundingDivisor == 1 ? Articulation::kGapMs : 0;
            // Whole milliseconds do not tell what the division left.
            for (int left = 0; left < row.soundingDivisor; ++left) {
                const std::int64_t entry = sounds * row.soundingDivisor + gap + left;
                const auto units = grid_.unitsOf(static_cast<double>(entry), kLoss, kNoLoss);
                const auto split = units ? splitOf(row, *units, note, total) : std::nullopt;
                if (split && (!best || split->values < best->values))
                    best = split;
            }
        }
        return best;
    }

private:
    /// Whether the player would sound the value as long, and what is left is a rest.
    std::optional<Split> splitOf(const letter::EntryLetter& row, int units, const Note& note,
                                 std::int64_t total) const {
        const Value value{note.note, units, row.letter};
        const MelodyEntry entry = entryOf(value, QLatin1Char(','));
        Articulation played;
        played.articulate(entry.attribute, entry.quarters(), tempo_);
        const std::int64_t takes = played.soundingMs + played.silenceMs + Articulation::kGapMs;
        if (played.soundingMs != note.off - note.on || takes > total)
            return std::nullopt;
        const std::optional<int> rest = restOf(total - takes);
        if (!rest)
            return std::nullopt;
        return Split{value, *rest, valuesFor(units) + valuesFor(*rest)};
    }

    const NoteGrid& grid_;
    int tempo_;
    double lossOfRests_;
};

}  // namespace

MelodyEntry entryOf(const Value& value, QChar decimalSeparator) {
    return MelodyEntry::make(static_cast<pitch::NoteNumber>(value.note),
                             static_cast<double>(value.units) / score::kUnitsPerQuarter,
                             QString(QLatin1Char(value.letter)), decimalSeparator);
}

std::optional<std::vector<Value>> playedLine(const Recording& recording, int tempo) {
    const NoteGrid grid(kMsPerMinute / tempo);
    const LetterReader reader(grid, tempo);
    std::vector<Value> line;
    const auto addRest = [&line](int units) {
        if (units > 0)
            line.push_back({0, units, letter::kPausa.front().toLatin1()});
    };
    const auto lead = reader.restOf(recording.notes.front().on);
    if (!lead)
        return std::nullopt;
    addRest(*lead);
    for (std::size_t i = 0; i < recording.notes.size(); ++i) {
        const Note& note = recording.notes[i];
        const bool isLast = i + 1 == recording.notes.size();
        const std::int64_t next = isLast ? recording.end : recording.notes[i + 1].on;
        const std::optional<Split> split = reader.read(note, next - note.on);
        if (!split)
            return std::nullopt;
        line.push_back(split->note);
        addRest(split->rest);
    }
    return line;
}

}  // namespace midi_recording
