#include "composer/staff/composer_staff.h"

#include "composer/ink.h"
#include "support/window_driver.h"
#include "widgets/music_font.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

#include <gmock/gmock.h>

#include <functional>
#include <random>

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
        {3, "2."},        {1.25, "4 16"},   {5, "1 4"},          {8, "1 1"},
        {0.1875, "32."},  {2.5, "2 8"},     {24, "1 1 1 1 1 1"}, {0.15625, "64 64."},
        {8.0 / 3, "3:1"}, {1.0 / 3, "3:8"}, {5.0 / 3, "3:2 8"},  {0.1, "~64."},
        {0, "~64"},       {1e300, "~1."}};
    for (const auto& [duration, figure] : cases)
        EXPECT_EQ(written(staff_entry::figureOf(duration)), figure) << duration;
    EXPECT_EQ(staff_entry::inWords({60, 0.1, 'n'}), QStringLiteral("Do centrale, durata 0,1"));
    for (int i = 1; i <= 37 * 96; ++i) {
        const double duration = i / 96.0;
        const Figure figure = staff_entry::figureOf(duration);
        ASSERT_TRUE(!figure.values.empty() && figure.values.size() <= 6) << duration;
        ASSERT_EQ(figure.triplet, figure.exact && i % 3 != 0) << duration;
        if (figure.exact)
            ASSERT_NEAR(quartersOf(figure), duration, 1e-9) << written(figure);
        else
            ASSERT_TRUE(i % 3 != 0 || duration > 4 || i == 3) << duration;
    }
}

TEST(ComposerStaffLayout, TheCurrentEntryIsInViewHoweverItMoves) {
    constexpr double kRoom = 40;
    constexpr int kCount = 500;
    int asked = 0;
    const auto arranged = [&asked](layout::View view, int count) {
        asked = 0;
        return layout::arrange(view, count, kRoom, [&asked](int entry) {
            ++asked;
            return 2.1 + entry * 7 % 5;
        });
    };
    std::mt19937 random(4);
    layout::View view{kCount - 1, true};
    auto shown = arranged(view, kCount);
    EXPECT_EQ(shown.back().entry, kCount - 1);
    int current = 0;
    for (int i = 0; i < 2000; ++i) {
        current = i % 7 == 0 ? static_cast<int>(random() % kCount)
                             : std::clamp(current + (i / 400 % 2 == 0 ? 1 : -1), 0, kCount - 1);
        const bool back = current < shown.front().entry;
        const bool ahead = current > shown.back().entry;
        const int first = shown.front().entry;
        view = layout::following(view, shown, current);
        shown = arranged(view, kCount);
        ASSERT_LE(asked, 22) << "whatever the melody's length";
        const bool begins = shown.front().entry == 0;
        const bool ends = shown.back().entry == kCount - 1;
        ASSERT_TRUE(back ? begins || shown.back().entry == current
                         : shown.front().entry == (ahead ? current : first) || (ahead && ends))
            << "a page turns where it has to, and shows what comes next";
        double left = shown.front().left;
        for (const auto& cell : shown) {
            ASSERT_NEAR(cell.left, left, 1e-9);
            left += cell.width;
        }
        ASSERT_TRUE(shown.front().left == 0 || (!begins && left > kRoom - 1e-9));
        ASSERT_TRUE(left > kRoom - 6.1 || ends) << "the room is full";
    }
    EXPECT_THAT(arranged({0, true}, 0), IsEmpty());
}

/// A melody of every kind of entry.
Entry entryAt(int i) {
    return i % 9 == 3 ? Entry{0, 1.0 / 3, 'p'}
                      : Entry{36 + i * 7 % 60, 0.0625 * (1 + i * 5 % 40), "nsta"[i % 4]};
}

TEST(ComposerStaffView, StavesEntriesAndColumnShareTheRoom) {
    std::mt19937 random(9);
    for (int i = 0; i < 150; ++i) {
        const auto draw = [&](int most) { return static_cast<int>(random() % unsigned(most)); };
        const QSizeF size(420 + draw(2180), 160 + draw(540));
        const int count = 1 + draw(39);
        ComposerStaffView view;
        view.setSource({[=] { return count; }, entryAt});
        view.resize(size, 11, 1);
        const int current = draw(count);
        view.layOutEntries(current);
        const auto& [treble, bass] = view.staves();
        const double space = treble.space;
        // 46 half spaces from the highest sign to the lowest note, 24 spaces for the widest entry.
        const bool higher = 23 * (space + 1) <= size.height() - 18 - 11;
        EXPECT_FALSE(higher && 24 * (space + 1) <= size.width() - 18) << "as large as fits";
        EXPECT_NEAR(treble.y(22) - 9, size.height() - 9 - 11 - bass.y(-8), 1e-9) << "centred";
        EXPECT_DOUBLE_EQ(bass.bottomLine - treble.bottomLine, 8 * space);
        EXPECT_DOUBLE_EQ(view.column().right(), size.width() - 9);

        const auto& shown = view.entries();
        EXPECT_GE(view.leftOf(shown.front()), treble.left + 4 * space) << "the clefs";
        const QRectF last = view.cellRect(shown.back());
        EXPECT_TRUE(shown.size() == 1 || last.right() <= view.entriesRight() + 1e-6);
        for (const auto& entry : shown) {
            EXPECT_EQ(view.find(entry.place.entry), &entry);
            const QRectF cell = view.cellRect(entry);
            EXPECT_TRUE(cell.top() >= 1 && cell.bottom() <= size.height() - 1);
        }
        EXPECT_TRUE(view.find(current));
        view.layOutEntries(count);
        EXPECT_EQ(view.entries().back().place.entry, count - 1) << "no current entry: the end";
    }
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

class ComposerStaffTest : public testing::Test {
protected:
    ComposerStaffTest() {
        staff.resize(1180, 220);
        QObject::connect(&staff, &ComposerStaff::noteChosen, &staff,
                         [this](int note) { acts.push_back(note); });
        QObject::connect(&staff, &ComposerStaff::noteReleased, &staff,
                         [this](int note) { acts.push_back(-note); });
        staff.show();
        staff.setSource(
            {[this] { return count; }, [this](int entry) { return one ? *one : entryAt(entry); }});
    }

    void setCount(int entries) {
        count = entries;
        staff.refresh();
    }

    QImage picture() { return staff.grab().toImage(); }

    int count = 0;
    std::optional<Entry> one;  ///< in place of every entry
    std::vector<int> acts;
    ComposerStaff staff;
};

TEST_F(ComposerStaffTest, EveryNoteIsDrawnAndChosenWhereItsLineIs) {
    const QImage empty = picture();
    std::vector<int> lines;
    for (int y = 0; y < empty.height() - 2; ++y) {
        if (qGray(empty.pixel(1100, y)) < 100)
            lines.push_back(y);
    }
    ASSERT_EQ(lines.size(), 10U) << "two staves";
    const int space = lines[1] - lines[0];
    const QRect above(0, 0, 1180, lines[9] + 3 * space);
    int naturalWidth = 0;
    for (int note = 36; note <= 95; ++note) {
        const bool treble = note >= 60;
        // Mi is on the lowest line, Sol in the bass.
        const int position = stepOf(note) - stepOf(treble ? 64 : 43);
        const double y = lines[treble ? 4 : 9] - position * space / 2.0;
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
        for (const QRect& head : {ink, active}) {
            const double middle =
                position < 4 ? head.bottom() - space / 2.0 : head.top() + space / 2.0;
            EXPECT_NEAR(middle, y, 0.3 * space) << note;
        }
        EXPECT_TRUE(staff.findChild<QWidget*>("lblCursore")
                        ->geometry()
                        .adjusted(1, 1, -1, -1)
                        .contains(active))
            << note;
        const QPointF place(600, y + 0.2 * space);
        sendMouse(staff, QEvent::MouseMove, place, Qt::NoButton);
        const QRect pointed = difference(empty, picture(), staff.rect());
        EXPECT_TRUE(active.adjusted(-1, -1, 1, 1).contains(pointed)) << note;
        for (const auto type :
             {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
            sendMouse(staff, type, place);
        EXPECT_THAT(std::exchange(acts, {}), ElementsAre(note, -note, note, -note));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&staff, &leave);
        EXPECT_EQ(picture(), empty);
    }
}

TEST_F(ComposerStaffTest, MarksNumbersAndTheCurrentEntryShowWhereTheirEntriesAre) {
    setCount(12);
    ComposerStaffView view;
    view.setSource({[] { return 12; }, entryAt});
    view.resize(staff.size(), 13, 1);
    view.layOutEntries({});
    const QImage plain = picture();
    QImage blank = plain;
    blank.fill(staff.palette().color(QPalette::Base));
    for (const auto& entry : view.entries()) {
        const int number = entry.place.entry;
        const QRect cell = view.cellRect(entry).toAlignedRect();
        const QRect right = cell.adjusted(cell.width() / 2, 0, 0, 0);
        staff.setPlayRange(number, number + 1);
        const QRect start = difference(plain, picture(), cell.adjusted(0, 0, -right.width(), 0));
        staff.setPlayRange(number - 1, number);
        const QRect end = difference(plain, picture(), right);
        EXPECT_NEAR(start.left(), cell.left() + 1, 1) << number;
        EXPECT_NEAR(end.right(), cell.right() - 1, 1) << number;
        staff.setPlayRange(-1, -1);
        staff.setCurrentEntry(number);
        EXPECT_EQ(difference(plain, picture(), staff.rect()), cell) << number;
        staff.setCurrentEntry(std::nullopt);
        // What stands below the lowest note's room is the number.
        const QRect below(cell.left() - 4, staff.height() - 17, cell.width() + 4, 14);
        const QRect ink = difference(plain, blank, below & QRect(10, 0, view.entriesRight(), 999));
        EXPECT_EQ(ink.isEmpty(), number != 0 && number % 5 != 4) << number;
    }
}

TEST_F(ComposerStaffTest, WhatIsOnTheScreenIsWhatAFullRepaintShows) {
    std::mt19937 random(8);
    const auto draw = [&](int most) { return static_cast<int>(random() % unsigned(most)); };
    const std::vector<std::function<void()>> kinds{
        [&] { setCount(draw(60)); },
        [&] { staff.setCurrentEntry(draw(60)); },
        [&] { staff.setCurrentEntry(std::nullopt); },
        [&] { staff.setPlayRange(draw(60), draw(60)); },
        [&] { staff.setActiveNote(30 + draw(70)); },
        [&] { sendMouse(staff, QEvent::MouseMove, QPointF(600, draw(220)), Qt::NoButton); }};
    for (int i = 0; i < 100; ++i) {
        const auto kind = static_cast<std::size_t>(draw(6));
        kinds[kind]();
        QEvent repaint(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&staff, &repaint);
        const QImage screen = staff.screen()->grabWindow(staff.winId()).toImage();
        const QImage fresh = picture().convertToFormat(screen.format());
        ASSERT_EQ(difference(screen, fresh, staff.rect()), QRect()) << i << ": " << kind;
    }
}

TEST_F(ComposerStaffTest, APressEndsWithItsReleaseOrWithoutOne) {
    const QPointF middle(600, 110);
    sendMouse(staff, QEvent::MouseButtonPress, middle, Qt::RightButton);
    sendMouse(staff, QEvent::MouseButtonPress, middle);
    sendMouse(staff, QEvent::MouseButtonRelease, QPointF(3, 3), Qt::RightButton);
    EXPECT_EQ(acts.size(), 1U);
    sendMouse(staff, QEvent::MouseButtonRelease, QPointF(3, 3));
    sendMouse(staff, QEvent::MouseButtonPress, middle);
    QEvent blocked(QEvent::WindowBlocked);
    QCoreApplication::sendEvent(&staff, &blocked);
    sendMouse(staff, QEvent::MouseButtonPress, middle);
    staff.hide();
    sendMouse(staff, QEvent::MouseButtonRelease, middle);
    const int note = acts.front();
    EXPECT_THAT(acts, ElementsAre(note, -note, note, -note, note, -note));
}

}  // namespace
