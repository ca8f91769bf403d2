#include "composer/panels/entry_pictures.h"

#include "composer/melody/entry_settings.h"
#include "widgets/engraving_spans.h"
#include "widgets/music_font.h"

#include <QPainter>
#include <QRectF>

namespace entry_pictures {
namespace {

using engraving::Duration;
using engraving::Note;
using engraving::Stave;

/// A note in the lowest space, so that it needs no ledger line and its stem goes up.
constexpr int kPosition = 1;

/// How much of a picture lies above and below the middle of the head, in staff spaces.
struct Room {
    qreal above = 0;
    qreal below = 0;
};

constexpr Room kHeadRoom{2.2, 2.2};
constexpr Room kSignBelow{3.7, 2.2};
constexpr Room kSignAbove{5.4, 0.7};

/// The flags of the shortest values stand higher than a stem.
Room stemRoom(Duration duration) {
    const auto flag = note_values::rowOf(duration).flagUp;
    return {3.7 + (flag ? glyph_table::info(*flag).northEast.y : 0), 0.7};
}

/// How far a tie reaches from one head to the other, in staff spaces.
constexpr qreal kTieLength = 2.6;

/// A stave without lines on which the picture is centred from top to bottom.
Stave staveFor(const QRectF& rect, const Room& room) {
    const qreal space = rect.height() / (room.above + room.below);
    const qreal head = rect.top() + room.above * space;
    return {rect.left(), rect.right(), head + kPosition * space / 2, space};
}

/// The left edge of a head whose picture reaches so many spaces to the right.
qreal centred(const QRectF& rect, const Stave& stave, qreal width) {
    return rect.center().x() - width * stave.space / 2;
}

void drawAlone(QPainter& painter, const QRectF& rect, const Note& note, const Room& room) {
    const Stave stave = staveFor(rect, room);
    const qreal x = centred(rect, stave, engraving::extentOf(note).right);
    engraving::drawNote(painter, MusicFont::shared(), stave, x, note);
}

void drawWithSign(QPainter& painter, const QRectF& rect,
                  const glyph_table::ArticulationSign& sign) {
    const Note note{kPosition, Duration::Quarter};
    const Stave stave = staveFor(rect, kSignBelow);
    const qreal x = centred(rect, stave, engraving::extentOf(note).right);
    engraving::drawNote(painter, MusicFont::shared(), stave, x, note);
    engraving::drawArticulation(painter, MusicFont::shared(), stave, x, note, sign);
}

void drawTied(QPainter& painter, const QRectF& rect) {
    const Note note{kPosition, Duration::Quarter};
    const Stave stave = staveFor(rect, kSignBelow);
    const qreal left = centred(rect, stave, kTieLength + engraving::extentOf(note).right);
    const qreal right = left + kTieLength * stave.space;
    for (const qreal x : {left, right})
        engraving::drawNote(painter, MusicFont::shared(), stave, x, note);
    engraving::drawTieOfNotes(painter, stave, left, right, note);
}

void drawTriplet(QPainter& painter, const QRectF& rect) {
    const Note note{kPosition, Duration::Eighth};
    const Stave stave = staveFor(rect, kSignAbove);
    const qreal x = centred(rect, stave, engraving::extentOf(note).right);
    engraving::drawNote(painter, MusicFont::shared(), stave, x, note);
    const qreal middle = x + engraving::headWidth(note.duration) * stave.space;
    engraving::drawTripletSign(painter, MusicFont::shared(), stave, middle,
                               engraving::signPosition(note));
}

}  // namespace

void drawSymbol(QPainter& painter, const QRectF& rect, int symbol) {
    const auto duration = static_cast<Duration>(symbol);
    drawAlone(painter, rect, {kPosition, duration},
              duration == Duration::Whole ? kHeadRoom : stemRoom(duration));
}

void drawAttribute(QPainter& painter, const QRectF& rect, int attribute) {
    switch (attribute) {
        case EntrySettings::Punto:
            drawAlone(painter, rect, {kPosition, Duration::Quarter, engraving::Accidental::None, 1},
                      kSignBelow);
            break;
        case EntrySettings::Legato:
            drawTied(painter, rect);
            break;
        case EntrySettings::Terzina:
            drawTriplet(painter, rect);
            break;
        default:
            drawWithSign(painter, rect,
                         *kAttributeButtons[static_cast<std::size_t>(attribute)].letter->sign);
            break;
    }
}

}  // namespace entry_pictures
