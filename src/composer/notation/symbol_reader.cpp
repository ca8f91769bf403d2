#include "composer/notation/symbol_reader.h"

#include "composer/notation/rhythm_groups.h"
#include "composer/notation/spacing.h"
#include "composer/score/bar_divider.h"

#include <algorithm>

namespace notation {
namespace {

/// So many entries behind the end of a system are looked at for the staff of its last ones.
constexpr int kLookAhead = 8;

using score::WrittenNote;

/// The note that is to be divided for an entry, some units of which stand in bars before.
WrittenNote noteOf(const staff_entry::Entry& entry, int index, int before) {
    WrittenNote note;
    note.entry = index;
    if (!staff_entry::isRest(entry))
        note.note = static_cast<pitch::NoteNumber>(entry.noteNumber);
    note.tiedBack = before > 0 && !note.isRest();
    note.letter = before > 0 ? nullptr : &letter::rowOf(letter::kNormale.front().toLatin1());
    return note;
}

Symbol symbolOf(const WrittenNote& note, double onset) {
    Symbol symbol;
    symbol.entry = note.entry;
    symbol.value = {note.value.value, note.value.dotted ? 1 : 0};
    symbol.rest = note.isRest();
    symbol.triplet = note.value.triplet;
    symbol.opensEntry = note.letter != nullptr;
    symbol.closesEntry = note.closesEntry;
    symbol.onset = onset;
    symbol.length = static_cast<double>(note.value.units()) / score::kUnitsPerQuarter;
    symbol.spelling = note.spelling;
    symbol.accidental = note.accidental;
    return symbol;
}

void markBarRest(const score::Bar& bar, Symbol& symbol) {
    symbol.fillsBar = bar.notes.size() == 1 && symbol.rest && !symbol.triplet;
    if (symbol.fillsBar)
        symbol.value = {engraving::Duration::Whole, 0};
}

class SymbolReader {
public:
    SymbolReader(const Source& source, const SystemStart& start, double room)
        : source_(source),
          start_(start),
          room_(room),
          count_(source.count()),
          index_(start.bar ? start.bar->entry : start.entry),
          onset_(start.onset),
          bar_(start.bar) {}

    Reading read() {
        while (index_ < count_ && more_ > 0) {
            if (bar_)
                readBar();
            else
                readEntry();
        }
        const std::vector<Span> barless = tripletsOf(reading_.symbols, inBars_);
        reading_.triplets.insert(reading_.triplets.end(), barless.begin(), barless.end());
        // The end of the melody counts as read.
        reading_.readTo = seen_ < count_ ? seen_ : count_ + 1;
        reading_.all = index_ >= count_;
        return std::move(reading_);
    }

private:
    const staff_entry::Entry& entryAt(int index) {
        entry_ = source_.entryAt(index);
        seen_ = std::max(seen_, index + 1);
        const bool isNew = index - start_.entry == static_cast<int>(reading_.entries.size());
        if (isNew)
            reading_.entries.push_back(entry_);
        return entry_;
    }

    void readEntry() {
        const std::size_t first = reading_.symbols.size();
        appendSymbols(reading_.symbols, index_, entryAt(index_), onset_, source_.notation.key);
        reading_.behind.resize(reading_.symbols.size());
        onset_ = reading_.symbols.back().onset + reading_.symbols.back().length;
        ++index_;
        countFrom(first, 1);
    }

    /// Reads to the end of the bar, or of the melody, or to an entry that cannot be in bars.
    void readBar() {
        score::BarDivider divider(source_.notation.metre);
        const int begins = bar_->number * source_.notation.metre->units();
        int written = 0;  ///< units
        int index = bar_->entry;
        int into = bar_->into;
        bool goesOn = true;
        while (goesOn && index < count_ && !divider.barIsFull()) {
            const staff_entry::Entry& entry = entryAt(index);
            const auto units = score::unitsOf(entry.duration);
            const bool fits = units && *units - into <= score::kLongestMelody - begins - written;
            if (!fits || (into == 0 && !divider.canWrite(*units))) {
                reading_.barless = index;
                goesOn = false;
                continue;
            }
            WrittenNote note = noteOf(entry, index, into);
            const int left = divider.append(note, *units - into);
            written += *units - into - left;
            into = left > 0 ? *units - left : 0;
            index += left > 0 ? 0 : 1;
        }
        const bool full = divider.barIsFull();
        std::vector<score::Bar> bars = divider.takeBars();
        const std::size_t first = reading_.symbols.size();
        const int entries = index - bar_->entry;
        if (!bars.empty())
            appendBar(bars.front(), full, {bar_->number + 1, index, into, 0});
        onset_ = static_cast<double>(begins + written) / score::kUnitsPerQuarter;
        index_ = index;
        bar_ = goesOn ? std::optional(BarPlace{bar_->number + 1, index, into, 0}) : std::nullopt;
        countFrom(first, entries);
        // One entry may take more bars than the room holds.
        if (used_ > 2 * room_)
            more_ = 0;
    }

    /// Appends what the system has of a bar.
    void appendBar(score::Bar& bar, bool full, const BarPlace& next) {
        score::finishBar(bar, source_.notation);
        std::vector<Symbol>& symbols = reading_.symbols;
        int units = bar_->number * source_.notation.metre->units();
        int notes = 0;
        bool inGroup = false;
        for (const WrittenNote& note : bar.notes) {
            const double onset = static_cast<double>(units) / score::kUnitsPerQuarter;
            units += note.value.units();
            const bool isBefore = notes++ < bar_->notes;
            const bool opens = note.groupStarts || (inGroup && notes == bar_->notes + 1);
            inGroup = note.value.triplet && !note.groupEnds;
            if (isBefore)
                continue;
            symbols.push_back(symbolOf(note, onset));
            reading_.behind.push_back(BarPlace{bar_->number, bar_->entry, bar_->into, notes});
            const std::size_t last = symbols.size() - 1;
            if (opens)
                reading_.triplets.push_back({last, last});
            else if (note.value.triplet)
                reading_.triplets.back().last = last;
        }
        if (full && !symbols.empty()) {
            symbols.back().endsBar = true;
            reading_.behind.back() = next;
            markBarRest(bar, symbols.back());
        }
        inBars_ = symbols.size();
    }

    /// Takes account of what was appended.
    void countFrom(std::size_t first, int entries) {
        for (std::size_t i = first; i < reading_.symbols.size(); ++i)
            used_ += spaceAfter(reading_.symbols[i].length);
        if (used_ > room_)
            more_ -= entries;
    }

    const Source& source_;
    const SystemStart& start_;
    double room_;
    int count_;

    int index_;                    ///< the next entry
    double onset_;                 ///< where it begins
    std::optional<BarPlace> bar_;  ///< the bar that is read next

    Reading reading_;
    staff_entry::Entry entry_;
    int seen_ = 0;
    std::size_t inBars_ = 0;  ///< symbols
    double used_ = 0;
    int more_ = kLookAhead;
};

}  // namespace

SystemStart startOf(const Source& source) {
    SystemStart start;
    if (source.notation.metre)
        start.bar = BarPlace();
    return start;
}

Reading readSymbols(const Source& source, const SystemStart& start, double room) {
    return SymbolReader(source, start, room).read();
}

}  // namespace notation
