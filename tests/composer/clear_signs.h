#pragma once

#include "composer/notation/system_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <vector>

namespace notation {

/// No sign of a note covers one of another note, no tie and no bracket any other sign.
inline void expectClear(const System& system) {
    struct Box {
        double left, right, low, high;
        std::size_t note;
    };
    std::vector<Box> boxes;
    const auto add = [&](Staff staff, std::size_t note, double left, double right, double a,
                         double b) {
        const double base = staff == Staff::Treble ? 0 : -(system.gap + 8);
        boxes.push_back({left, right, base + std::min(a, b), base + std::max(a, b), note});
    };
    const auto& symbols = system.symbols;
    const auto widthOf = [&](std::size_t i) {
        const auto& value = note_values::rowOf(symbols[i].value.duration);
        return glyph_table::info(symbols[i].rest ? value.rest : value.head).northEast.x;
    };
    const auto stemOf = [&](std::size_t i) {
        return symbols[i].x + (engraving::stemGoesUp(symbols[i].note) ? widthOf(i) - 0.1 : 0);
    };
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const auto& [x, staff, position] =
            std::tuple(symbols[i].x, symbols[i].staff, symbols[i].note.position);
        const double height = symbols[i].rest ? 4 : 1;
        const double middle = symbols[i].rest ? 4 : position;
        add(staff, i, x, x + widthOf(i), middle - height, middle + height);
        if (!symbols[i].rest && symbols[i].value.duration != engraving::Duration::Whole)
            add(staff, i, stemOf(i), stemOf(i) + 0.1, position, symbols[i].stemEnd);
        const double ledger = engraving::ledgerLines(position) > 0 ? extentOf(symbols[i]).right : 0;
        if (!symbols[i].rest && ledger > 0)
            add(staff, i, x, x + ledger, position - 0.1, position + 0.1);
        if (symbols[i].note.accidental == engraving::Accidental::None)
            continue;
        const auto& sign = glyph_table::info(engraving::glyphOf(symbols[i].note.accidental));
        add(staff, i, x - extentOf(symbols[i]).left, x - 0.2, position + 2 * sign.southWest.y,
            position + 2 * sign.northEast.y);
    }
    for (const ArticulationMark& mark : system.articulations) {
        const Symbol& symbol = symbols[mark.symbol];
        const auto& sign = glyph_table::info(mark.sign.above);
        const double x = symbol.x + (widthOf(mark.symbol) - sign.northEast.x) / 2;
        const int middle = engraving::articulationPosition(symbol.note, mark.sign);
        add(symbol.staff, mark.symbol, x, x + sign.northEast.x, middle - sign.northEast.y,
            middle + sign.northEast.y);
    }
    for (const Beam& beam : system.beams) {
        for (const Beam::Line& line : beam.lines) {
            const Symbol& symbol = symbols[line.first];
            const double from = stemOf(line.first);
            const double end = symbol.stemEnd - (beam.stemsUp ? 1.5 : -1.5) * line.level;
            if (line.stub != 0)
                add(symbol.staff, line.first, std::min(from, from + line.stub),
                    std::max(from, from + line.stub), end, end - (beam.stemsUp ? 1 : -1));
        }
    }
    const std::size_t ofNone = symbols.size();
    for (const Tie& tie : system.ties)
        add(symbols[tie.symbols.first].staff, ofNone, tie.left, tie.right, tie.curve.ends,
            tie.curve.middle);
    for (const auto& [span, staff, above, position] : system.triplets)
        add(staff, ofNone + 1, symbols[span.first].x, symbols[span.last].x + widthOf(span.last),
            position - 1.2, position + 1.2);
    for (const auto& [i, quarters, position] : system.durationSigns) {
        const double middle = symbols[i].x + engraving::headWidth(symbols[i].value.duration) / 2;
        const double side = staff_entry::durationSignWidth(quarters) / 2;
        add(symbols[i].staff, ofNone + 2 + i, middle - side, middle + side, position - 1.2,
            position + 1.2);
    }
    std::ranges::sort(boxes, {}, &Box::left);
    for (auto a = boxes.begin(); a != boxes.end(); ++a) {
        for (auto b = a + 1; b != boxes.end() && b->left < a->right; ++b)
            ASSERT_TRUE(a->note == b->note || a->high <= b->low || b->high <= a->low)
                << a->note << " and " << b->note << " of " << ofNone << " at " << b->left;
    }
}

}  // namespace notation
