#include "composer/staff/score_painter.h"

#include "widgets/engraving_spans.h"
#include "widgets/music_font.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

#include <algorithm>
#include <vector>

namespace score_painter {
namespace {

using engraving::Stave;
using notation::Beam;
using notation::Symbol;
using notation::System;

/// In staff spaces.
constexpr double kSignSize = 1.3;
constexpr double kBracketOver = 0.2;  ///< beyond the heads
constexpr int kSmallestSign = 7;      ///< pixels
constexpr double kBarLine = glyph_table::kThinBarlineThickness;

/// Paints one system.
class SystemPainter {
public:
    SystemPainter(QPainter& painter, const MusicFont& font, const System& system,
                  const Place& place)
        : painter_(painter),
          font_(font),
          system_(system),
          place_(place),
          treble_(onPixels(painter, staveOf(system, notation::Staff::Treble, place))),
          bass_(onPixels(painter, staveOf(system, notation::Staff::Bass, place))) {}

    void drawStaves() {
        engraving::drawGrandStaff(painter_, font_, treble_, bass_);
        drawOpening(treble_, engraving::Clef::G);
        drawOpening(bass_, engraving::Clef::F);
        drawBarLines(bass_);
    }

    void drawTrebleStaff() {
        engraving::drawStaff(painter_, font_, treble_, engraving::Clef::G);
        drawOpening(treble_, engraving::Clef::G);
        drawBarLines(treble_);
    }

    void drawSymbols() {
        std::vector<QRectF> stems(system_.symbols.size());
        for (std::size_t i = 0; i < system_.symbols.size(); ++i)
            drawSymbol(i, stems);
        for (const Beam& beam : system_.beams)
            drawBeam(beam, stems);
        for (const notation::ArticulationMark& mark : system_.articulations) {
            const Symbol& symbol = system_.symbols[mark.symbol];
            engraving::drawArticulation(painter_, font_, of(symbol), place_.x(symbol.x),
                                        symbol.note, mark.sign);
        }
        for (const notation::Tie& tie : system_.ties) {
            engraving::drawTie(painter_, of(system_.symbols[tie.symbols.first]), place_.x(tie.left),
                               place_.x(tie.right), tie.curve);
        }
        for (const notation::TripletBracket& bracket : system_.triplets)
            drawBracket(bracket);
        for (const notation::DurationSign& sign : system_.durationSigns)
            drawDurationSign(sign);
    }

private:
    void drawOpening(const Stave& stave, engraving::Clef clef) {
        const notation::Opening& opening = system_.opening;
        engraving::drawKeySignature(painter_, font_, stave, place_.x(notation::kClefRoom), clef,
                                    opening.fifths);
        if (opening.metre) {
            engraving::drawMetre(painter_, font_, stave, place_.x(opening.metreLeft),
                                 opening.metre->beats, opening.metre->beatValue);
        }
    }

    /// From the treble staff down to another one.
    void drawBarLines(const Stave& lowest) {
        for (const double x : system_.barLines) {
            const qreal left = std::min(place_.x(x), treble_.right - kBarLine * place_.space);
            engraving::drawBarline(painter_, treble_, lowest, left);
        }
    }

    const Stave& of(const Symbol& symbol) const { return of(symbol.staff); }
    const Stave& of(notation::Staff staff) const {
        return staff == notation::Staff::Treble ? treble_ : bass_;
    }

    void drawSymbol(std::size_t i, std::vector<QRectF>& stems) {
        const Symbol& symbol = system_.symbols[i];
        const qreal x = place_.x(symbol.x);
        if (symbol.rest) {
            engraving::drawRest(painter_, font_, of(symbol), x, symbol.value.duration,
                                symbol.value.dots);
        } else if (symbol.note.beamed) {
            stems[i] = engraving::drawBeamedNote(painter_, font_, of(symbol), x, symbol.note,
                                                 symbol.stemEnd);
        } else {
            engraving::drawNote(painter_, font_, of(symbol), x, symbol.note);
        }
    }

    void drawBeam(const Beam& beam, const std::vector<QRectF>& stems) {
        const Symbol& first = system_.symbols[beam.notes.first];
        const Symbol& last = system_.symbols[beam.notes.last];
        const Stave& stave = of(first);
        const qreal left = stems[beam.notes.first].left();
        const qreal slope = (stave.y(last.stemEnd) - stave.y(first.stemEnd)) /
                            (stems[beam.notes.last].right() - left);
        for (const Beam::Line& line : beam.lines) {
            qreal from = stems[line.first].left();
            qreal to = stems[line.last].right();
            if (line.stub < 0)
                from = to + line.stub * stave.space;
            else if (line.stub > 0)
                to = from + line.stub * stave.space;
            const qreal inwards =
                (beam.stemsUp ? 1 : -1) * line.level * notation::kBeamDistance * stave.space / 2;
            const auto at = [&](qreal x) {
                return QPointF(x, stave.y(first.stemEnd) + inwards + slope * (x - left));
            };
            engraving::drawBeam(painter_, stave, at(from), at(to), beam.stemsUp);
        }
    }

    void drawBracket(const notation::TripletBracket& bracket) {
        const Symbol& first = system_.symbols[bracket.symbols.first];
        const Symbol& last = system_.symbols[bracket.symbols.last];
        const double width = last.rest ? engraving::restWidth(last.value.duration)
                                       : engraving::headWidth(last.value.duration);
        const Stave& stave = of(bracket.staff);
        if (bracket.symbols.first == bracket.symbols.last) {
            engraving::drawTripletSign(painter_, font_, stave, place_.x(first.x + width / 2),
                                       bracket.position);
            return;
        }
        engraving::drawTripletBracket(painter_, font_, stave, place_.x(first.x - kBracketOver),
                                      place_.x(last.x + width + kBracketOver), bracket.position,
                                      bracket.above);
    }

    void drawDurationSign(const notation::DurationSign& sign) {
        const Symbol& symbol = system_.symbols[sign.symbol];
        const Stave& stave = of(symbol);
        const QString text = staff_entry::durationSign(sign.quarters);
        const qreal room = symbol.signWidth * stave.space;
        const qreal middle = place_.x(symbol.x + notation::middleOf(symbol));
        painter_.save();
        painter_.setFont(signFont(text, room, stave.space));
        painter_.drawText(QRectF(middle - room, stave.y(sign.position) - room, 2 * room, 2 * room),
                          Qt::AlignCenter, text);
        painter_.restore();
    }

    /// Smaller where a wide font would need more room than there is.
    QFont signFont(const QString& text, qreal room, qreal space) const {
        QFont font = painter_.font();
        font.setPixelSize(std::max(kSmallestSign, qRound(kSignSize * space)));
        const qreal width = QFontMetricsF(font).horizontalAdvance(text);
        if (width > room)
            font.setPixelSize(
                std::max(kSmallestSign, static_cast<int>(font.pixelSize() * room / width)));
        return font;
    }

    QPainter& painter_;
    const MusicFont& font_;
    const System& system_;
    Place place_;
    Stave treble_;
    Stave bass_;
};

}  // namespace

Stave staveOf(const System& system, notation::Staff staff, const Place& place) {
    return {place.left, place.left + place.width,
            place.top + system.bottomLine(staff) * place.space / 2, place.space};
}

void drawStaves(QPainter& painter, const MusicFont& font, const System& system,
                const Place& place) {
    SystemPainter(painter, font, system, place).drawStaves();
}

void drawTrebleStaff(QPainter& painter, const MusicFont& font, const System& system,
                     const Place& place) {
    SystemPainter(painter, font, system, place).drawTrebleStaff();
}

void drawSymbols(QPainter& painter, const MusicFont& font, const System& system,
                 const Place& place) {
    SystemPainter(painter, font, system, place).drawSymbols();
}

void drawEnd(QPainter& painter, const System& system, const Place& place, bool withBass) {
    const Stave treble =
        engraving::onPixels(painter, staveOf(system, notation::Staff::Treble, place));
    const Stave bass = engraving::onPixels(painter, staveOf(system, notation::Staff::Bass, place));
    engraving::drawFinalBarline(painter, treble, withBass ? bass : treble, treble.right);
}

}  // namespace score_painter
