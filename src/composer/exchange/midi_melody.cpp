#include "composer/exchange/midi_melody.h"

#include "composer/exchange/note_grid.h"
#include "composer/exchange/played_line.h"
#include "composer/score/written_value.h"
#include "platform/user_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace midi_recording {
namespace {

using imported::LeftOut;

constexpr double kUsPerMinute = 60e6;
constexpr int kUsPerMs = 1000;
constexpr int kMsPerMinute = 60'000;

constexpr int kDrums = 9;  ///< the channel of General MIDI

/// A tempo in whole microseconds is so close to the whole number that was meant.
constexpr double kTempoRounding = 0.02;

/// No more of them are told.
constexpr qsizetype kMostFaults = 11;

/// The reasons why notes are no line of one voice in the range.
class Check {
public:
    explicit Check(const Recording& recording) : recording_(recording) {}

    QStringList faults() && {
        const std::vector<Note>& notes = recording_.notes;
        if (notes.empty())
            return {UserText::tr("non ha note")};
        const NoteGrid grid(recording_.ticksPerQuarter);
        const double shortest = grid.unitTicks();
        for (std::size_t i = 0; i < notes.size() && faults_.size() < kMostFaults; ++i) {
            const Note& note = notes[i];
            if (note.channel == kDrums)
                add(note, UserText::tr("percussioni"));
            else if (!pitch::isPlayable(note.note))
                add(note, UserText::tr("una nota è fuori dalle 5 ottave"));
            if (i == 0)
                continue;
            const Note& before = notes[i - 1];
            if (static_cast<double>(note.on - before.on) < shortest)
                add(note, UserText::tr("accordo"));
            else if (before.off - note.on > mostOverlap(before, note, grid))
                add(note, UserText::tr("più voci insieme"));
        }
        return std::move(faults_);
    }

private:
    /// Legato playing may hold a note a little into the next one.
    static std::int64_t mostOverlap(const Note& before, const Note& note, const NoteGrid& grid) {
        constexpr int k64th = 6;
        const auto most = static_cast<std::int64_t>(k64th * grid.unitTicks());
        return std::min({most, (note.on - before.on) / 2, (note.off - note.on) / 2});
    }

    void add(const Note& note, const QString& reason) {
        const QString fault =
            UserText::tr("battuta %1: %2").arg(recording_.barOf(note.on)).arg(reason);
        if (!faults_.contains(fault))
            faults_ += fault;
    }

    const Recording& recording_;
    QStringList faults_;
};

/// Reads notes that were written, not played: each begins on the grid, and a note lasts to the next
/// one unless a rest between them is written more simply.
class WrittenLine {
public:
    explicit WrittenLine(const Recording& recording)
        : recording_(recording), grid_(recording.ticksPerQuarter) {}

    bool read() {
        isExact_ = std::all_of(recording_.notes.begin(), recording_.notes.end(),
                               [this](const Note& note) { return exactUnits(note).has_value(); });
        addRest(advanceTo(recording_.notes.front(), nullptr));
        for (std::size_t i = 0; i < recording_.notes.size(); ++i) {
            const Note& note = recording_.notes[i];
            const bool isLast = i + 1 == recording_.notes.size();
            const int room =
                isLast ? score::kLongestMelody : advanceTo(recording_.notes[i + 1], &note);
            if (faults_.size() >= kMostFaults)
                break;
            const int units = lengthOf(note, room);
            line_.push_back({note.note, units, letter::kNormale.front().toLatin1()});
            if (!isLast)
                addRest(room - units);
        }
        return faults_.isEmpty();
    }

    std::vector<Value> takeLine() { return std::move(line_); }
    QStringList takeFaults() { return std::move(faults_); }
    bool hasGaps() const { return hasGaps_; }

private:
    /// The units from the note before to the beginning of this one: a value, or one and a rest.
    int advanceTo(const Note& note, const Note* before) {
        const double ticks =
            static_cast<double>(note.on) - static_cast<double>(position_) * grid_.unitTicks();
        std::optional<int> units = grid_.unitsOf(ticks);
        if (const auto length = before && !units ? exactUnits(*before) : std::nullopt) {
            const auto rest = grid_.unitsOf(ticks - *length * grid_.unitTicks());
            units = rest ? std::optional(*length + *rest) : std::nullopt;
        }
        if (!units) {
            const auto bar = recording_.barOf(note.on);
            const QString fault =
                UserText::tr("battuta %1: una nota non comincia su un sessantaquattresimo")
                    .arg(bar);
            if (!faults_.contains(fault))
                faults_ += fault;
        }
        const double nearest = std::max(0.0, std::round(ticks / grid_.unitTicks()));
        const int advance =
            units.value_or(static_cast<int>(std::min<double>(nearest, score::kLongestMelody)));
        position_ += advance;
        return advance;
    }

    int lengthOf(const Note& note, int room) {
        const auto sounds = static_cast<double>(note.off - note.on);
        if (sounds > room * grid_.unitTicks() - grid_.rounding())
            return room;
        const std::optional<int> exact = exactUnits(note);
        if (exact && (isExact_ || (isSimple(*exact) && canWrite(room - *exact))))
            return *exact;
        hasGaps_ = true;
        const int value = nextValue(sounds);
        return value <= room && canWrite(room - value) ? value : room;
    }

    std::optional<int> exactUnits(const Note& note) const {
        const std::optional<int> units = grid_.unitsOf(static_cast<double>(note.off - note.on));
        return units > 0 ? units : std::nullopt;
    }

    /// Where some lengths are beside the grid, others may be on it by chance.
    static bool isSimple(int units) {
        constexpr int kFewValues = 2;
        constexpr int kBeat = score::kUnitsPerQuarter / 4;
        return units % kBeat == 0 || valuesFor(units) <= kFewValues;
    }

    /// Any longer time can be written.
    static bool canWrite(int units) {
        return units >= score::kUnitsPerQuarter || valuesFor(units) < kNoValues;
    }

    /// The shortest single value that is not shorter than what sounds.
    int nextValue(double ticks) const {
        const auto least =
            static_cast<int>(std::ceil((ticks - grid_.rounding()) / grid_.unitTicks()));
        for (int units = std::max(least, 1); units <= score::kUnitsPerQuarter * 6; ++units) {
            if (score::plainValue(units) || score::tripletValue(units))
                return units;
        }
        return least;
    }

    void addRest(int units) {
        if (units > 0)
            line_.push_back({0, units, letter::kPausa.front().toLatin1()});
    }

    const Recording& recording_;
    NoteGrid grid_;
    std::int64_t position_ = 0;  ///< of the last note, in units
    std::vector<Value> line_;
    QStringList faults_;
    bool isExact_ = false;  ///< all lengths are on the grid
    bool hasGaps_ = false;
};

/// The tempo of a file whose ticks are milliseconds; 0 of any other.
int playedTempo(const Recording& recording) {
    if (recording.usPerQuarter != recording.ticksPerQuarter * kUsPerMs)
        return 0;
    return static_cast<int>(
        std::lround(static_cast<double>(kMsPerMinute) / recording.ticksPerQuarter));
}

}  // namespace

Line lineOf(const Recording& recording, QChar decimalSeparator) {
    Line line;
    line.faults = Check(recording).faults();
    if (!line.faults.isEmpty())
        return line;
    line.tempo = kUsPerMinute / recording.usPerQuarter;
    if (std::abs(line.tempo - std::round(line.tempo)) < kTempoRounding)
        line.tempo = std::round(line.tempo);
    std::optional<std::vector<Value>> values;
    if (const int tempo = playedTempo(recording); tempo > 0) {
        values = playedLine(recording, tempo);
        if (values)
            line.tempo = tempo;
    }
    if (!values) {
        WrittenLine written(recording);
        if (!written.read()) {
            line.faults = written.takeFaults();
            return line;
        }
        values = written.takeLine();
        if (written.hasGaps())
            line.leftOut.push_back(LeftOut::Gaps);
        const int velocity = recording.notes.front().velocity;
        if (std::any_of(recording.notes.begin(), recording.notes.end(),
                        [velocity](const Note& note) { return note.velocity != velocity; }))
            line.leftOut.push_back(LeftOut::Dynamics);
    }
    if (values->size() > Melody::kMaxEntries) {
        line.faults += UserText::tr("ha più di %1 note").arg(Melody::kMaxEntries);
        return line;
    }
    for (const Value& value : *values)
        line.entries.push_back(entryOf(value, decimalSeparator));
    return line;
}

}  // namespace midi_recording
