#include "composer/notation/system_layout.h"

#include "composer/notation/rhythm_groups.h"
#include "composer/notation/spacing.h"
#include "composer/notation/staff_choice.h"
#include "composer/notation/system_room.h"

#include <algorithm>
#include <utility>

namespace notation {
namespace {

/// So many entries behind the end of a system are looked at for the staff of its last ones.
constexpr int kLookAhead = 8;

constexpr double kTolerance = 1e-6;

/// Lays out one system step by step; each step needs the ones before it.
class Builder {
public:
    Builder(const Source& source, const SystemStart& start) : source_(source) {
        system_.start = start;
        system_.next = start;
    }

    /// Reads as many entries as could fit, and a few more.
    void read(double room) {
        const int count = source_.count();
        double used = 0;
        double onset = system_.start.onset;
        int index = system_.start.entry;
        for (int more = kLookAhead; index < count && more > 0; ++index) {
            entries_.push_back(source_.entryAt(index));
            const std::size_t first = system_.symbols.size();
            appendSymbols(system_.symbols, index, entries_.back(), onset);
            for (std::size_t i = first; i < system_.symbols.size(); ++i)
                used += spaceAfter(system_.symbols[i].length);
            onset = system_.symbols.back().onset + system_.symbols.back().length;
            if (used > room)
                --more;
        }
        // The end of the melody counts as read.
        system_.readTo = index < count ? index : count + 1;
        readsAll_ = index >= count;
    }

    void group() {
        triplets_ = tripletsOf(system_.symbols);
        beams_ = beamsOf(system_.symbols, triplets_);
    }

    void chooseStaves() {
        std::vector<StaffQuestion> questions;
        questions.reserve(entries_.size());
        for (const staff_entry::Entry& entry : entries_)
            questions.push_back({entry.noteNumber, false});
        for (const auto* spans : {&triplets_, &beams_}) {
            for (const Span& span : *spans) {
                for (std::size_t i = span.first + 1; i <= span.last; ++i)
                    questions[offsetOf(system_.symbols[i])].joined = true;
            }
        }
        placeOnStaves(notation::chooseStaves(questions, system_.start.staff));
    }

    void placeOnStaves(std::vector<Staff> staves) {
        staves_ = std::move(staves);
        for (Symbol& symbol : system_.symbols)
            placeOnStaff(symbol, entries_[offsetOf(symbol)], staves_[offsetOf(symbol)]);
        beams_ = onOneStaff(beams_, system_.symbols);
        for (const Span& beam : beams_)
            turnStems(system_.symbols, beam);
    }

    /// Ends the system behind the last entry that fits and is in no beam or triplet with the next
    /// one; where not even the first of those fits, behind the last entry that fits, or the first.
    void breakLine(const Page& page) {
        distances_ = distancesOf(system_.symbols);
        std::vector<bool> joined(system_.symbols.size() + 1, false);
        for (const auto* spans : {&triplets_, &beams_}) {
            for (const Span& span : *spans)
                std::fill_n(joined.begin() + static_cast<std::ptrdiff_t>(span.first) + 1,
                            span.last - span.first, true);
        }
        double used = lead();
        std::size_t good = 0;
        std::size_t possible = 0;
        std::size_t i = 0;
        for (; i < system_.symbols.size(); ++i) {
            used += distances_[i].natural();
            if (used > page.width + kTolerance && possible > 0)
                break;
            if (system_.symbols[i].closesEntry) {
                possible = i + 1;
                if (!joined[i + 1])
                    good = i + 1;
            }
        }
        const bool all = readsAll_ && i == system_.symbols.size();
        const bool leavesRoom = used <= page.width - page.endRoom + kTolerance;
        system_.last = all && (leavesRoom || system_.symbols.empty());
        cutAt(all ? system_.symbols.size() : good > 0 ? good : possible);
    }

    void placeSymbols(double width) {
        const double room = width - lead();
        double natural = 0;
        for (const Distance& distance : distances_)
            natural += distance.natural();
        const bool fills = !system_.last || natural > room;
        const double stretch = fills ? stretchToFill(distances_, room) : 1;
        double x = lead();
        for (std::size_t i = 0; i < system_.symbols.size(); ++i) {
            system_.symbols[i].x = x;
            x += std::max(distances_[i].wanted * stretch, distances_[i].least);
        }
        system_.end = x;
        squeeze(width);
    }

    void layOutSigns() {
        for (const Span& beam : beams_)
            system_.beams.push_back(layOutBeam(system_.symbols, beam));
        for (std::size_t i = 0; i < system_.symbols.size(); ++i) {
            const Symbol& symbol = system_.symbols[i];
            const staff_entry::Entry& entry = entries_[offsetOf(symbol)];
            if (!symbol.opensEntry)
                continue;
            if (const auto sign = staff_entry::articulationOf(entry))
                system_.articulations.push_back({i, *sign});
            if (!staff_entry::figureOf(entry.duration).exact)
                system_.durationSigns.push_back({i, entry.duration, 0});
        }
        placeOutside(system_, triplets_);
    }

    System take(const Page& page) {
        makeRoom(system_, page.roomForEveryNote && system_.last);
        return std::move(system_);
    }

private:
    std::size_t offsetOf(const Symbol& symbol) const {
        return static_cast<std::size_t>(symbol.entry - system_.start.entry);
    }

    /// Where the first head stands: its accidental is clear of the clef.
    double lead() const {
        return system_.symbols.empty()
                   ? kLead
                   : std::max(kLead, kClefRoom + 0.3 + extentOf(system_.symbols.front()).left);
    }

    void cutAt(std::size_t end) {
        std::vector<Symbol>& symbols = system_.symbols;
        if (end > 0) {
            const Symbol& last = symbols[end - 1];
            system_.next = {last.entry + 1, last.onset + last.length, staves_[offsetOf(last)]};
        }
        symbols.resize(end);
        distances_ = distancesOf(symbols);
        for (auto* spans : {&triplets_, &beams_}) {
            std::erase_if(*spans, [&](const Span& span) { return span.first >= end; });
            if (!spans->empty())
                spans->back().last = std::min(spans->back().last, end - 1);
        }
        if (!beams_.empty() && beams_.back().first == beams_.back().last) {
            Symbol& alone = symbols[beams_.back().first];
            alone.note.beamed = false;
            alone.note.stem = engraving::Stem::ByPosition;
            beams_.pop_back();
        }
    }

    /// A width that not even one entry fits into is shared out in proportion.
    void squeeze(double width) {
        if (system_.end <= width + kTolerance)
            return;
        const double share = (width - lead()) / (system_.end - lead());
        for (Symbol& symbol : system_.symbols)
            symbol.x = lead() + (symbol.x - lead()) * share;
        system_.end = width;
    }

    const Source& source_;
    System system_;
    std::vector<staff_entry::Entry> entries_;
    std::vector<Staff> staves_;
    std::vector<Span> triplets_;
    std::vector<Span> beams_;
    std::vector<Distance> distances_;
    bool readsAll_ = false;
};

}  // namespace

double System::height() const {
    return above + below + gap + 2 * engraving::kTopLine;
}

double System::bottomLine(Staff staff) const {
    const double treble = above + engraving::kTopLine;
    return staff == Staff::Treble ? treble : treble + gap + engraving::kTopLine;
}

double System::middle() const {
    return bottomLine(Staff::Treble) + gap / 2;
}

System::Stretch System::stretchOf(int entry) const {
    const auto opens = [](const Symbol& symbol, int index) { return symbol.entry < index; };
    const auto first = std::lower_bound(symbols.begin(), symbols.end(), entry, opens);
    const auto after = std::lower_bound(first, symbols.end(), entry + 1, opens);
    if (first == symbols.end())
        return {end, end, end};
    const auto left = [&](auto symbol) {
        return symbol == symbols.end() ? end : symbol->x - std::max(0.5, extentOf(*symbol).left);
    };
    return {left(first), left(after), first->x};
}

System layOutSystem(const Source& source, const SystemStart& start, const Page& page) {
    Builder builder(source, start);
    builder.read(page.width);
    builder.group();
    builder.chooseStaves();
    builder.breakLine(page);
    builder.placeSymbols(page.width);
    builder.layOutSigns();
    return builder.take(page);
}

System layOutEntry(const staff_entry::Entry& entry, Staff staff) {
    const Source alone{[] { return 1; }, [&](int) { return entry; }};
    const Page page;
    Builder builder(alone, {});
    builder.read(page.width);
    builder.group();
    builder.placeOnStaves({staff});
    builder.breakLine(page);
    builder.placeSymbols(page.width);
    builder.layOutSigns();
    System system = builder.take(page);
    const double origin = system.symbols.front().x;
    for (Symbol& symbol : system.symbols)
        symbol.x -= origin;
    system.end -= origin;
    return system;
}

}  // namespace notation
