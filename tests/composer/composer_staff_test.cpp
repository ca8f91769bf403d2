#include "composer/staff/composer_staff.h"

#include "core/pitch.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>

#include <gmock/gmock.h>

#include <cmath>
#include <random>
#include <set>

namespace {

using staff_entry::Entry;
using staff_entry::Value;
using testing::IsEmpty;

namespace layout = composer_staff_layout;

/// "2 8": a half tied to an eighth; "4." is dotted, "3:8" a triplet, "~" stands before a figure
/// that is not exact.
std::string written(const staff_entry::Figure& figure) {
    std::string text = figure.exact ? "" : "~";
    text += figure.triplet ? "3:" : "";
    for (const Value& value : figure.values) {
        text += &value == &figure.values.front() ? "" : " ";
        text += std::to_string(1 << static_cast<int>(value.duration));
        text += value.dots > 0 ? "." : "";
    }
    return text;
}

TEST(StaffEntry, DurationsAreEngravedAsAMusicianWritesThem) {
    const std::vector<std::pair<double, const char*>> cases{
        {4, "1"},
        {6, "1."},
        {2, "2"},
        {3, "2."},
        {1, "4"},
        {1.5, "4."},
        {0.5, "8"},
        {0.75, "8."},
        {0.25, "16"},
        {0.375, "16."},
        {0.125, "32"},
        {0.1875, "32."},
        {0.0625, "64"},
        {0.09375, "64."},
        {2.5, "2 8"},
        {5, "1 4"},
        {8, "1 1"},
        {1.25, "4 16"},
        {0.15625, "64 64."},
        {24, "1 1 1 1 1 1"},
        {8.0 / 3, "3:1"},
        {0.666666666666667, "3:4"},
        {1.0 / 3, "3:8"},
        {1.0 / 6, "3:16"},
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
}

TEST(ComposerStaffLayout, EveryNaturalNoteHasAPlaceOfItsOwn) {
    double above = layout::kHeight;
    for (int note = pitch::kLowestNote; note <= pitch::kHighestNote; ++note) {
        const layout::Head head = layout::headOf(note);
        const double place = layout::placeOf(head);
        EXPECT_EQ(head.system == layout::System::Treble, note >= 60) << note;
        if (head.sharp) {
            EXPECT_EQ(place, layout::placeOf(layout::headOf(note - 1))) << note;
            continue;
        }
        EXPECT_LT(place, above) << note;
        above = place;
        for (const double off : {-0.45, 0.0, 0.45})
            EXPECT_EQ(layout::noteAt(place + off), note);
    }
    EXPECT_EQ(layout::headOf(60).position, -2);
    EXPECT_EQ(layout::headOf(53).position, 6) << "the Fa of the Fa clef";
    EXPECT_EQ(layout::headOf(67).position, 2) << "the Sol of the Sol clef";
    EXPECT_EQ(layout::noteAt(-100), 95);
    EXPECT_EQ(layout::noteAt(1000), 36);
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
    EXPECT_DOUBLE_EQ(shown.back().left + shown.back().width, kRoom);

    int current = 0;
    for (int i = 0; i < 2000; ++i) {
        current = i % 7 == 0 ? static_cast<int>(random() % kCount)
                             : std::clamp(current + (i / 400 % 2 == 0 ? 1 : -1), 0, kCount - 1);
        const bool inView = current >= shown.front().entry && current <= shown.back().entry;
        const int first = shown.front().entry;
        view = layout::following(view, shown, current);
        asked = 0;
        shown = layout::arrange(view, kCount, kRoom, widthOf);
        ASSERT_LE(asked, 22);
        ASSERT_TRUE(current >= shown.front().entry && current <= shown.back().entry);
        if (inView) {
            ASSERT_EQ(shown.front().entry, first) << "a page turned without need";
        }
        double left = shown.front().left;
        for (const auto& cell : shown) {
            ASSERT_NEAR(cell.left, left, 1e-9);
            left += cell.width;
        }
        ASSERT_TRUE(shown.front().left >= 0 && left <= kRoom + 1e-9);
    }
    shown = layout::arrange({100, true}, kCount, kRoom, widthOf);
    view = layout::following({100, true}, shown, shown.back().entry + 1);
    const int turned = shown.back().entry + 1;
    shown = layout::arrange(view, kCount, kRoom, widthOf);
    EXPECT_EQ(shown.front().entry, turned) << "a turned page shows what comes next";
    EXPECT_EQ(shown.front().left, 0);
    EXPECT_EQ(layout::arrange({kCount - 1, false}, kCount, kRoom, widthOf).size(),
              layout::arrange({kCount - 1, true}, kCount, kRoom, widthOf).size())
        << "the last page is full";
    EXPECT_THAT(layout::arrange({0, true}, 0, kRoom, widthOf), IsEmpty());
    EXPECT_EQ(layout::arrange({9, false}, 3, 1, widthOf).size(), 1U) << "wider than the room";
    EXPECT_EQ(layout::arrange({2, true}, 3, kRoom, widthOf).front().left, 0) << "a short melody";
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
    }

    void setMelody(int count) {
        staff.setSource({[count] { return count; },
                         [this](int entry) {
                             asked.insert(entry);
                             return entryAt(entry);
                         }});
    }

    static Entry entryAt(int i) {
        return i % 9 == 3 ? Entry{0, 1.0 / 3, 'p'}
                          : Entry{36 + i * 7 % 60, 0.0625 * (1 + i * 5 % 40), "nsta"[i % 4]};
    }

    void mouse(QEvent::Type type, qreal y) {
        const QPointF at(600, y);
        QMouseEvent event(type, at, staff.mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&staff, &event);
    }

    QWidget& part(const char* name) {
        return *staff.findChild<QWidget*>(QString::fromLatin1(name));
    }

    std::set<int> asked;
    std::vector<int> acts;
    ComposerStaff staff;
};

TEST_F(ComposerStaffTest, OnlyEntriesAroundTheViewAreAskedFor) {
    setMelody(32767);
    EXPECT_EQ(*asked.rbegin(), 32766);
    for (const int current : {0, 1, 2, 16000, 16001, 15000, 32766}) {
        asked.clear();
        staff.setCurrentEntry(current);
        staff.refresh();
        staff.grab();
        EXPECT_TRUE(asked.contains(current));
        EXPECT_LT(asked.size(), 150U) << current;
    }
    asked.clear();
    staff.grab();
    EXPECT_THAT(asked, IsEmpty()) << "painting again asks for nothing";
}

TEST_F(ComposerStaffTest, TheCurrentEntryIsHighlighted) {
    setMelody(300);
    for (const int current : {299, 40, 41, 7}) {
        staff.setCurrentEntry(std::nullopt);
        staff.setCurrentEntry(current);
        const QImage row = staff.grab(QRect(60, staff.height() - 5, 1060, 1)).toImage();
        int tinted = 0;
        for (int x = 0; x < row.width(); ++x)
            tinted += row.pixelColor(x, 0) != staff.palette().color(QPalette::Base) ? 1 : 0;
        tinted = qRound(tinted / row.devicePixelRatio());
        EXPECT_GT(tinted, 10) << current;
        EXPECT_LT(tinted, 200) << current;
    }
}

TEST_F(ComposerStaffTest, AClickChoosesTheNaturalNoteThatIsDrawnThere) {
    std::set<int> chosen;
    int last = 96;
    for (int y = 0; y < staff.height(); ++y) {
        acts.clear();
        mouse(y % 2 == 0 ? QEvent::MouseButtonPress : QEvent::MouseButtonDblClick, y);
        mouse(QEvent::MouseButtonRelease, 3);
        ASSERT_EQ(acts.size(), 2U);
        const int note = acts[0];
        ASSERT_EQ(acts[1], -note) << "released elsewhere";
        ASSERT_LE(note, last);
        last = note;
        const bool bandIsOneStep = note != 95 && note != 59;
        if (chosen.insert(note).second && bandIsOneStep) {
            staff.setActiveNote(note);
            EXPECT_TRUE(part("lblCursore").geometry().contains(part("lblCursore").x() + 1, y))
                << note;
        }
    }
    EXPECT_EQ(chosen.size(), 35U);
    EXPECT_TRUE(std::none_of(chosen.begin(), chosen.end(),
                             [](int note) { return layout::headOf(note).sharp; }));
}

TEST_F(ComposerStaffTest, TheActiveNoteShowsAtTheCursor) {
    EXPECT_EQ(staff.objectName(), QStringLiteral("Regolo"));
    for (int note = 35; note <= 96; ++note) {
        staff.setActiveNote(note);
        const bool playable = pitch::isPlayable(note);
        const bool sharp = playable && !pitch::NoteNumberToStep(note);
        EXPECT_EQ(part("lblCursore").isVisible(), playable) << note;
        EXPECT_EQ(part("lblAccidente").isVisible(), sharp) << note;
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&staff)->childCount(), playable + sharp)
            << "a screen reader is offered what is on show";
        if (playable) {
            EXPECT_TRUE(staff.rect().contains(part("lblCursore").geometry())) << note;
        }
    }
}

TEST_F(ComposerStaffTest, ItsDescriptionIsInWords) {
    EXPECT_EQ(staff.accessibleName(), QStringLiteral("Pentagramma della melodia"));
    EXPECT_EQ(staff.accessibleDescription(), QStringLiteral("Nessuna nota attiva; melodia vuota"));
    const std::vector<Entry> melody{
        {64, 0.5, 's'}, {61, 2.5, 'n'}, {0, 1.5, 'p'}, {60, 0.1, 'n'}, {36, 1.0 / 3, 'n'}};
    staff.setSource(
        {[] { return 5; }, [&](int entry) { return melody[static_cast<std::size_t>(entry)]; }});
    staff.setActiveNote(61);
    const std::vector<const char*> expected{
        "voce 1: Mi 4, 1/8, staccato", "voce 2: Do diesis 4, 2/4 + 1/8",
        "voce 3: pausa, 1/4 col punto", "voce 4: Do centrale, durata 0,1",
        "voce 5: Do 2, terzina di 1/8"};
    for (int i = 0; i < 5; ++i) {
        staff.setCurrentEntry(i);
        EXPECT_EQ(staff.accessibleDescription(),
                  QStringLiteral("Nota attiva Do diesis 4; ") +
                      QString::fromLatin1(expected[static_cast<std::size_t>(i)]));
    }
}

}  // namespace
