#include "composer/staff/sheet_music.h"

#include "composer/staff/score_painter.h"
#include "widgets/engraving.h"
#include "widgets/music_font.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

constexpr double kSpace = 1.75;  ///< millimetres: the staff of printed songs is 7 high

constexpr double kTitlePoints = 18;
constexpr double kTextPoints = 10;
constexpr double kNumberPoints = 7;

/// In staff spaces.
constexpr double kTitleRoom = 9;
constexpr double kTempoLine = 7;
constexpr double kTempoNote = 0.7;  ///< of a note on a staff
constexpr double kFooterRoom = 4;
constexpr double kNarrowest = 24;
constexpr double kOverClef = 1.7;  ///< a number, from the top line

QFont fontOf(const QPainter& painter, double points, bool bold = false) {
    QFont font = painter.font();
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

/// A title that is too long is set smaller, and shortened if that is not enough.
void paintTitle(QPainter& painter, const QString& title, const QRectF& place) {
    const auto widthAt = [&](double points) {
        const QFontMetricsF metrics(fontOf(painter, points, true), painter.device());
        return metrics.horizontalAdvance(title);
    };
    const double fitting = kTitlePoints * place.width() / std::max(1.0, widthAt(kTitlePoints));
    const QFont font = fontOf(painter, std::clamp(fitting, kTextPoints, kTitlePoints), true);
    painter.setFont(font);
    const QFontMetricsF metrics(font, painter.device());
    painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextSingleLine,
                     metrics.elidedText(title, Qt::ElideMiddle, place.width()));
}

}  // namespace

SheetMusic::SheetMusic(const MelodySheet& sheet, const QSizeF& room) : sheet_(sheet), room_(room) {
    score_.setSource(sheet_.source);
    score_.setPage(
        {std::max(kNarrowest, room.width() / kSpace - score_painter::kBraceRoom), 0, false});
    score_.layOutEvenly();
    bass_ = notation::usesBass(score_);
    pages_ = notation::pagesOf(score_, room.height() / kSpace - kFooterRoom, kTitleRoom);
}

void SheetMusic::paintPage(QPainter& painter, std::size_t page, double unitsPerMillimetre) const {
    const double space = kSpace * unitsPerMillimetre;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::black);
    if (page == 0)
        paintHead(painter, space);
    const notation::SheetPage& onPage = pages_[page];
    for (std::size_t i = 0; i < onPage.tops.size(); ++i)
        paintSystemAt(painter, onPage.first + i, onPage.tops[i], space);
    painter.setFont(fontOf(painter, kTextPoints));
    painter.drawText(QRectF(QPointF(), room_ * unitsPerMillimetre),
                     Qt::AlignHCenter | Qt::AlignBottom, QString::number(page + 1));
    painter.restore();
}

QSizeF SheetMusic::sizeOf(std::size_t system) const {
    return {room_.width(), notation::printedHeight(score_.systems()[system], bass_) * kSpace};
}

void SheetMusic::paintSystem(QPainter& painter, std::size_t system,
                             double unitsPerMillimetre) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::black);
    paintSystemAt(painter, system, 0, kSpace * unitsPerMillimetre);
    painter.restore();
}

void SheetMusic::paintHead(QPainter& painter, double space) const {
    const double width = room_.width() / kSpace * space;
    painter.save();
    paintTitle(painter, sheet_.title, QRectF(0, 0, width, (kTempoLine - 1) * space));
    const double small = kTempoNote * space;
    const engraving::Stave stave{0, 0, kTempoLine * space, small};
    const double left = score_painter::kBraceRoom * space;
    engraving::drawNote(painter, MusicFont::shared(), stave, left, {.position = 0});
    painter.setFont(fontOf(painter, kTextPoints));
    painter.drawText(QPointF(left + 2.2 * small, stave.bottomLine + small / 2),
                     QStringLiteral("= %1").arg(sheet_.tempo));
    painter.restore();
}

/// With the number of its bar or, without bars, of its first entry, by which the program names a
/// note. The staves end with the melody.
void SheetMusic::paintSystemAt(QPainter& painter, std::size_t index, double top,
                               double space) const {
    const notation::System& system = score_.systems()[index];
    const bool hasBars = sheet_.source.notation.metre.has_value();
    const bool ends = hasBars && system.last;
    const MusicFont& font = MusicFont::shared();
    const double full = score_.page().width;
    const double width = ends ? std::min(full, system.end + engraving::kFinalBarlineWidth) : full;
    const score_painter::Place place{score_painter::kBraceRoom * space, top * space, width * space,
                                     space};
    if (bass_)
        score_painter::drawStaves(painter, font, system, place);
    else
        score_painter::drawTrebleStaff(painter, font, system, place);
    score_painter::drawSymbols(painter, font, system, place);
    if (ends)
        score_painter::drawEnd(painter, system, place, bass_);
    const bool isFirst = system.start.entry == 0;
    const QString number = hasBars   ? system.barNumberText()
                           : isFirst ? QString()
                                     : QString::number(system.start.entry + 1);
    painter.save();
    painter.setFont(fontOf(painter, kNumberPoints));
    painter.drawText(QPointF(place.left, place.top + (system.above / 2 - kOverClef) * space),
                     number);
    painter.restore();
}
