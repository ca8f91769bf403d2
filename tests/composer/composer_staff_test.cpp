#include "composer/staff/composer_staff.h"

#include "composer/ink.h"
#include "composer/panels/entry_pictures.h"
#include "support/window_driver.h"
#include "widgets/music_font.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>
#include <QScreen>

#include <gmock/gmock.h>

#include <cmath>
#include <random>
#include <set>

namespace {

using staff_entry::Entry;
using staff_entry::Figure;
using testing::ElementsAre;
using testing::IsEmpty;

namespace layout = composer_staff_layout;
namespace painter = composer_staff_painter;

/// "2 8": a half tied to an eighth; "4." is dotted, "3:8" a triplet, "~" stands before a figure
/// that is not exact.
std::string written(const Figure& figure) {
    std::string text = figure.exact ? "" : "~";
    text += figure.triplet ? "3:" : "";
    for (const staff_entry::Value& value : figure.values) {
        text += &value == &figure.values.front() ? "" : " ";
        text += std::to_string(1 << static_cast<int>(value.duration));
        text += value.dots > 0 ? "." : "";
    }
    return text;
}

double quartersOf(const Figure& figure) {
    double sum = 0;
    for (const staff_entry::Value& value : figure.values)
        sum += 4.0 / (1 << static_cast<int>(value.duration)) * (value.dots == 1 ? 1.5 : 1);
    return figure.triplet ? sum * 2 / 3 : sum;
}

/// The steps of the white keys from the lowest C on, and that a black key stands on the one below.
int stepOf(int note) {
    constexpr std::array kSteps{0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6};
    return note / 12 * 7 + kSteps[static_cast<std::size_t>(note % 12)];
}
bool isSharp(int note) {
    return note > 36 && stepOf(note) == stepOf(note - 1);
}

TEST(StaffEntry, DurationsAreEngravedAsAMusicianWritesThem) {
    const std::vector<std::pair<double, const char*>> cases{
        {3, "2."},
        {1.25, "4 16"},
        {5, "1 4"},
        {8, "1 1"},
        {0.1875, "32."},
        {2.5, "2 8"},
        {24, "1 1 1 1 1 1"},
        {0.15625, "64 64."},
        {8.0 / 3, "3:1"},
        {1.0 / 3, "3:8"},
        {1 + 2.0 / 3, "3:2 8"},
        {0.1, "~64."},
        {0.03125, "~64"},
        {0, "~64"},
        {-1, "~64"},
        {1e300, "~1."},
    };
    for (const auto& [duration, figure] : cases)
        EXPECT_EQ(written(staff_entry::figureOf(duration)), figure) << duration;
    EXPECT_FALSE(staff_entry::figureOf(std::nan("")).exact);
    int tooLong = 0;
    for (int i = 1; i <= 37 * 96; ++i) {
        const double duration = i / 96.0;
        const Figure figure = staff_entry::figureOf(duration);
        ASSERT_TRUE(!figure.values.empty() && figure.values.size() <= 6) << duration;
        ASSERT_EQ(figure.triplet, figure.exact && i % 3 != 0) << duration;
        tooLong += duration > 36 && figure.exact ? 1 : 0;
        if (figure.exact) {
            ASSERT_NEAR(quartersOf(figure), duration, 1e-9) << written(figure);
        } else {
            ASSERT_TRUE(i % 3 != 0 || duration > 4 || i == 3) << duration;
        }
    }
    EXPECT_EQ(tooLong, 0);
}

TEST(ComposerStaffLayout, EveryNaturalNoteHasAPlaceOfItsOwn) {
    for (int note = 36; note <= 95; ++note) {
        const layout::Head head = layout::headOf(note);
        const int position = note >= 60 ? stepOf(note) - stepOf(64) : stepOf(note) - stepOf(43);
        EXPECT_EQ(head.system == layout::System::Treble, note >= 60) << note;
        EXPECT_EQ(head.position, position) << "Mi is on the lowest line, Sol in the bass: " << note;
        EXPECT_EQ(head.sharp, isSharp(note));
        for (const double off : {-0.45, 0.0, 0.45})
            EXPECT_EQ(layout::noteAt(layout::placeOf(head) + off), isSharp(note) ? note - 1 : note);
    }
    EXPECT_GT(layout::placeOf(layout::headOf(59)) - layout::placeOf(layout::headOf(60)), 1);
    EXPECT_EQ(layout::noteAt(-100), 95);
    EXPECT_EQ(layout::noteAt(1000), 36);
}

TEST(ComposerStaffLayout, ACellHasRoomForAllOfItsEntryAndMoreForALongerOne) {
    for (const int note : {36, 43, 61, 66, 95, 0}) {
        double narrower = 0;
        for (const double duration : {0.0625, 0.125, 0.25, 0.5, 1.0, 2.0, 4.0}) {
            const double width =
                layout::cellOf({note, duration}, {{staff_entry::figureOf(duration).values.front()}})
                    .width;
            EXPECT_GT(width, narrower) << note << ", " << duration;
            narrower = note == 0 || duration < 0.5 ? 0 : width;
        }
        for (int sixtyFourths = 1; sixtyFourths < 200; ++sixtyFourths) {
            const Entry entry{note, sixtyFourths / 16.0};
            const Figure figure = staff_entry::figureOf(entry.duration);
            const layout::Cell cell = layout::cellOf(entry, figure);
            ASSERT_EQ(cell.heads.size(), figure.values.size());
            double end = 0.5;
            for (std::size_t i = 0; i < figure.values.size(); ++i) {
                const auto [duration, dots] = figure.values[i];
                engraving::Extent extent{0, engraving::restWidth(duration, dots)};
                if (note != 0) {
                    const auto sharp = i == 0 && isSharp(note) ? engraving::Accidental::Sharp
                                                               : engraving::Accidental::None;
                    extent =
                        engraving::extentOf({layout::headOf(note).position, duration, sharp, dots});
                }
                ASSERT_GE(cell.heads[i] - extent.left, end) << note << ", " << entry.duration;
                ASSERT_LT(cell.heads[i] - extent.left, end + 4);
                end = cell.heads[i] + extent.right + 0.499;
            }
            ASSERT_GE(cell.width, end);
        }
    }
    EXPECT_GE(layout::cellOf({60, 0.1}, staff_entry::figureOf(0.1)).width, 6 * 0.8);
}

TEST(ComposerStaffLayout, TheCurrentEntryIsInViewHoweverItMoves) {
    constexpr double kRoom = 40;
    constexpr int kCount = 500;
    int asked = 0;
    const auto widthOf = [&asked](int entry) {
        ++asked;
        return 2.1 + entry * 7 % 5;
    };
    std::mt19937 random(4);
    layout::View view{kCount - 1, true};
    auto shown = layout::arrange(view, kCount, kRoom, widthOf);
    EXPECT_EQ(shown.back().entry, kCount - 1);

    int current = 0;
    for (int i = 0; i < 2000; ++i) {
        current = i % 7 == 0 ? static_cast<int>(random() % kCount)
                             : std::clamp(current + (i / 400 % 2 == 0 ? 1 : -1), 0, kCount - 1);
        const int first = shown.front().entry;
        const int last = shown.back().entry;
        view = layout::following(view, shown, current);
        asked = 0;
        shown = layout::arrange(view, kCount, kRoom, widthOf);
        ASSERT_LE(asked, 22);
        const bool back = current < first;
        const bool turned = back || current > last;
        ASSERT_EQ(turned && back ? shown.back().entry : shown.front().entry,
                  !turned                                     ? first
                  : back && shown.front().entry == 0          ? shown.back().entry
                  : !back && shown.back().entry == kCount - 1 ? shown.front().entry
                                                              : current)
            << "a page turns where it has to, and shows what comes next";
        ASSERT_TRUE(current >= shown.front().entry && current <= shown.back().entry);
        double left = shown.front().left;
        for (const auto& cell : shown) {
            ASSERT_NEAR(cell.left, left, 1e-9);
            left += cell.width;
        }
        const bool fromLeft = shown.front().entry == 0 || (!view.endsThere && left < kRoom - 1e-9);
        ASSERT_NEAR(fromLeft ? shown.front().left : left, fromLeft ? 0 : kRoom, 1e-9);
        ASSERT_TRUE(left > kRoom - 6.1 || shown.back().entry == kCount - 1) << "the room is full";
    }
    EXPECT_EQ(layout::arrange({kCount - 1, false}, kCount, kRoom, widthOf).size(),
              layout::arrange({kCount - 1, true}, kCount, kRoom, widthOf).size());
    EXPECT_THAT(layout::arrange({0, true}, 0, kRoom, widthOf), IsEmpty());
    EXPECT_EQ(layout::arrange({9, false}, 3, 1, widthOf).size(), 1U) << "wider than the room";
    EXPECT_EQ(layout::arrange({2, true}, 3, kRoom, widthOf).front().left, 0) << "a short melody";
    EXPECT_EQ(layout::following({7, true}, {}, 3).entry, 7);
}

/// A melody of every kind of entry.
Entry entryAt(int i) {
    return i % 9 == 3 ? Entry{0, 1.0 / 3, 'p'}
                      : Entry{36 + i * 7 % 60, 0.0625 * (1 + i * 5 % 40), "nsta"[i % 4]};
}

TEST(ComposerStaffView, StavesEntriesAndColumnShareTheRoom) {
    std::mt19937 random(9);
    for (int i = 0; i < 150; ++i) {
        const auto draw = [&](int least, int most) {
            return least + static_cast<int>(random() % static_cast<unsigned>(most - least));
        };
        const QSizeF size(draw(420, 2600), draw(160, 700));
        constexpr double kNumbers = 11;
        const int count = draw(1, 40);
        ComposerStaffView view;
        view.setSource({[=] { return count; }, entryAt});
        view.resize(size, kNumbers, 1);
        const int current = draw(0, count);
        view.layOutEntries(current);

        const auto& [treble, bass] = view.staves();
        const double space = treble.space;
        EXPECT_TRUE(space == bass.space && space == std::floor(space));
        // 46 half spaces from the highest sign to the lowest note, 24 spaces for the widest entry.
        const bool higher = 23 * (space + 1) <= size.height() - 18 - kNumbers;
        EXPECT_FALSE(higher && 24 * (space + 1) <= size.width() - 18) << "as large as fits";
        EXPECT_LE(24 * space, size.width() - 18);
        EXPECT_NEAR(treble.y(22) - 9, size.height() - 9 - kNumbers - bass.y(-8), 1e-9) << "centred";
        EXPECT_DOUBLE_EQ(bass.bottomLine - treble.bottomLine, 8 * space);
        EXPECT_TRUE(treble.left == bass.left && treble.right == bass.right);
        EXPECT_DOUBLE_EQ(treble.right, size.width() - 9);
        EXPECT_DOUBLE_EQ(view.column().right(), treble.right);
        EXPECT_GT(treble.left - 2 * space, 9) << "the brace";
        EXPECT_GT(view.columnNoteLeft() - 2 * space, view.column().left()) << "the sharp";
        EXPECT_LT(view.columnNoteLeft() + 2 * space, view.column().right());

        const auto& shown = view.entries();
        ASSERT_FALSE(shown.empty());
        EXPECT_GE(view.leftOf(shown.front()), treble.left + 4 * space) << "the clefs";
        const QRectF last = view.cellRect(shown.back());
        EXPECT_TRUE(shown.size() == 1 || last.right() <= view.entriesRight() + 1e-6);
        EXPECT_LT(view.entriesRight(), view.column().left());
        for (const auto& entry : shown) {
            EXPECT_EQ(view.find(entry.place.entry), &entry);
            const QRectF cell = view.cellRect(entry);
            EXPECT_DOUBLE_EQ(cell.width(), entry.place.width * space);
            EXPECT_TRUE(cell.top() >= 1 && cell.bottom() <= size.height() - 1);
            if (&entry != &shown.front())
                EXPECT_DOUBLE_EQ(cell.left(), view.cellRect(*(&entry - 1)).right());
        }
        EXPECT_TRUE(view.find(current));
        EXPECT_FALSE(view.find(shown.front().place.entry - 1));
        EXPECT_FALSE(view.find(shown.back().place.entry + 1));
        EXPECT_FALSE(view.find(std::nullopt));
        view.layOutEntries(count);
        EXPECT_EQ(view.entries().back().place.entry, count - 1) << "no current entry: the end";
    }
}

TEST(ComposerStaffView, ARestStandsInTheStaveOfTheNoteBeforeIt) {
    std::vector<Entry> melody(20, Entry{0, 0.0625, 'p'});
    melody[2].noteNumber = 40;
    melody[12].noteNumber = 70;
    ComposerStaffView view;
    view.setSource({[] { return 20; }, [&](int i) { return melody[static_cast<std::size_t>(i)]; }});
    view.resize({2400, 220}, 11, 1);
    view.layOutEntries(0);
    std::string staves;
    for (const auto& entry : view.entries())
        staves += entry.engraved.system == layout::System::Treble ? 'T' : 'B';
    EXPECT_EQ(staves, "TTBBBBBBBBBTTTTTTTTT") << "it looks eight entries back";
}

/// An entry by itself, large and without lines.
QImage engraved(const Entry& entry, layout::Cell& cell) {
    constexpr int kSpace = 16;
    const Figure figure = staff_entry::figureOf(entry.duration);
    cell = layout::cellOf(entry, figure);
    QImage image(qCeil(cell.width * kSpace) + 2, 22 * kSpace, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter into(&image);
    into.setRenderHint(QPainter::Antialiasing);
    const engraving::Stave stave{0, 999, 14 * kSpace, kSpace};
    painter::drawEntry(into, MusicFont::shared(), {stave, stave}, 1, {entry, figure, cell});
    return image;
}

TEST(ComposerStaffInk, AnEntryIsMadeOfAllItsStrokes) {
    std::mt19937 random(5);
    const std::vector<int> notes{0, 62, 64, 66, 69, 71, 74, 75, 78};
    const std::vector<double> durations{0.0625, 0.09375, 0.125, 0.25,    0.375,   0.5,     0.75,
                                        1,      1.5,     2,     3,       4,       6,       2.5,
                                        1.25,   5,       8,     2.0 / 3, 1.0 / 3, 8.0 / 3, 0.1};
    for (int i = 0; i < 150; ++i) {
        const int note = notes[random() % notes.size()];
        const Entry entry{note, durations[random() % durations.size()],
                          note == 0 ? 'p' : "nsta"[random() % 4]};
        const Figure figure = staff_entry::figureOf(entry.duration);
        auto strokes = static_cast<int>(figure.values.size());
        for (const auto& value : figure.values)
            strokes += value.dots;
        if (note != 0) {
            strokes += static_cast<int>(figure.values.size()) - 1;  // ties
            strokes += isSharp(note) ? 1 : 0;
            strokes += entry.attribute == 'n' ? 0 : 1;
        }
        strokes += figure.triplet ? 1 : 0;
        strokes += figure.exact ? 0 : static_cast<int>(staff_entry::durationSign(0.1).size());
        layout::Cell cell;
        const QImage image = engraved(entry, cell);
        QImage blank(image.size(), image.format());
        blank.fill(0);
        const QRect ink = difference(image, blank, image.rect());
        const auto what = [&] { return staff_entry::inWords(entry).toStdString(); };
        EXPECT_EQ(strokesIn(image), strokes) << what();
        EXPECT_TRUE(image.rect().adjusted(1, 1, -1, -1).contains(ink)) << what();
        if (figure.exact && !figure.triplet)
            continue;
        if (note >= 71)
            EXPECT_GT(ink.bottom(), (14 + 1) * 16) << what() << ": the sign is behind the stem";
        else
            EXPECT_LT(ink.top(), (14 - 4) * 16) << what() << ": the sign is above";
    }
}

TEST(ComposerStaffInk, EveryPictureOfThePaletteIsWholeCentredAndItsOwn) {
    std::vector<QImage> pictures;
    std::string strokes;
    for (int i = 0; i < 13; ++i) {
        QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
        image.fill(0);
        const QImage blank = image;
        QPainter into(&image);
        into.setRenderHint(QPainter::Antialiasing);
        const QRectF rect(40, 40, 120, 120);
        if (i < 7)
            entry_pictures::drawSymbol(into, rect, i);
        else
            entry_pictures::drawAttribute(into, rect, i - 7);
        into.end();
        strokes += std::to_string(strokesIn(image));
        const QRect ink = difference(image, blank, image.rect());
        EXPECT_TRUE(rect.adjusted(-1, -1, 1, 1).contains(ink)) << i;
        EXPECT_NEAR(ink.center().x(), 100, i >= 8 ? 12 : 3) << i;
        EXPECT_NEAR(ink.center().y(), 100, 20) << i;
        EXPECT_GT(ink.height(), i == 0 ? 20 : 80) << i;
        for (const QImage& other : pictures)
            EXPECT_NE(image, other) << i;
        pictures.push_back(image);
    }
    EXPECT_EQ(strokes, "1111111223222") << "notes; then a dot, a tie between two notes, a 3";
}

class ComposerStaffTest : public testing::Test {
protected:
    ComposerStaffTest() {
        staff.resize(1180, 220);
        QObject::connect(&staff, &ComposerStaff::noteChosen, &staff,
                         [this](int note) { acts.push_back(note); });
        QObject::connect(&staff, &ComposerStaff::noteReleased, &staff,
                         [this](int note) { acts.push_back(-note); });
        staff.show();
        staff.setSource({[this] { return count; },
                         [this](int entry) {
                             asked.insert(entry);
                             return one ? *one : entryAt(entry);
                         }});
        view.setSource({[this] { return count; }, entryAt});
    }

    void setCount(int entries) {
        count = entries;
        staff.refresh();
    }

    QImage picture() { return staff.grab().toImage(); }

    QWidget& part(const char* name) {
        return *staff.findChild<QWidget*>(QString::fromLatin1(name));
    }

    int count = 0;
    std::optional<Entry> one;  ///< in place of every entry
    std::set<int> asked;
    std::vector<int> acts;
    ComposerStaff staff;
    ComposerStaffView view;
};

TEST_F(ComposerStaffTest, EveryNoteIsDrawnAndChosenWhereItsLineIs) {
    const QImage empty = picture();
    const int inColumn = 1100;
    std::vector<int> lines;
    for (int y = 0; y < empty.height() - 2; ++y) {
        if (qGray(empty.pixel(inColumn, y)) < 100)
            lines.push_back(y);
    }
    ASSERT_EQ(lines.size(), 10U) << "two staves";
    const int space = lines[1] - lines[0];
    for (const std::size_t i : {1U, 2U, 3U, 4U, 6U, 7U, 8U, 9U})
        ASSERT_EQ(lines[i] - lines[i - 1], space);
    const QRect above(0, 0, 1180, lines[9] + 3 * space);
    std::set<int> chosen;
    int naturalWidth = 0;
    for (int note = 36; note <= 95; ++note) {
        const bool treble = note >= 60;
        const int position = stepOf(note) - stepOf(treble ? 64 : 43);
        const double y = lines[treble ? 4 : 9] - position * space / 2.0;
        const auto onLine = [&](const QRect& ink) {
            const double head = position < 4 ? ink.bottom() - space / 2.0 : ink.top() + space / 2.0;
            EXPECT_NEAR(head, y, 0.3 * space) << note;
        };
        one = Entry{note, 4};
        setCount(1);
        const QRect ink = difference(empty, picture(), above);
        setCount(0);
        staff.setActiveNote(note);
        const QRect active = difference(empty, picture(), staff.rect());
        staff.setActiveNote(0);
        EXPECT_GT(active.left(), ink.right()) << "in the column";
        if (isSharp(note)) {
            EXPECT_GT(active.width(), 2 * space) << note;
            EXPECT_GT(ink.width(), naturalWidth + space / 2) << note;
            continue;
        }
        naturalWidth = ink.width();
        onLine(ink);
        onLine(active);
        EXPECT_TRUE(part("lblCursore").geometry().adjusted(1, 1, -1, -1).contains(active)) << note;

        sendMouse(staff, QEvent::MouseMove, QPointF(600, y), Qt::NoButton);
        const QRect pointed = difference(empty, picture(), staff.rect());
        EXPECT_TRUE(active.adjusted(-1, -1, 1, 1).contains(pointed)) << note;
        EXPECT_TRUE(pointed.adjusted(-1, -1, 1, 1).contains(active)) << note;
        for (const auto type :
             {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
            sendMouse(staff, type, QPointF(600, y));
        EXPECT_THAT(std::exchange(acts, {}), ElementsAre(note, -note, note, -note));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&staff, &leave);
        EXPECT_EQ(picture(), empty);
    }
}

TEST_F(ComposerStaffTest, MarksNumbersAndTheCurrentEntryShowWhereTheirEntriesAre) {
    setCount(12);
    view.resize(staff.size(), 13, 1);
    view.layOutEntries({});
    const QImage plain = picture();
    const int first = view.entries().front().place.entry;
    for (const auto& entry : view.entries()) {
        const int number = entry.place.entry;
        const QRect cell = view.cellRect(entry).toAlignedRect();
        staff.setPlayRange(number, number + 1);
        const QRect start = difference(plain, picture(), cell.adjusted(0, 0, -cell.width() / 2, 0));
        staff.setPlayRange(number - 1, number);
        const QImage ending = picture();
        const QRect end = difference(plain, ending, cell.adjusted(cell.width() / 2, 0, 0, 0));
        EXPECT_NEAR(start.left(), cell.left() + 1, 1) << number;
        EXPECT_NEAR(end.right(), cell.right() - 1, 1) << number;
        for (const QRect& mark : {start, end}) {
            EXPECT_NEAR(mark.top(), cell.top(), 1);
            EXPECT_NEAR(mark.width(), 6, 1);
            EXPECT_NEAR(mark.height(), 6, 1);
        }
        staff.setPlayRange(-1, -1);
        EXPECT_EQ(picture(), plain);

        staff.setCurrentEntry(number);
        EXPECT_EQ(difference(plain, picture(), staff.rect()), cell) << number;
        staff.setCurrentEntry(std::nullopt);

        // What stands below the lowest note's room is the number.
        QImage blank = plain;
        blank.fill(staff.palette().color(QPalette::Base));
        const QRect below(cell.left() - 4, staff.height() - 17, cell.width() + 4, 14);
        const QRect ink = difference(plain, blank, below & QRect(10, 0, view.entriesRight(), 999));
        const bool numbered = number == 0 || number % 5 == 4;
        EXPECT_EQ(ink.isEmpty(), !numbered) << number;
        const qreal space = view.staves().space();
        const qreal head = view.leftOf(entry) + (entry.engraved.cell.heads.front() + 0.6) * space;
        if (numbered && number > first)
            EXPECT_NEAR(ink.center().x(), head, 3) << number;
    }
}

TEST_F(ComposerStaffTest, WhatIsOnTheScreenIsWhatAFullRepaintShows) {
    std::mt19937 random(8);
    const auto draw = [&](int most) { return static_cast<int>(random() % unsigned(most)); };
    for (int i = 0; i < 100; ++i) {
        const int kind = draw(6);
        switch (kind) {
            case 0:
                setCount(draw(60));
                break;
            case 1:
                staff.setCurrentEntry(draw(60));
                break;
            case 2:
                staff.setCurrentEntry(std::nullopt);
                break;
            case 3:
                staff.setPlayRange(draw(60), draw(60));
                break;
            case 4:
                staff.setActiveNote(30 + draw(70));
                break;
            default:
                sendMouse(staff, QEvent::MouseMove, QPointF(600, draw(220)), Qt::NoButton);
        }
        QEvent repaint(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&staff, &repaint);
        const QImage screen = staff.screen()->grabWindow(staff.winId()).toImage();
        const QImage fresh = picture().convertToFormat(screen.format());
        const QRect differs = difference(screen, fresh, staff.rect());
        ASSERT_TRUE(differs.isEmpty())
            << i << ": " << kind << ", " << differs.left() << ", " << differs.width();
    }
}

TEST_F(ComposerStaffTest, OnlyEntriesAroundTheViewAreAskedFor) {
    setCount(32767);
    EXPECT_EQ(*asked.rbegin(), 32766);
    for (const int current : {0, 1, 2, 16000, 16001, 15000, 32766}) {
        asked.clear();
        staff.setCurrentEntry(current);
        staff.refresh();
        EXPECT_TRUE(asked.contains(current));
        EXPECT_LT(asked.size(), 150U) << current;
    }
    asked.clear();
    staff.grab();
    EXPECT_THAT(asked, IsEmpty()) << "painting again asks for nothing";
}

TEST_F(ComposerStaffTest, APressEndsWithItsReleaseOrWithoutOne) {
    const QPointF middle(600, 110);
    sendMouse(staff, QEvent::MouseButtonPress, middle, Qt::RightButton);
    sendMouse(staff, QEvent::MouseButtonPress, middle);
    sendMouse(staff, QEvent::MouseButtonRelease, QPointF(3, 3), Qt::RightButton);
    EXPECT_EQ(acts.size(), 1U);
    sendMouse(staff, QEvent::MouseButtonRelease, QPointF(3, 3));
    EXPECT_EQ(acts.back(), -acts.front()) << "released elsewhere";
    for (const bool hides : {false, true}) {
        sendMouse(staff, QEvent::MouseButtonPress, middle);
        QEvent blocked(QEvent::WindowBlocked);
        hides ? staff.hide() : (void)QCoreApplication::sendEvent(&staff, &blocked);
        EXPECT_EQ(acts.back(), -acts.front());
        sendMouse(staff, QEvent::MouseButtonRelease, middle);
    }
    EXPECT_EQ(acts.size(), 6U);
}

TEST_F(ComposerStaffTest, ItsDescriptionIsInWords) {
    EXPECT_EQ(staff.accessibleDescription(), QStringLiteral("Nessuna nota attiva; melodia vuota"));
    const std::vector<std::pair<Entry, const char*>> melody{
        {{64, 0.5, 's'}, "Mi 4, 1/8, staccato"},
        {{61, 2.5, 'n'}, "Do diesis 4, 2/4 + 1/8"},
        {{0, 1.5, 'p'}, "pausa, 1/4 col punto"},
        {{60, 0.1, 'n'}, "Do centrale, durata 0,1"},
        {{36, 1.0 / 3, 'n'}, "Do 2, terzina di 1/8"}};
    staff.setActiveNote(61);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&staff)->childCount(), 2) << "note and sharp";
    for (const auto& [entry, words] : melody) {
        one = entry;
        setCount(3);
        for (const int current : {2, 1, 0}) {
            staff.setCurrentEntry(current);
            EXPECT_EQ(staff.accessibleDescription(),
                      QStringLiteral("Nota attiva Do diesis 4; voce %1: ").arg(current + 1) +
                          QString::fromUtf8(words));
        }
    }
    setCount(2);
    staff.setCurrentEntry(std::nullopt);
    EXPECT_TRUE(staff.accessibleDescription().contains(QStringLiteral("voce 2:")));
}

}  // namespace
