#include "composer/staff/composer_staff_painter.h"

#include "widgets/music_font.h"

#include <QFont>
#include <QPainter>
#include <QRectF>

#include <algorithm>

namespace composer_staff_painter {
namespace {

/// In staff spaces.
constexpr double kSignSize = 1.5;
constexpr double kSignRoom = 12;

engraving::Note noteOf(const Engraved& engraved, std::size_t value) {
    const auto head = composer_staff_layout::headOf(engraved.entry.noteNumber);
    const staff_entry::Value& shape = engraved.figure.values[value];
    return {head.position, shape.duration,
            head.sharp && value == 0 ? engraving::Accidental::Sharp : engraving::Accidental::None,
            shape.dots};
}

void drawTies(QPainter& painter, const engraving::Stave& stave, qreal left,
              const Engraved& engraved) {
    const auto& heads = engraved.cell.heads;
    for (std::size_t i = 0; i + 1 < heads.size(); ++i) {
        engraving::drawTie(painter, stave, left + heads[i] * stave.space,
                           left + heads[i + 1] * stave.space, noteOf(engraved, i));
    }
}

/// The sign of a triplet, or of a duration that its figure does not show.
void drawFigureSign(QPainter& painter, const MusicFont& font, const engraving::Stave& stave,
                    qreal left, const Engraved& engraved) {
    const bool rest = staff_entry::isRest(engraved.entry);
    const qreal position =
        rest ? engraving::kRestSignPosition : engraving::signPosition(noteOf(engraved, 0));
    const auto& heads = engraved.cell.heads;
    const auto& last = engraved.figure.values.back();
    const double end = heads.back() + (rest ? engraving::restWidth(last.duration)
                                            : engraving::headWidth(last.duration));
    const qreal middle = left + (heads.front() + end) / 2 * stave.space;
    if (engraved.figure.triplet)
        engraving::drawTripletSign(painter, font, stave, middle, position);
    if (engraved.figure.exact)
        return;

    QFont small = painter.font();
    small.setPixelSize(std::max(7, qRound(kSignSize * stave.space)));
    painter.save();
    painter.setFont(small);
    const qreal y = stave.bottomLine - position * stave.space / 2;
    const qreal room = kSignRoom * stave.space;
    const qreal width = engraved.cell.width * stave.space;
    painter.drawText(QRectF(left + (width - room) / 2, y - room / 2, room, room), Qt::AlignCenter,
                     staff_entry::durationSign(engraved.entry.duration));
    painter.restore();
}

}  // namespace

Staves onPixels(const QPainter& painter, const Staves& staves) {
    return {engraving::onPixels(painter, staves.treble), engraving::onPixels(painter, staves.bass)};
}

void drawSystem(QPainter& painter, const MusicFont& font, const Staves& staves) {
    engraving::drawGrandStaff(painter, font, staves.treble, staves.bass);
}

void drawEntry(QPainter& painter, const MusicFont& font, const Staves& staves, qreal left,
               const Engraved& engraved) {
    const engraving::Stave& stave = staves.of(engraved.system);
    const auto& values = engraved.figure.values;
    const bool rest = staff_entry::isRest(engraved.entry);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const qreal x = left + engraved.cell.heads[i] * stave.space;
        if (rest)
            engraving::drawRest(painter, font, stave, x, values[i].duration, values[i].dots);
        else
            engraving::drawNote(painter, font, stave, x, noteOf(engraved, i));
    }
    if (!rest) {
        drawTies(painter, stave, left, engraved);
        if (const auto sign = staff_entry::articulationOf(engraved.entry)) {
            engraving::drawArticulation(painter, font, stave,
                                        left + engraved.cell.heads.front() * stave.space,
                                        noteOf(engraved, 0), *sign, values.size() > 1);
        }
    }
    drawFigureSign(painter, font, stave, left, engraved);
}

}  // namespace composer_staff_painter
