#include "composer/any_melody.h"
#include "composer/melody/composition.h"
#include "composer/melody_sheet.h"

#include <QBuffer>
#include <QPageRanges>
#include <QPaintEngine>
#include <QPdfWriter>

#include <gtest/gtest.h>

#include <random>

namespace {

/// Keeps the texts that are painted, each as wide as it is.
class TextRecorder : public QPaintEngine {
public:
    TextRecorder() : QPaintEngine(AllFeatures) {}

    QStringList texts;
    double widest = 0;

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawTextItem(const QPointF&, const QTextItem& item) override {
        texts << item.text();
        widest = std::max(widest, item.width());
    }
    Type type() const override { return User; }
};

/// Pages on which nothing is painted.
class BlankPages : public QPdfWriter {
public:
    using QPdfWriter::QPdfWriter;

    mutable TextRecorder recorder;
    bool newPage() override {
        recorder.texts << QStringLiteral("new page");
        return true;
    }

protected:
    QPaintEngine* paintEngine() const override { return &recorder; }
};

/// The rows of the first system's picture that are inked almost from edge to edge.
int staffLines(const MelodySheet& sheet) {
    const auto picture = QImage::fromData(sheet_painter::systemPng(sheet, Paper::A4, 0));
    const QImage rows =
        picture.scaled({1, picture.height()}, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int lines = 0;
    for (int y = 1; y < rows.height(); ++y)
        lines += qGray(rows.pixel(0, y)) < 90 && qGray(rows.pixel(0, y - 1)) >= 90;
    return lines;
}

}  // namespace

/// Each page ends with its number.
TEST(SheetPainter, PaintsThePagesThatAreWantedInTheirOrder) {
    std::mt19937 random(5);
    const auto draw = [&random](int below) { return static_cast<int>(random() % below); };
    for (int turn = 0; turn < 20; ++turn) {
        Composition composition;
        std::vector<MelodyEntry> melody;
        const int lowest = turn % 2 ? 36 : 60;
        for (int entries = draw(900); entries >= 0; --entries)
            melody.push_back(lasting(24 * (1 + draw(9)), lowest + draw(36)));
        composition.melody = melodyOf(melody);
        score::Notation notation{score::kMetres[draw(4)], {draw(15) - 7, draw(2) == 0}};
        if (draw(4) == 0)
            notation.metre.reset();
        const QString title = QStringLiteral("Aria ").repeated(1 + draw(60)).trimmed();
        const MelodySheet sheet = sheetOf(composition, title, notation);

        if (turn < 8 && melody.size() > 99) {
            EXPECT_EQ(staffLines(sheet), lowest == 36 ? 10 : 5);
        }

        QBuffer buffer;
        BlankPages pages(&buffer);
        pages.setPageSize(QPageSize(draw(2) ? QPageSize::A5 : QPageSize::Letter));
        const auto paint = [&](bool lastPageFirst) {
            pages.recorder.texts.clear();
            EXPECT_TRUE(sheet_painter::paint(pages, sheet, lastPageFirst));
            EXPECT_LE(pages.recorder.widest, pages.width());
            QStringList numbers;
            const QStringList texts = pages.recorder.texts + QStringList{"new page"};
            for (qsizetype i = 1; i < texts.size(); ++i)
                numbers += texts[i] == "new page" ? QStringList{texts[i - 1]} : QStringList{};
            return numbers;
        };
        const QStringList painted = paint(false);
        QStringList all;
        for (int page = 1; page <= painted.size(); ++page)
            all << QString::number(page);
        ASSERT_EQ(painted, all);
        std::reverse(all.begin(), all.end());
        ASSERT_EQ(paint(true), all);

        const int first = 1 + draw(static_cast<int>(all.size()));
        const int last = first + draw(3);
        QPageRanges ranges;
        ranges.addRange(first, last);
        pages.setPageRanges(ranges);
        QStringList wanted;
        for (int page = first; page <= std::min<qsizetype>(last, all.size()); ++page)
            wanted << QString::number(page);
        ASSERT_EQ(paint(false), wanted);
        ranges.clear();
        ranges.addPage(static_cast<int>(all.size()) + 1);
        pages.setPageRanges(ranges);
        EXPECT_FALSE(sheet_painter::paint(pages, sheet));
    }
}
