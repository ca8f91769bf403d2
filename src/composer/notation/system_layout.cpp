#include "composer/notation/system_layout.h"

#include "composer/notation/rhythm_groups.h"
#include "composer/notation/spacing.h"
#include "composer/notation/staff_choice.h"
#include "composer/notation/symbol_reader.h"
#include "composer/notation/system_room.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace notation {
namespace {

constexpr double kTolerance = 1e-6;

/// In staff spaces.
constexpr double kAfterKey = 0.5;
constexpr double kMetreRoom = 2.4;
constexpr double kAfterSigns = 0.6;
constexpr double kStretchMargin = 0.5;

/// Notes under one beam begin in the same beat.
double beatOf(const std::optional<score::Metre>& metre) {
    const bool compound = metre && metre->beatValue == 8;
    return compound ? 1.5 : 1;
}

Opening openingOf(const Source& source, const SystemStart& start) {
    Opening opening;
    opening.fifths = source.notation.key.fifths;
    if (opening.fifths != 0)
        opening.end += std::abs(opening.fifths) * engraving::kKeySignStep + kAfterKey;
    opening.metreLeft = opening.end;
    if (start == startOf(source) && source.notation.metre) {
        opening.metre = source.notation.metre;
        opening.end += kMetreRoom;
    }
    return opening;
}

/// Lays out one system step by step; each step needs the ones before it.
class Builder {
public:
    Builder(const Source& source, const SystemStart& start) : source_(source) {
        system_.start = start;
        system_.next = start;
        system_.opening = openingOf(source, start);
    }

    /// Reads as many entries as could fit, and a few more.
    void read(double room) {
        reading_ = readSymbols(source_, system_.start, room);
        system_.symbols = std::move(reading_.symbols);
        system_.readTo = reading_.readTo;
        remindOfAlteration();
        signDurations();
        triplets_ = reading_.triplets;
        beams_ = beamsOf(system_.symbols, triplets_, beatOf(source_.notation.metre));
    }

    void chooseStaves() {
        std::vector<StaffQuestion> questions;
        questions.reserve(reading_.entries.size());
        for (const staff_entry::Entry& entry : reading_.entries)
            questions.push_back({entry.noteNumber, false});
        for (const auto* spans : {&triplets_, &beams_}) {
            for (const Span& span : *spans) {
                for (std::size_t i = span.first + 1; i <= span.last; ++i)
                    questions[offsetOf(system_.symbols[i])].joined = true;
            }
        }
        std::vector<Staff> staves = notation::chooseStaves(questions, system_.start.staff);
        // An entry of which a part stands in the system before stays on its staff.
        if (!system_.symbols.empty() && !system_.symbols.front().opensEntry)
            staves.front() = system_.start.staff.value_or(staves.front());
        placeOnStaves(std::move(staves));
    }

    void placeOnStaves(std::vector<Staff> staves) {
        staves_ = std::move(staves);
        for (Symbol& symbol : system_.symbols)
            placeOnStaff(symbol, staves_[offsetOf(symbol)]);
        beams_ = onOneStaff(beams_, system_.symbols);
        for (const Span& beam : beams_)
            turnStems(system_.symbols, beam);
    }

    /// Ends the system behind the last bar that fits; where there is none, behind the last entry
    /// that fits and is in no beam or triplet with the next one; where not even the first of those
    /// fits, behind the last entry that fits, or the first. Inside of a bar a value is enough.
    void breakLine(const Page& page) {
        distances_ = distancesOf(system_.symbols);
        std::vector<bool> joined(system_.symbols.size() + 1, false);
        for (const auto* spans : {&triplets_, &beams_}) {
            for (const Span& span : *spans)
                std::fill_n(joined.begin() + static_cast<std::ptrdiff_t>(span.first) + 1,
                            span.last - span.first, true);
        }
        double used = lead();
        std::size_t bar = 0;
        std::size_t good = 0;
        std::size_t possible = 0;
        std::size_t i = 0;
        for (; i < system_.symbols.size(); ++i) {
            used += distances_[i].natural();
            if (used > page.width * page.fullness + kTolerance && possible > 0)
                break;
            const Symbol& symbol = system_.symbols[i];
            bar = symbol.endsBar ? i + 1 : reading_.behind[i] ? bar : 0;
            if (symbol.closesEntry && !joined[i + 1])
                good = i + 1;
            if (symbol.closesEntry || reading_.behind[i])
                possible = i + 1;
        }
        const bool all = reading_.all && i == system_.symbols.size();
        const bool leavesRoom = used <= page.width - page.endRoom + kTolerance;
        system_.last = all && (leavesRoom || system_.symbols.empty());
        cutAt(all ? system_.symbols.size() : bar > 0 ? bar : good > 0 ? good : possible);
    }

    void placeSymbols(const Page& page) {
        const double room = page.width - lead();
        double natural = 0;
        for (const Distance& distance : distances_)
            natural += distance.natural();
        system_.natural = lead() + natural;
        const bool fills = !system_.last || page.fillsLast || natural > room;
        const double stretch = fills ? stretchToFill(distances_, room) : 1;
        double x = lead();
        for (std::size_t i = 0; i < system_.symbols.size(); ++i) {
            system_.symbols[i].x = x;
            x += std::max(distances_[i].wanted * stretch, distances_[i].least);
        }
        system_.end = x;
        squeeze(page.width);
        placeBarLines();
        shortenLedgerLines();
    }

    void layOutSigns() {
        for (const Span& beam : beams_)
            system_.beams.push_back(layOutBeam(system_.symbols, beam));
        for (std::size_t i = 0; i < system_.symbols.size(); ++i) {
            const Symbol& symbol = system_.symbols[i];
            if (!symbol.opensEntry)
                continue;
            if (const auto sign = staff_entry::articulationOf(entryOf(symbol)))
                system_.articulations.push_back({i, *sign});
            if (symbol.signWidth > 0)
                system_.durationSigns.push_back({i, entryOf(symbol).duration, 0});
        }
        layOutTies();
        placeOutside(system_, triplets_);
    }

    System take(const Page& page) {
        makeRoom(system_, page.roomForEveryNote && system_.last);
        return std::move(system_);
    }

private:
    /// A note that is tied to the system before shows its alteration again.
    void remindOfAlteration() {
        if (system_.symbols.empty() || system_.symbols.front().opensEntry)
            return;
        Symbol& first = system_.symbols.front();
        const score::Spelling& spelling = first.spelling;
        if (!first.rest &&
            spelling.alter != score::signatureAlter(source_.notation.key, spelling.degree))
            first.accidental = spelling.alter;
    }

    /// The durations that the figures do not show; in bars all are shown.
    void signDurations() {
        for (std::size_t i = 0; i < system_.symbols.size(); ++i) {
            Symbol& symbol = system_.symbols[i];
            const double duration = entryOf(symbol).duration;
            const bool barless = symbol.entry == reading_.barless;
            const bool shown = reading_.behind[i] || staff_entry::figureOf(duration).exact;
            if (symbol.opensEntry && (barless || !shown))
                symbol.signWidth = staff_entry::durationSignWidth(duration);
        }
    }

    std::size_t offsetOf(const Symbol& symbol) const {
        return static_cast<std::size_t>(symbol.entry - system_.start.entry);
    }

    const staff_entry::Entry& entryOf(const Symbol& symbol) const {
        return reading_.entries[offsetOf(symbol)];
    }

    /// Where the first head stands: its accidental, or the tie that comes to it, is clear of the
    /// signs before it.
    double lead() const {
        const double signs = system_.opening.end;
        const double least = signs + (kLead - kClefRoom);
        if (system_.symbols.empty())
            return least;
        const Symbol& first = system_.symbols.front();
        if (!first.opensEntry && !first.rest)
            return signs + kIncomingTieRoom + (first.accidental ? extentOf(first).left : 0);
        return std::max(least, signs + kAfterSigns + extentOf(first).left);
    }

    void layOutTies() {
        std::vector<std::size_t> signs;
        for (const ArticulationMark& mark : system_.articulations)
            signs.push_back(mark.symbol);
        system_.ties = notation::layOutTies(system_.symbols, signs, system_.end);
    }

    void cutAt(std::size_t end) {
        std::vector<Symbol>& symbols = system_.symbols;
        if (end > 0) {
            const Symbol& last = symbols[end - 1];
            system_.next = {last.closesEntry ? last.entry + 1 : last.entry,
                            last.onset + last.length, staves_[offsetOf(last)],
                            reading_.behind[end - 1]};
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

    /// Between the ink of two symbols, or at the end of the system.
    void placeBarLines() {
        std::vector<Symbol>& symbols = system_.symbols;
        if (!symbols.empty() && reading_.behind.front())
            system_.barNumber = system_.start.bar->number + 1;
        double begins = system_.opening.end;
        for (std::size_t i = 0; i < symbols.size(); ++i) {
            if (!symbols[i].endsBar)
                continue;
            const bool isLast = i + 1 == symbols.size();
            const double ends =
                isLast ? system_.end
                       : symbols[i + 1].x - extentOf(symbols[i + 1]).left - kBehindBarLine;
            if (symbols[i].fillsBar)
                symbols[i].x = (begins + ends - extentOf(symbols[i]).right) / 2;
            system_.barLines.push_back(ends);
            begins = ends;
        }
    }

    /// Those of neighbours do not meet, which would look like one line.
    void shortenLedgerLines() {
        for (std::size_t i = 1; i < system_.symbols.size(); ++i) {
            Symbol& left = system_.symbols[i - 1];
            Symbol& right = system_.symbols[i];
            if (!shareLedgerLines(left, right) || right.accidental)
                continue;
            const double between = right.x - left.x - engraving::headWidth(left.value.duration);
            const double most = std::max(0., between - kLedgerGap) / 2;
            for (engraving::Note* note : {&left.note, &right.note})
                note->ledgerExtension = std::min(note->ledgerExtension, most);
        }
    }

    const Source& source_;
    System system_;
    Reading reading_;
    std::vector<Staff> staves_;
    std::vector<Span> triplets_;
    std::vector<Span> beams_;
    std::vector<Distance> distances_;
};

}  // namespace

double System::height() const {
    return above + below + gap + 2 * engraving::kTopLine;
}

void System::giveUpSpareRoom() {
    above -= std::exchange(spareAbove, 0);
    below -= std::exchange(spareBelow, 0);
}

bool System::has(int entry) const {
    return !symbols.empty() && entry >= symbols.front().entry && entry <= symbols.back().entry;
}

bool System::opens(int entry) const {
    return has(entry) && (entry > symbols.front().entry || symbols.front().opensEntry);
}

bool System::closes(int entry) const {
    return has(entry) && (entry < symbols.back().entry || symbols.back().closesEntry);
}

QString System::barNumberText() const {
    const bool isFirst = start.entry == 0 && start.onset == 0;
    if (!barNumber || isFirst)
        return {};
    const bool isInside = start.bar->notes > 0;
    return QString(isInside ? QStringLiteral("(%1)") : QStringLiteral("%1")).arg(*barNumber);
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
        if (symbol == symbols.end())
            return end;
        const double begins = symbol->x - extentWithSign(*symbol).left;
        const double before = symbol == symbols.begin()
                                  ? opening.end
                                  : std::prev(symbol)->x + extentWithSign(*std::prev(symbol)).right;
        return std::max(begins - kStretchMargin, (before + begins) / 2);
    };
    return {left(first), left(after), first->x};
}

System layOutSystem(const Source& source, const SystemStart& start, const Page& page) {
    Builder builder(source, start);
    builder.read(page.width);
    builder.chooseStaves();
    builder.breakLine(page);
    builder.placeSymbols(page);
    builder.layOutSigns();
    return builder.take(page);
}

System layOutEntry(const staff_entry::Entry& entry, Staff staff, const score::Key& key) {
    const Source alone{[] { return 1; }, [&](int) { return entry; }, {std::nullopt, key}};
    const Page page;
    Builder builder(alone, {});
    builder.read(page.width);
    builder.placeOnStaves({staff});
    builder.breakLine(page);
    builder.placeSymbols(page);
    builder.layOutSigns();
    System system = builder.take(page);
    const double origin = system.symbols.front().x;
    for (Symbol& symbol : system.symbols)
        symbol.x -= origin;
    for (Tie& tie : system.ties) {
        tie.left -= origin;
        tie.right -= origin;
    }
    system.end -= origin;
    return system;
}

}  // namespace notation
