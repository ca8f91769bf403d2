#include "composer/staff/composer_staff.h"

#include "composer/notation/entry_in_words.h"
#include "support/window_driver.h"
#include "widgets/ink.h"
#include "widgets/music_font.h"

#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <gmock/gmock.h>

#include <functional>
#include <random>

namespace {

using notation::Staff;
using staff_entry::Entry;
using staff_entry::Figure;
using testing::ElementsAre;

/// The steps of the white keys from the lowest C on, and that a black key stands on the one below.
int stepOf(int note) {
    constexpr std::array kSteps{0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6};
    return note / 12 * 7 + kSteps[static_cast<std::size_t>(note % 12)];
}
bool isSharp(int note) {
    return note > 36 && stepOf(note) == stepOf(note - 1);
}

/// A melody of every kind of entry.
Entry entryAt(int i) {
    return i % 9 == 3 ? Entry{0, 1.0 / 3, 'p'}
                      : Entry{36 + i * 7 % 60, 0.0625 * (1 + i * 5 % 40), "nsta"[i % 4]};
}

/// An entry by itself, large and without lines.
QImage engraved(const Entry& entry) {
    constexpr int kSpace = 16;
    const notation::System system = notation::layOutEntry(entry, Staff::Treble);
    const double left = 3;
    QImage image(qCeil((left + system.end + 2) * kSpace), qCeil(system.height() * kSpace / 2),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter into(&image);
    into.setRenderHint(QPainter::Antialiasing);
    score_painter::drawSymbols(into, MusicFont::shared(), system,
                               {left * kSpace, 0, 99 * kSpace, kSpace});
    return image;
}

/// How many strokes there are that do not touch each other. The picture is used up.
int strokesIn(QImage image) {
    auto* pixels = reinterpret_cast<QRgb*>(image.bits());
    const int width = image.width();
    const int end = width * image.height();
    const auto inked = [&](int i) { return i >= 0 && i < end && qAlpha(pixels[i]) > 90; };
    int count = 0;
    for (int start = 0; start < end; ++start) {
        count += inked(start) ? 1 : 0;
        for (std::vector<int> open{start}; !open.empty();) {
            const int i = open.back();
            open.pop_back();
            if (!inked(i))
                continue;
            pixels[i] = 0;
            open.insert(open.end(), {i - 1, i + 1, i - width, i + width});
        }
    }
    return count;
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
        const QImage image = engraved(entry);
        QImage blank(image.size(), image.format());
        blank.fill(0);
        const QRect ink = changeBetween(image, blank, -1);
        const auto what = [&] { return staff_entry::inWords(entry).toStdString(); };
        EXPECT_EQ(strokesIn(image), strokes) << what();
        EXPECT_TRUE(image.rect().adjusted(1, 1, -1, -1).contains(ink)) << what();
    }
}

void click(QWidget& widget, const QPointF& place) {
    sendMouse(widget, QEvent::MouseButtonPress, place);
    sendMouse(widget, QEvent::MouseButtonRelease, place);
}

class ComposerStaffTest : public testing::Test {
protected:
    ComposerStaffTest() {
        staff.resize(1180, 420);
        QObject::connect(&staff, &ComposerStaff::noteChosen, &staff,
                         [this](int note) { acts.push_back(note); });
        QObject::connect(&staff, &ComposerStaff::noteReleased, &staff,
                         [this](int note) { acts.push_back(-note); });
        QObject::connect(&staff, &ComposerStaff::entryChosen, &staff,
                         [this](int entry) { chosen.push_back(entry); });
        staff.show();
        staff.setSource(
            {[this] { return count; }, [this](int entry) { return one ? *one : entryAt(entry); }});
    }

    void setCount(int entries) {
        count = entries;
        staff.changedFrom(0);
    }

    void setActiveNote(int note) { staff.setPreview({{note, 1, 'n'}, false, false}); }

    QImage picture() { return staff.grab().toImage(); }

    int count = 0;
    std::optional<Entry> one;  ///< in place of every entry
    std::vector<int> acts;
    std::vector<int> chosen;
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
    int naturalWidth = 0;
    for (int note = 36; note <= 95; ++note) {
        const bool treble = note >= 60;
        // Mi is on the lowest line, Sol in the bass.
        const int position = stepOf(note) - stepOf(treble ? 64 : 43);
        const double y = lines[treble ? 4 : 9] - position * space / 2.0;
        // What stands further down is the entry's number.
        const int under = treble ? 2 : std::max(2, 2 - position);
        const QRect above(0, 0, 1180, lines[9] + under * space / 2);
        one = Entry{note, 4};
        setCount(1);
        const QRect ink = changeBetween(empty.copy(above), picture().copy(above), -1);
        setCount(0);
        setActiveNote(note);
        const QRect active = changeBetween(empty, picture(), -1);
        setActiveNote(0);
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
        const QRect pointed = changeBetween(empty, picture(), -1);
        EXPECT_NEAR(pointed.top(), active.top(), 1) << note;
        EXPECT_NEAR(pointed.bottom(), active.bottom(), 1) << note;
        EXPECT_NEAR(pointed.center().x(), 600, 1) << note;
        for (const auto type :
             {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
            sendMouse(staff, type, place);
        EXPECT_THAT(std::exchange(acts, {}), ElementsAre(note, -note, note, -note));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&staff, &leave);
        EXPECT_EQ(picture(), empty);
    }
    staff.setFont(QFont(staff.font().family(), 30));
    EXPECT_NE(picture(), empty) << "the staves grow with the type";
}

TEST_F(ComposerStaffTest, WhatIsOnTheScreenIsWhatAFullRepaintShows) {
    std::mt19937 random(8);
    const auto draw = [&](int most) { return static_cast<int>(random() % unsigned(most)); };
    const std::vector<std::function<void()>> kinds{
        [&] { setCount(draw(60)); },
        [&] { staff.setCurrentEntry(draw(60)); },
        [&] { staff.setCurrentEntry(std::nullopt); },
        [&] { staff.setPlayRange(draw(60), draw(60)); },
        [&] { setActiveNote(30 + draw(70)); },
        [&] { sendMouse(staff, QEvent::MouseMove, QPointF(600, draw(220)), Qt::NoButton); }};
    for (int i = 0; i < 100; ++i) {
        const auto kind = static_cast<std::size_t>(draw(6));
        kinds[kind]();
        ASSERT_EQ(changeBetween(onScreen(staff), picture(), -1), QRect()) << i << ": " << kind;
    }
}

TEST_F(ComposerStaffTest, EveryEntryComesIntoViewAndIsChosenByAClick) {
    one = Entry{71, 1, 'n'};
    setCount(300);
    auto& bar = *staff.findChild<QScrollBar*>();
    EXPECT_EQ(bar.value(), 0) << "a new melody is shown from its beginning";
    for (const int entry : {299, 0, 30, 31, 150, 299, 70}) {
        staff.setCurrentEntry(entry);
        const QImage with = picture();
        staff.setCurrentEntry(std::nullopt);
        const QRect marked = changeBetween(with, picture(), -1);
        EXPECT_FALSE(marked.isEmpty()) << entry;
        EXPECT_TRUE(staff.rect().adjusted(0, 4, 0, -4).contains(marked)) << entry;
        for (int y = marked.top(); y < marked.bottom() && chosen.empty(); y += 2)
            click(staff, QPointF(marked.left() + 12, y));
        EXPECT_THAT(std::exchange(chosen, {}), ElementsAre(entry));
        setActiveNote(60);
        EXPECT_EQ(bar.value(), bar.maximum()) << "the note that would be written is at the end";
        setActiveNote(0);
    }
    for (const bool forward : {false, true}) {
        for (int i = 0; i < 50; ++i)
            staff.scrollPage(forward);
        EXPECT_EQ(bar.value(), forward ? bar.maximum() : 0);
    }
    QWheelEvent wheel({600, 100}, {600, 100}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&staff, &wheel);
    EXPECT_LT(bar.value(), bar.maximum());
    const int before = bar.value();
    sendMouse(staff, QEvent::MouseMove, {5, 100}, Qt::NoButton);
    EXPECT_EQ(staff.cursor().shape(), Qt::OpenHandCursor);
    sendMouse(staff, QEvent::MouseButtonPress, {5, 100});
    sendMouse(staff, QEvent::MouseMove, {5, 130});
    sendMouse(staff, QEvent::MouseButtonRelease, {5, 130});
    EXPECT_EQ(bar.value(), before - 30) << "dragged beside the staves";
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
