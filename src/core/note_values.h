#pragma once

#include "core/glyph_table.h"
#include "platform/user_text.h"

#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <span>

/// The note values: what they are called, how long they last and what they are drawn with. Whatever
/// lists, plays, engraves or announces a note value reads its row here.
namespace note_values {

enum class Duration {
    Whole,
    Half,
    Quarter,
    Eighth,
    Sixteenth,
    ThirtySecond,
    SixtyFourth,
    HundredTwentyEighth
};

struct NoteValue {
    Duration duration;
    double quarters;  ///< the length in quarter notes
    const char* name;
    const char* otherName;  ///< after its share of a whole note
    const char* fraction;   ///< the name in lists and for screen readers
    glyph_table::Glyph rest;
    glyph_table::Glyph head;
    bool stem = true;
    std::optional<glyph_table::Glyph> flagUp = {};    ///< of a stem that goes up
    std::optional<glyph_table::Glyph> flagDown = {};  ///< of one that goes down
};

using glyph_table::Glyph;

/// Every value that is written, from the longest to the shortest, each half as long as the one
/// before. The last is needed where a bar line divides a shorter one.
constexpr auto kWritten = std::to_array<NoteValue>({
    {Duration::Whole, 4, QT_TRANSLATE_NOOP("UserText", "Semibreve"),
     QT_TRANSLATE_NOOP("UserText", "Intero"), "4/4", Glyph::RestWhole, Glyph::NoteheadWhole, false},
    {Duration::Half, 2, QT_TRANSLATE_NOOP("UserText", "Minima"),
     QT_TRANSLATE_NOOP("UserText", "Metà"), "2/4", Glyph::RestHalf, Glyph::NoteheadHalf},
    {Duration::Quarter, 1, QT_TRANSLATE_NOOP("UserText", "Semiminima"),
     QT_TRANSLATE_NOOP("UserText", "Quarto"), "1/4", Glyph::RestQuarter, Glyph::NoteheadBlack},
    {Duration::Eighth, 0.5, QT_TRANSLATE_NOOP("UserText", "Croma"),
     QT_TRANSLATE_NOOP("UserText", "Ottavo"), "1/8", Glyph::Rest8th, Glyph::NoteheadBlack, true,
     Glyph::Flag8thUp, Glyph::Flag8thDown},
    {Duration::Sixteenth, 0.25, QT_TRANSLATE_NOOP("UserText", "Semicroma"),
     QT_TRANSLATE_NOOP("UserText", "Sedicesimo"), "1/16", Glyph::Rest16th, Glyph::NoteheadBlack,
     true, Glyph::Flag16thUp, Glyph::Flag16thDown},
    {Duration::ThirtySecond, 0.125, QT_TRANSLATE_NOOP("UserText", "Biscroma"),
     QT_TRANSLATE_NOOP("UserText", "Trentaduesimo"), "1/32", Glyph::Rest32nd, Glyph::NoteheadBlack,
     true, Glyph::Flag32ndUp, Glyph::Flag32ndDown},
    {Duration::SixtyFourth, 0.0625, QT_TRANSLATE_NOOP("UserText", "Semibiscroma"),
     QT_TRANSLATE_NOOP("UserText", "Sessantaquattresimo"), "1/64", Glyph::Rest64th,
     Glyph::NoteheadBlack, true, Glyph::Flag64thUp, Glyph::Flag64thDown},
    {Duration::HundredTwentyEighth, 0.03125, QT_TRANSLATE_NOOP("UserText", "Fusa"),
     QT_TRANSLATE_NOOP("UserText", "Centoventottesimo"), "1/128", Glyph::Rest128th,
     Glyph::NoteheadBlack, true, Glyph::Flag128thUp, Glyph::Flag128thDown},
});

/// Those that a user enters.
constexpr auto kAll = std::span(kWritten).first<kWritten.size() - 1>();

static_assert(
    [] {
        for (std::size_t i = 0; i < kWritten.size(); ++i) {
            if (static_cast<std::size_t>(kWritten[i].duration) != i)
                return false;
            if (kWritten[i].flagUp.has_value() != kWritten[i].flagDown.has_value())
                return false;
            if (i > 0 && kWritten[i].quarters * 2 != kWritten[i - 1].quarters)
                return false;
        }
        return kWritten.back().duration == Duration::HundredTwentyEighth;
    }(),
    "a row for each duration, in the order of the enum");

constexpr const NoteValue& rowOf(Duration duration) {
    return kWritten[static_cast<std::size_t>(duration)];
}

/// The name within a sentence: "semiminima".
QString nameInText(const NoteValue& value);

/// "Pausa di semiminima".
QString restName(const NoteValue& value);

/// A dot makes a value half as long again.
constexpr double dotted(double quarters) {
    return quarters + quarters / 2;
}

}  // namespace note_values
