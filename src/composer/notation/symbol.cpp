#include "composer/notation/symbol.h"

#include <algorithm>
#include <array>

namespace notation {
namespace {

engraving::Accidental signOf(const std::optional<int>& alter) {
    using engraving::Accidental;
    if (!alter)
        return Accidental::None;
    constexpr std::array kSigns{Accidental::Flat, Accidental::Natural, Accidental::Sharp,
                                Accidental::DoubleSharp};
    const int fromFlat = *alter + 1;
    return kSigns[static_cast<std::size_t>(fromFlat)];
}

}  // namespace

void appendSymbols(std::vector<Symbol>& symbols, int index, const staff_entry::Entry& entry,
                   double onset, const score::Key& key) {
    const staff_entry::Figure figure = staff_entry::figureOf(entry.duration);
    const std::size_t first = symbols.size();
    for (const staff_entry::Value& value : figure.values) {
        Symbol symbol;
        symbol.entry = index;
        symbol.value = value;
        symbol.rest = staff_entry::isRest(entry);
        symbol.triplet = figure.triplet;
        symbol.opensEntry = symbols.size() == first;
        symbol.closesEntry = symbols.size() + 1 == first + figure.values.size();
        symbol.onset = onset;
        const double quarters = note_values::rowOf(value.duration).quarters;
        const double written = value.dots > 0 ? note_values::dotted(quarters) : quarters;
        symbol.length = figure.triplet ? written * 2 / 3 : written;
        onset += symbol.length;
        if (!symbol.rest) {
            symbol.spelling = score::spell(static_cast<pitch::NoteNumber>(entry.noteNumber), key);
            const int alter = symbol.spelling.alter;
            if (symbol.opensEntry && alter != score::signatureAlter(key, symbol.spelling.degree))
                symbol.accidental = alter;
        }
        symbols.push_back(symbol);
    }
}

void placeOnStaff(Symbol& symbol, Staff staff) {
    symbol.staff = staff;
    if (symbol.rest)
        return;
    symbol.note.position = symbol.spelling.step() - bottomStep(staff);
    symbol.note.duration = symbol.value.duration;
    symbol.note.dots = symbol.value.dots;
    symbol.note.accidental = signOf(symbol.accidental);
    symbol.stemEnd = engraving::stemEnd(symbol.note);
}

engraving::Extent extentOf(const Symbol& symbol) {
    if (symbol.rest)
        return {0, engraving::restWidth(symbol.value.duration, symbol.value.dots)};
    return engraving::extentOf(symbol.note);
}

bool shareLedgerLines(const Symbol& left, const Symbol& right) {
    const auto linesOf = [](const Symbol& symbol) {
        const int lines = symbol.rest ? 0 : engraving::ledgerLines(symbol.note.position);
        return symbol.note.position < 0 ? -lines : lines;
    };
    return left.staff == right.staff && linesOf(left) * linesOf(right) > 0;
}

double middleOf(const Symbol& symbol) {
    return engraving::headWidth(symbol.value.duration) / 2;
}

engraving::Extent extentWithSign(const Symbol& symbol) {
    const engraving::Extent extent = extentOf(symbol);
    const double middle = middleOf(symbol);
    const double side = symbol.signWidth / 2;
    return {std::max(extent.left, side - middle), std::max(extent.right, side + middle)};
}

}  // namespace notation
