#include "composer/notation/symbol.h"

namespace notation {

void appendSymbols(std::vector<Symbol>& symbols, int index, const staff_entry::Entry& entry,
                   double onset) {
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
        symbols.push_back(symbol);
    }
}

void placeOnStaff(Symbol& symbol, const staff_entry::Entry& entry, Staff staff) {
    symbol.staff = staff;
    if (symbol.rest)
        return;
    const Head head = headOf(entry.noteNumber, staff);
    symbol.note.position = head.position;
    symbol.note.duration = symbol.value.duration;
    symbol.note.dots = symbol.value.dots;
    symbol.note.accidental = head.sharp && symbol.opensEntry ? engraving::Accidental::Sharp
                                                             : engraving::Accidental::None;
    symbol.stemEnd = engraving::stemEnd(symbol.note);
}

engraving::Extent extentOf(const Symbol& symbol) {
    if (symbol.rest)
        return {0, engraving::restWidth(symbol.value.duration, symbol.value.dots)};
    return engraving::extentOf(symbol.note);
}

}  // namespace notation
