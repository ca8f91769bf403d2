#include "composer/staff/sheet_painter.h"

#include "composer/notation/sheet_layout.h"
#include "composer/staff/score_painter.h"
#include "widgets/engraving.h"
#include "widgets/music_font.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QLocale>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

namespace sheet_painter {
namespace {

constexpr double kSpace = 1.75;  ///< millimetres: the staff of printed songs is 7 high
constexpr double kMargin = 15;   ///< millimetres
constexpr int kResolution = 1200;
constexpr double kMillimetresPerInch = 25.4;

constexpr double kTitlePoints = 18;
constexpr double kTextPoints = 10;
constexpr double kNumberPoints = 7;

/// In staff spaces.
constexpr double kTitleRoom = 9;
constexpr double kTempoLine = 7;
constexpr double kTempoNote = 0.7;  ///< of a note on a staff
constexpr double kFooterRoom = 4;
constexpr double kNarrowest = 24;

/// Paints the pages of one sheet.
class SheetPainter {
public:
    SheetPainter(QPagedPaintDevice& device, const MelodySheet& sheet)
        : device_(device),
          sheet_(sheet),
          painter_(&device),
          space_(kSpace * device.logicalDpiX() / kMillimetresPerInch) {
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setPen(Qt::black);
    }

    bool paint() {
        if (!painter_.isActive())
            return false;
        const double width = device_.width() / space_ - score_painter::kBraceRoom;
        score_.setSource(sheet_.source);
        score_.setPage({std::max(kNarrowest, width), 0, false});
        score_.layOutAll();
        bass_ = notation::usesBass(score_);
        const auto pages = pagesOf(score_, device_.height() / space_ - kFooterRoom, kTitleRoom);
        paintHead();
        for (std::size_t i = 0; i < pages.size(); ++i) {
            if (i > 0 && !device_.newPage())
                return false;
            for (std::size_t s = 0; s < pages[i].tops.size(); ++s)
                paintSystem(score_.systems()[pages[i].first + s], pages[i].tops[s]);
            paintFooter(i + 1);
        }
        return true;
    }

private:
    QFont font(double points, bool bold = false) const {
        QFont font = painter_.font();
        font.setPointSizeF(points);
        font.setBold(bold);
        return font;
    }

    void paintHead() {
        painter_.save();
        painter_.setFont(font(kTitlePoints, true));
        painter_.drawText(QRectF(0, 0, device_.width(), kTempoLine * space_ - space_),
                          Qt::AlignHCenter | Qt::AlignTop | Qt::TextSingleLine, sheet_.title);
        const qreal small = kTempoNote * space_;
        const engraving::Stave stave{0, 0, kTempoLine * space_, small};
        const qreal left = score_painter::kBraceRoom * space_;
        engraving::drawNote(painter_, MusicFont::shared(), stave, left, {.position = 0});
        painter_.setFont(font(kTextPoints));
        painter_.drawText(QPointF(left + 2.2 * small, stave.bottomLine + small / 2),
                          QStringLiteral("= %1").arg(sheet_.tempo));
        painter_.restore();
    }

    /// With the number of its first entry, by which the program names a note.
    void paintSystem(const notation::System& system, double top) {
        const score_painter::Place place{score_painter::kBraceRoom * space_, top * space_,
                                         score_.page().width * space_, space_};
        if (bass_)
            score_painter::drawStaves(painter_, MusicFont::shared(), system, place);
        else
            score_painter::drawTrebleStaff(painter_, MusicFont::shared(), system, place);
        score_painter::drawSymbols(painter_, MusicFont::shared(), system, place);
        if (system.start.entry == 0 || system.symbols.empty())
            return;
        painter_.save();
        painter_.setFont(font(kNumberPoints));
        painter_.drawText(QPointF(place.left, place.top + (system.above / 2 - 1.5) * space_),
                          QString::number(system.start.entry + 1));
        painter_.restore();
    }

    void paintFooter(std::size_t page) {
        painter_.save();
        painter_.setFont(font(kTextPoints));
        painter_.drawText(QRectF(0, 0, device_.width(), device_.height()),
                          Qt::AlignHCenter | Qt::AlignBottom, QString::number(page));
        painter_.restore();
    }

    QPagedPaintDevice& device_;
    const MelodySheet& sheet_;
    QPainter painter_;
    qreal space_;
    notation::ScoreLayout score_;
    bool bass_ = true;
};

}  // namespace

Paper usualPaper() {
    return QLocale::system().measurementSystem() == QLocale::MetricSystem ? Paper::A4
                                                                          : Paper::Letter;
}

bool paint(QPagedPaintDevice& device, const MelodySheet& sheet) {
    return SheetPainter(device, sheet).paint();
}

QByteArray pdf(const MelodySheet& sheet, Paper paper) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(sheet.title);
    writer.setCreator(QStringLiteral("Cantavista"));
    writer.setResolution(kResolution);
    writer.setPageSize(QPageSize(paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter));
    writer.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
    if (!paint(writer, sheet))
        bytes.clear();
    return bytes;
}

}  // namespace sheet_painter
