#pragma once

#include "core/glyph_table.h"

#include <QPainterPath>

#include <array>

/// The outlines of the music font's glyphs. The font file is needed only while they are read; a
/// MusicFont never changes afterwards.
class MusicFont {
public:
    /// Reads the outlines from the font inside the program. Needs a QGuiApplication.
    MusicFont();

    /// The instance of widgets that a form creates, whose constructors take no font; read at first
    /// use.
    static const MusicFont& shared();

    /// The glyph in staff spaces, at its origin, with y growing downwards as on a painter.
    const QPainterPath& outline(glyph_table::Glyph glyph) const {
        return outlines_[static_cast<std::size_t>(glyph)];
    }

private:
    std::array<QPainterPath, glyph_table::kGlyphs.size()> outlines_;
};
