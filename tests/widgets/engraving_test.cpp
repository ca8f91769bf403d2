#include "widgets/engraving.h"

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

using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr int kSpace = 20;
constexpr int kNoteX = 100;
constexpr int kHeadWidth = 23;  ///< whole pixels of it
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

TEST(Engraving, NotesHaveTheirLedgerLinesAndStems) {
    const std::array<int, 3> rows[] = {{-7, 3, 4}, {-6, 3, 4}, {-1, 0, 6}, {3, 0, 10},
                                       {4, 0, -3}, {9, 0, 2},  {10, 1, 3}, {18, 5, 4}};
    for (const auto& [position, ledgerLines, stemEnd] : rows) {
        const QImage image = paintedNote({.position = position});
        EXPECT_THAT(inkRuns(image, kNoteX - kSpace / 4), SizeIs(ledgerLines)) << position;
        EXPECT_THAT(inkRuns(image, kNoteX - kSpace / 2), IsEmpty()) << position;

        const bool up = stemEnd > position;
        const int stemX = up ? kNoteX + kHeadWidth - 1 : kNoteX;
        const int otherX = up ? kNoteX : kNoteX + kHeadWidth - 1;
        const int nearEnd = qRound(kStave.y(stemEnd)) + (up ? 3 : -3);
        const int pastEnd = qRound(kStave.y(stemEnd)) + (up ? -3 : 3);
        EXPECT_EQ(qGray(image.pixel(stemX, nearEnd)), 0) << position;
        EXPECT_EQ(qGray(image.pixel(stemX, pastEnd)), 255) << position;
        EXPECT_EQ(qGray(image.pixel(otherX, nearEnd)), 255) << position;
    }
}

TEST(Engraving, EveryDurationAndSignLooksDifferent) {
    using engraving::Accidental;
    using engraving::Duration;
    std::vector<QImage> images;
    for (int i = 0; i <= static_cast<int>(Duration::SixtyFourth); ++i) {
        const auto duration = static_cast<Duration>(i);
        images.push_back(paintedNote({.position = 1, .duration = duration}));
        images.push_back(paintedNote({.position = 6, .duration = duration}));
        images.push_back(painted([&](QPainter& painter) {
            engraving::drawRest(painter, MusicFont::shared(), kStave, kNoteX, duration);
        }));
    }
    for (const Accidental sign : {Accidental::Flat, Accidental::Natural, Accidental::Sharp})
        images.push_back(paintedNote({.position = 1, .accidental = sign}));
    images.push_back(paintedNote({.position = 1, .dots = 1}));
    images.push_back(paintedNote({.position = 1, .dots = 2}));
    for (std::size_t i = 0; i < images.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(images[i], images[j]) << i << " " << j;
    }
}
