#include "widgets/engraving.h"

#include "core/letter.h"
#include "ink.h"
#include "widgets/music_font.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr int kSpace = 20;
constexpr int kNoteX = 100;
const engraving::Stave kStave{10, 190, 200, kSpace};

QImage painted(const std::function<void(QPainter&)>& paint, double ratio = 1) {
    QImage image(QSize(200, 400) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
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

void expectPoint(const QJsonValue& point, const glyph_table::Point& expected, const char* name) {
    EXPECT_NEAR(point[0].toDouble(), expected.x, 0.0006) << name;
    EXPECT_NEAR(point[1].toDouble(), expected.y, 0.0006) << name;
}

}  // namespace

TEST(GlyphTable, AgreesWithTheFontAndItsMetadata) {
    QFile file(QStringLiteral(FONT_METADATA));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject metadata = QJsonDocument::fromJson(file.readAll()).object();
    const auto section = [&](const char* name) { return metadata[QLatin1String(name)].toObject(); };

    for (std::size_t i = 0; i < glyph_table::kGlyphs.size(); ++i) {
        const glyph_table::Info& info = glyph_table::kGlyphs[i];
        const QLatin1String name(info.name);
        EXPECT_EQ(static_cast<std::size_t>(info.glyph), i) << info.name;
        const QJsonObject box = section("glyphBBoxes")[name].toObject();
        expectPoint(box[QLatin1String("bBoxSW")], info.southWest, info.name);
        expectPoint(box[QLatin1String("bBoxNE")], info.northEast, info.name);
        const QJsonObject anchors = section("glyphsWithAnchors")[name].toObject();
        const bool flag = name.startsWith(QLatin1String("flag"));
        expectPoint(anchors[QLatin1String(flag ? "stemUpNW" : "stemUpSE")], info.stemUp, info.name);
        expectPoint(anchors[QLatin1String(flag ? "stemDownSW" : "stemDownNW")], info.stemDown,
                    info.name);

        const QRectF outline = MusicFont::shared().outline(info.glyph).boundingRect();
        EXPECT_NEAR(outline.width(), info.northEast.x - info.southWest.x, 0.05) << info.name;
        EXPECT_NEAR(-outline.top(), info.northEast.y, 0.03) << info.name;
    }

    const QJsonObject defaults = section("engravingDefaults");
    const std::pair<const char*, double> values[] = {
        {"staffLineThickness", glyph_table::kStaffLineThickness},
        {"stemThickness", glyph_table::kStemThickness},
        {"legerLineThickness", glyph_table::kLedgerLineThickness},
        {"legerLineExtension", glyph_table::kLedgerLineExtension},
        {"thinBarlineThickness", glyph_table::kThinBarlineThickness}};
    for (const auto& [name, value] : values)
        EXPECT_EQ(defaults[QLatin1String(name)].toDouble(), value) << name;
}

TEST(Engraving, LinesAreCrispAndEvenAtEverySizeScaleAndOffset) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        for (const double wanted : {6.0, 9.7, 13.3, 17.0, 24.5}) {
            for (const double offset : {0.0, 1.0, 0.37}) {
                const double space = engraving::wholePixelSpace(wanted, ratio);
                EXPECT_LE(space, wanted);
                double middle = 0;
                const QImage image = painted(
                    [&](QPainter& painter) {
                        painter.translate(0, offset);
                        const auto stave = engraving::onPixels(painter, {10, 190, 150.6, space});
                        engraving::drawLines(painter, stave);
                        middle = painter.deviceTransform().map(QPointF(0, stave.y(8))).y();
                    },
                    ratio);
                const auto runs = inkRuns(image, image.width() / 2);
                ASSERT_THAT(runs, SizeIs(5)) << ratio << " " << wanted << " " << offset;
                EXPECT_NEAR(runs[0].top + runs[0].thickness / 2.0, middle, 0.01)
                    << "notes stand on the middle of the lines";
                for (std::size_t i = 1; i < runs.size(); ++i) {
                    EXPECT_EQ(runs[i].thickness, runs[0].thickness);
                    EXPECT_EQ(runs[i].top - runs[i - 1].top, qRound(space * ratio));
                }
            }
        }
    }
}

/// Random notes; the rules of engraving in their plainest form.
TEST(Engraving, NotesAndTheirSignsHaveTheirPlaces) {
    std::mt19937 random(15);
    const double half = kSpace / 2.0;
    const auto positionOf = [&](double y) { return (kStave.bottomLine - y) / half; };
    for (int round = 0; round < 60; ++round) {
        engraving::Note note{.position = static_cast<int>(random() % 20) - 7,
                             .duration = static_cast<engraving::Duration>(random() % 7)};
        SCOPED_TRACE(testing::Message() << note.position << " " << static_cast<int>(note.duration));
        const bool up = note.position < 4;
        const bool whole = note.duration == engraving::Duration::Whole;
        const QImage plain = paintedNote(note);
        const QRect ink = changeBetween(kPaper, plain);
        const int ledgerLines = note.position < 0 ? note.position / -2 : (note.position - 8) / 2;
        EXPECT_THAT(inkRuns(plain, kNoteX - kSpace / 4), SizeIs(std::max(ledgerLines, 0)));
        EXPECT_THAT(inkRuns(plain, kNoteX - kSpace / 2), IsEmpty());

        const double end = positionOf(up ? ink.top() : ink.bottom() + 1);
        if (note.duration <= engraving::Duration::Quarter && !whole) {
            EXPECT_NEAR(end, up ? std::max(note.position + 7, 4) : std::min(note.position - 7, 4),
                        0.2);
        }
        EXPECT_NEAR(engraving::signPosition(note),
                    up ? std::max(end, 8.0) + 1.8 : std::min(end, 0.0) - 1.8, 0.3);

        const bool tied = random() % 2 == 0;
        const auto& sign = *letter::find("sta"[random() % 3])->sign;
        const QRect box =
            changeBetween(kPaper, painted([&](QPainter& painter) {
                              engraving::drawArticulation(painter, MusicFont::shared(), kStave,
                                                          kNoteX, note, sign, tied);
                          }));
        const QRect tie =
            changeBetween(kPaper, painted([&](QPainter& painter) {
                              engraving::drawTie(painter, kStave, kNoteX, kNoteX + 60, note);
                          }));
        const double head = kNoteX + engraving::headWidth(note.duration) * half;
        EXPECT_NEAR(QRectF(box).center().x(), head, 1.5);
        EXPECT_NEAR(QRectF(tie).center().x(), head + 30, 1.5);
        const double outer = positionOf(QRectF(tie).center().y());
        const double at = positionOf(QRectF(box).center().y());
        for (const double place : {outer, at})
            EXPECT_EQ(place < note.position - 1, up) << "away from the stem";
        EXPECT_TRUE(!tied || (up ? at < outer - 1 : at > outer + 1)) << "outside the tie";
        const bool inStave = at > -0.5 && at < 8.5;
        EXPECT_TRUE(!inStave || (sign.small && qRound(at) % 2 != 0)) << "in a space: " << at;
        EXPECT_LT(std::abs(at - note.position), tied || !sign.small ? 15 : 4);

        note.accidental = static_cast<engraving::Accidental>(random() % 4);
        note.dots = static_cast<int>(random() % 3);
        const engraving::Extent extent = engraving::extentOf(note);
        const QRect all = changeBetween(kPaper, paintedNote(note));
        EXPECT_NEAR(all.left(), kNoteX - extent.left * kSpace, 2);
        EXPECT_NEAR(all.right() + 1, kNoteX + extent.right * kSpace, 3);
        const QRect rest =
            changeBetween(kPaper, painted([&](QPainter& painter) {
                              engraving::drawRest(painter, MusicFont::shared(), kStave, kNoteX,
                                                  note.duration, note.dots);
                          }));
        EXPECT_NEAR(rest.width(), engraving::restWidth(note.duration, note.dots) * kSpace, 3);
        EXPECT_TRUE(rest.top() > kStave.y(9) && rest.bottom() < kStave.y(-2));
        const QRect three = changeBetween(
            kPaper, painted([&](QPainter& painter) {
                engraving::drawTripletSign(painter, MusicFont::shared(), kStave, 90, note.position);
            }));
        EXPECT_NEAR(QRectF(three).center().x(), 90, 1);
        EXPECT_NEAR(positionOf(QRectF(three).center().y()), note.position, 0.1);
    }
}

TEST(Engraving, EveryDurationAndSignLooksDifferent) {
    std::vector<QImage> images;
    for (int i = 0; i < 7; ++i) {
        const auto duration = static_cast<engraving::Duration>(i);
        for (const int position : {1, 6})
            images.push_back(paintedNote({.position = position, .duration = duration}));
        images.push_back(painted([&](QPainter& painter) {
            engraving::drawRest(painter, MusicFont::shared(), kStave, kNoteX, duration);
        }));
    }
    for (int i = 1; i < 4; ++i) {
        images.push_back(
            paintedNote({.position = 1, .accidental = static_cast<engraving::Accidental>(i)}));
    }
    for (const int dots : {1, 2})
        images.push_back(paintedNote({.position = 1, .dots = dots}));
    for (std::size_t i = 0; i < images.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(images[i], images[j]) << i << " " << j;
    }
}
