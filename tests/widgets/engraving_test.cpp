#include "core/letter.h"
#include "ink.h"
#include "widgets/engraving_spans.h"
#include "widgets/music_font.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <gmock/gmock.h>

#include <functional>
#include <random>

using testing::SizeIs;

namespace {

constexpr int kSpace = 20;
constexpr int kNoteX = 100;
const engraving::Stave kStave{10, 190, 200, kSpace};

QImage painted(const std::function<void(QPainter&)>& paint) {
    QImage image(200, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    paint(painter);
    return image;
}

QImage paintedNote(const engraving::Note& note) {
    return painted([&](QPainter& painter) {
        engraving::drawNote(painter, MusicFont::shared(), engraving::onPixels(painter, kStave),
                            kNoteX, note);
    });
}

const QImage kPaper = painted([](QPainter&) {});

QRect inkOf(const std::function<void(QPainter&)>& paint) {
    return changeBetween(kPaper, painted(paint));
}

void expectPoint(const QJsonValue& point, const glyph_table::Point& expected) {
    EXPECT_NEAR(point[0].toDouble(), expected.x, 0.0006);
    EXPECT_NEAR(point[1].toDouble(), expected.y, 0.0006);
}

}  // namespace

TEST(GlyphTable, AgreesWithTheFontAndItsMetadata) {
    QFile file(QStringLiteral(FONT_METADATA));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject metadata = QJsonDocument::fromJson(file.readAll()).object();
    for (const glyph_table::Info& info : glyph_table::kGlyphs) {
        SCOPED_TRACE(info.name);
        EXPECT_EQ(&info, &glyph_table::kGlyphs[static_cast<std::size_t>(info.glyph)]);
        const QString name = QLatin1String(info.name);
        const QJsonValue box = metadata["glyphBBoxes"][name];
        expectPoint(box["bBoxSW"], info.southWest);
        expectPoint(box["bBoxNE"], info.northEast);
        const QJsonValue anchors = metadata["glyphsWithAnchors"][name];
        const bool flag = name.startsWith("flag");
        expectPoint(anchors[flag ? "stemUpNW" : "stemUpSE"], info.stemUp);
        expectPoint(anchors[flag ? "stemDownSW" : "stemDownNW"], info.stemDown);
        const QRectF outline = MusicFont::shared().outline(info.glyph).boundingRect();
        EXPECT_NEAR(outline.width(), info.northEast.x - info.southWest.x, 0.05);
    }
}

/// Random notes; the rules of engraving in their plainest form.
TEST(Engraving, NotesAndTheirSignsHaveTheirPlaces) {
    std::mt19937 random(15);
    const MusicFont& font = MusicFont::shared();
    const double half = kSpace / 2.0;
    const auto positionOf = [&](double y) { return (kStave.bottomLine - y) / half; };
    for (int round = 0; round < 60; ++round) {
        engraving::Note note{.position = static_cast<int>(random() % 20) - 7,
                             .duration = static_cast<engraving::Duration>(random() % 7)};
        SCOPED_TRACE(testing::Message() << note.position << " " << static_cast<int>(note.duration));
        const bool up = note.position < 4;
        const QImage plain = paintedNote(note);
        const QRect ink = changeBetween(kPaper, plain);
        const int ledgerLines = note.position < 0 ? note.position / -2 : (note.position - 8) / 2;
        EXPECT_THAT(inkRuns(plain, kNoteX - kSpace / 4), SizeIs(std::max(ledgerLines, 0)));

        const double end = positionOf(up ? ink.top() : ink.bottom() + 1);
        if (note.duration == engraving::Duration::Half ||
            note.duration == engraving::Duration::Quarter) {
            EXPECT_NEAR(end, up ? std::max(note.position + 7, 4) : std::min(note.position - 7, 4),
                        0.2);
        }
        EXPECT_NEAR(engraving::signPosition(note),
                    up ? std::max(end, 8.0) + 1.8 : std::min(end, 0.0) - 1.8, 0.3);

        const auto& sign = *letter::find("sta"[random() % 3])->sign;
        const QRectF box = inkOf([&](QPainter& painter) {
            engraving::drawArticulation(painter, font, kStave, kNoteX, note, sign);
        });
        const QRectF tie = inkOf([&](QPainter& painter) {
            engraving::drawTieOfNotes(painter, kStave, kNoteX, kNoteX + 60, note);
        });
        const double head = kNoteX + engraving::headWidth(note.duration) * half;
        EXPECT_NEAR(box.center().x(), head, 1.5);
        EXPECT_NEAR(tie.center().x(), head + 30, 1.5);
        const double outer = positionOf(tie.center().y());
        const double at = positionOf(box.center().y());
        for (const double place : {outer, at})
            EXPECT_EQ(place < note.position - 1, up) << "away from the stem";
        const double middle = positionOf(up ? tie.bottom() : tie.top());
        EXPECT_GT(std::abs(std::remainder(middle, 2)), 0.3) << "the tie is clear of the lines";
        const bool onLines = up ? at > -0.5 : at < 8.5;
        EXPECT_TRUE(!onLines || (sign.small && qRound(at) % 2 != 0)) << "in a space: " << at;
        EXPECT_LT(std::abs(at - note.position), sign.small ? 4 : 15);

        note.accidental = static_cast<engraving::Accidental>(random() % 4);
        note.dots = static_cast<int>(random() % 3);
        const engraving::Extent extent = engraving::extentOf(note);
        const QRect all = changeBetween(kPaper, paintedNote(note));
        EXPECT_NEAR(all.left(), kNoteX - extent.left * kSpace, 2);
        EXPECT_NEAR(all.right() + 1, kNoteX + extent.right * kSpace, 3);
        const QRectF rest = inkOf([&](QPainter& painter) {
            engraving::drawRest(painter, font, kStave, kNoteX, note.duration, note.dots);
        });
        EXPECT_NEAR(rest.width(), engraving::restWidth(note.duration, note.dots) * kSpace, 3);
        const QRectF three = inkOf([&](QPainter& painter) {
            engraving::drawTripletSign(painter, font, kStave, 90, note.position);
        });
        EXPECT_NEAR(three.center().x(), 90, 1);
        EXPECT_NEAR(positionOf(three.center().y()), note.position, 0.1);
    }
}
