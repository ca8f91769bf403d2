#pragma once

#include <array>
#include <cstddef>

/// The glyphs of the music font that the program draws, by their names in SMuFL, and their measures
/// in staff spaces with y growing upwards. The measures stand here because the font's own metadata
/// file is too long to parse at every start; a test compares this table with that file.
namespace glyph_table {

enum class Glyph {
    Brace,
    GClef,
    FClef,
    NoteheadWhole,
    NoteheadHalf,
    NoteheadBlack,
    AugmentationDot,
    Flag8thUp,
    Flag8thDown,
    Flag16thUp,
    Flag16thDown,
    Flag32ndUp,
    Flag32ndDown,
    Flag64thUp,
    Flag64thDown,
    Flag128thUp,
    Flag128thDown,
    AccidentalFlat,
    AccidentalNatural,
    AccidentalSharp,
    AccidentalDoubleSharp,
    RestWhole,
    RestHalf,
    RestQuarter,
    Rest8th,
    Rest16th,
    Rest32nd,
    Rest64th,
    Rest128th,
    StaccatoAbove,
    StaccatoBelow,
    TenutoAbove,
    TenutoBelow,
    AccentAbove,
    AccentBelow,
    Tuplet3,
    TimeSig2,
    TimeSig3,
    TimeSig4,
    TimeSig6,
    TimeSig8,
};

struct Point {
    double x = 0;
    double y = 0;
};

struct Info {
    Glyph glyph;
    const char* name;
    char16_t codePoint;
    Point southWest;  ///< the bounding box
    Point northEast;
    Point stemUp;    ///< where a stem that goes up touches the head, or the flag touches the stem
    Point stemDown;  ///< the same for a stem that goes down
};

constexpr auto kGlyphs = std::to_array<Info>({
    {Glyph::Brace, "brace", 0xE000, {0.008, 0}, {0.328, 3.988}, {}, {}},
    {Glyph::GClef, "gClef", 0xE050, {0, -2.632}, {2.684, 4.392}, {}, {}},
    {Glyph::FClef, "fClef", 0xE062, {-0.02, -2.54}, {2.736, 1.048}, {}, {}},
    {Glyph::NoteheadWhole, "noteheadWhole", 0xE0A2, {0, -0.5}, {1.688, 0.5}, {}, {}},
    {Glyph::NoteheadHalf,
     "noteheadHalf",
     0xE0A3,
     {0, -0.5},
     {1.18, 0.5},
     {1.18, 0.168},
     {0, -0.168}},
    {Glyph::NoteheadBlack,
     "noteheadBlack",
     0xE0A4,
     {0, -0.5},
     {1.18, 0.5},
     {1.18, 0.168},
     {0, -0.168}},
    {Glyph::AugmentationDot, "augmentationDot", 0xE1E7, {0, -0.2}, {0.4, 0.2}, {}, {}},
    {Glyph::Flag8thUp, "flag8thUp", 0xE240, {0, -3.241}, {1.056, 0.035}, {0, -0.04}, {}},
    {Glyph::Flag8thDown, "flag8thDown", 0xE241, {0, -0.058}, {1.224, 3.233}, {}, {0, 0.132}},
    {Glyph::Flag16thUp, "flag16thUp", 0xE242, {0, -3.252}, {1.116, 0.008}, {0, -0.088}, {}},
    {Glyph::Flag16thDown, "flag16thDown", 0xE243, {0, -0.036}, {1.164, 3.248}, {}, {0, 0.128}},
    {Glyph::Flag32ndUp, "flag32ndUp", 0xE244, {0, -3.248}, {1.044, 0.596}, {0, 0.376}, {}},
    {Glyph::Flag32ndDown, "flag32ndDown", 0xE245, {0, -0.687}, {1.092, 3.248}, {}, {0, -0.448}},
    {Glyph::Flag64thUp, "flag64thUp", 0xE246, {0, -3.248}, {1.044, 1.387}, {0, 1.172}, {}},
    {Glyph::Flag64thDown, "flag64thDown", 0xE247, {0, -1.504}, {1.092, 3.248}, {}, {0, -1.244}},
    {Glyph::Flag128thUp, "flag128thUp", 0xE248, {0, -3.248}, {1.044, 2.132}, {0, 1.9}, {}},
    {Glyph::Flag128thDown, "flag128thDown", 0xE249, {0, -2.32}, {1.092, 3.248}, {}, {0, -2.076}},
    {Glyph::AccidentalFlat, "accidentalFlat", 0xE260, {0, -0.7}, {0.904, 1.756}, {}, {}},
    {Glyph::AccidentalNatural, "accidentalNatural", 0xE261, {0, -1.34}, {0.672, 1.364}, {}, {}},
    {Glyph::AccidentalSharp, "accidentalSharp", 0xE262, {0, -1.392}, {0.996, 1.4}, {}, {}},
    {Glyph::AccidentalDoubleSharp,
     "accidentalDoubleSharp",
     0xE263,
     {0, -0.5},
     {0.988, 0.508},
     {},
     {}},
    {Glyph::RestWhole, "restWhole", 0xE4E3, {0, -0.54}, {1.128, 0.036}, {}, {}},
    {Glyph::RestHalf, "restHalf", 0xE4E4, {0, -0.008}, {1.128, 0.568}, {}, {}},
    {Glyph::RestQuarter, "restQuarter", 0xE4E5, {0.004, -1.5}, {1.08, 1.492}, {}, {}},
    {Glyph::Rest8th, "rest8th", 0xE4E6, {0, -1.004}, {0.988, 0.696}, {}, {}},
    {Glyph::Rest16th, "rest16th", 0xE4E7, {0, -2}, {1.28, 0.716}, {}, {}},
    {Glyph::Rest32nd, "rest32nd", 0xE4E8, {0, -2}, {1.452, 1.704}, {}, {}},
    {Glyph::Rest64th, "rest64th", 0xE4E9, {0, -3.012}, {1.692, 1.72}, {}, {}},
    {Glyph::Rest128th, "rest128th", 0xE4EA, {0, -3}, {1.94, 2.756}, {}, {}},
    {Glyph::StaccatoAbove, "articStaccatoAbove", 0xE4A2, {0, 0}, {0.336, 0.336}, {}, {}},
    {Glyph::StaccatoBelow, "articStaccatoBelow", 0xE4A3, {0, -0.336}, {0.336, 0}, {}, {}},
    {Glyph::TenutoAbove, "articTenutoAbove", 0xE4A4, {-0.004, 0}, {1.352, 0.192}, {}, {}},
    {Glyph::TenutoBelow, "articTenutoBelow", 0xE4A5, {-0.004, -0.192}, {1.352, 0}, {}, {}},
    {Glyph::AccentAbove, "articAccentAbove", 0xE4A0, {0, 0.004}, {1.356, 0.98}, {}, {}},
    {Glyph::AccentBelow, "articAccentBelow", 0xE4A1, {0, -0.976}, {1.356, 0}, {}, {}},
    {Glyph::Tuplet3, "tuplet3", 0xE883, {0.04, -0.032}, {1.224, 1.5}, {}, {}},
    {Glyph::TimeSig2, "timeSig2", 0xE082, {0.08, -1.028}, {1.704, 1.016}, {}, {}},
    {Glyph::TimeSig3, "timeSig3", 0xE083, {0.08, -1.004}, {1.604, 0.996}, {}, {}},
    {Glyph::TimeSig4, "timeSig4", 0xE084, {0.08, -1}, {1.8, 1.004}, {}, {}},
    {Glyph::TimeSig6, "timeSig6", 0xE086, {0.08, -0.996}, {1.656, 1.004}, {}, {}},
    {Glyph::TimeSig8, "timeSig8", 0xE088, {0.08, -1.036}, {1.664, 1.036}, {}, {}},
});

static_assert(
    [] {
        for (std::size_t i = 0; i < kGlyphs.size(); ++i) {
            if (static_cast<std::size_t>(kGlyphs[i].glyph) != i)
                return false;
        }
        return kGlyphs.back().glyph == Glyph::TimeSig8;
    }(),
    "a row for each glyph, in the order of the enum");

constexpr const Info& info(Glyph glyph) {
    return kGlyphs[static_cast<std::size_t>(glyph)];
}

/// A sign at a note's head, on the side away from the stem: its two forms, and the least distance
/// of its middle from the head's, in half spaces. A small sign stands in a space of the stave, a
/// large one outside the stave.
struct ArticulationSign {
    Glyph above;
    Glyph below;
    int distance;
    bool small;
};

constexpr double kStaffLineThickness = 0.13;
constexpr double kStemThickness = 0.12;
constexpr double kLedgerLineThickness = 0.16;
constexpr double kLedgerLineExtension = 0.4;
constexpr double kThinBarlineThickness = 0.16;
constexpr double kThickBarlineThickness = 0.5;
constexpr double kBarlineSeparation = 0.4;
constexpr double kBeamThickness = 0.5;
constexpr double kBeamSpacing = 0.25;
constexpr double kTupletBracketThickness = 0.16;
constexpr double kTieEndpointThickness = 0.1;
constexpr double kTieMidpointThickness = 0.22;

}  // namespace glyph_table
