#include "reading/answer_keys.h"
#include "reading/difficulty.h"
#include "reading/ruler.h"
#include "reading/staff_layout.h"
#include "reading/staff_step.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <map>
#include <set>

TEST(Difficulty, RangesAreThoseThatTheirNamesTell) {
    std::optional<difficulty::StepRange> last;
    for (const auto& [text, range] : difficulty::kItems) {
        const QString name = QString::fromUtf8(text).toUpper();
        ASSERT_EQ(range.has_value(), !name.startsWith(u'-'));
        if (range) {
            const auto note = [](int step) {
                return pitch::answerName(staff_step::degree(step), pitch::AnswerNames::Syllables);
            };
            EXPECT_TRUE(name.endsWith(' ' + note(range->lower) + " - " + note(range->upper)))
                << text;
            EXPECT_TRUE(name.startsWith(staff_step::isBass(range->upper)     ? "CHIAVE DI FA"
                                        : staff_step::isTreble(range->lower) ? "CHIAVE DI SOL"
                                                                             : "5 OTTAVE"));
            // Each of a clef holds the one before and is at most an octave larger.
            const auto [low, high] =
                last.value_or(difficulty::StepRange{range->upper, range->upper});
            EXPECT_TRUE(range->lower <= low && range->upper >= high) << text;
            EXPECT_LE((range->upper - range->lower) - (high - low), last ? 7 : 50) << text;
        }
        last = range;
    }
}

TEST(StaffStep, PlacesInWords) {
    const std::pair<int, const char*> places[] = {
        {46, "Chiave di Sol, prima linea"},
        {49, "Chiave di Sol, secondo spazio"},
        {54, "Chiave di Sol, quinta linea"},
        {55, "Chiave di Sol, sopra la quinta linea"},
        {45, "Chiave di Sol, sotto la prima linea"},
        {43, "Chiave di Sol, sotto il primo taglio addizionale in basso"},
        {64, "Chiave di Sol, quinto taglio addizionale in alto"},
        {28, "Chiave di Fa, primo taglio addizionale in alto"},
        {11, "Chiave di Fa, sotto il terzo taglio addizionale in basso"},
        {31, "Chiave di Fa, sopra il secondo taglio addizionale in alto"},
        {35, ""}};
    for (const auto& [step, words] : places)
        EXPECT_EQ(staff_step::placeInWords(step), QString::fromUtf8(words)) << step;
}

TEST(Ruler, BandsOfWholePixelsFollowTheDrawnStaff) {
    constexpr int kPixel = 15;  // twips of the screens that the ruler was drawn for
    ruler::Band above{65, 45, 90};
    int place = -1;
    for (int step = 64; step >= 11; --step) {
        const auto band = ruler::bandOf(step);
        ASSERT_EQ(band.has_value(), step < 32 || step > 39) << step;
        if (!band)
            continue;
        EXPECT_EQ(band->top % kPixel + band->bottom % kPixel, 0) << step;
        EXPECT_EQ(ruler::stepAt(band->top), step);
        EXPECT_EQ(ruler::stepAt(band->bottom), step);
        EXPECT_FALSE(ruler::stepAt(band->top - 1) || ruler::stepAt(band->bottom + 1)) << step;
        EXPECT_TRUE(band->bottom - band->top >= 45 && band->bottom - band->top <= 105) << step;
        const int steps = above.step - step;
        EXPECT_NEAR(band->centre() - above.centre(), steps == 1 ? 98 : 430, 32) << step;
        if (place > 0) {
            EXPECT_EQ(staff_layout::placeOf(step) - place, steps == 1 ? 1 : staff_layout::kGap);
        }
        place = staff_layout::placeOf(step);
        EXPECT_NEAR(staff_layout::twipsAt(place), band->centre(), 1e-9) << step;
        const double between = staff_layout::twipsAt(place - 0.5);
        EXPECT_NEAR(between,
                    band->centre() - (band->centre() - above.centre()) / (steps == 1 ? 2 : 10), 5);
        above = *band;
    }
}

TEST(AnswerKeys, ArePolledWithOrWithoutNumLockAndTypedInEitherCase) {
    const std::map<int, int> cursors{{1, Qt::Key_End},  {2, Qt::Key_Down},  {3, Qt::Key_PageDown},
                                     {4, Qt::Key_Left}, {6, Qt::Key_Right}, {7, Qt::Key_Home},
                                     {8, Qt::Key_Up}};
    std::set<int> letters, keypad;
    for (const auto& keys : answer_keys::kPolled) {
        for (const KeyCode key : keys) {
            if (key >= letterKey('A')) {
                letters.insert(key - letterKey('A') + Qt::Key_A);
            } else {
                keypad.insert(key - kKeyNumpad0 + Qt::Key_0);
                keypad.insert(cursors.at(key - kKeyNumpad0));
            }
        }
    }
    EXPECT_EQ(letters.size() + keypad.size(), 4U + 2 * 7U);
    for (int key = 0; key < 0x200; ++key) {
        for (const int qtKey : {key, Qt::Key_Escape + key}) {
            EXPECT_EQ(answer_keys::isPolled(qtKey, false), letters.count(qtKey) > 0) << qtKey;
            EXPECT_EQ(answer_keys::isPolled(qtKey, true),
                      letters.count(qtKey) + keypad.count(qtKey) > 0)
                << qtKey;
        }
        const QString typed = QStringLiteral("D1F2G3H");
        const auto degree = static_cast<int>(typed.indexOf(QChar(key).toUpper()));
        EXPECT_EQ(answer_keys::degreeOf(char32_t(key)).value_or(-1), key > 127 ? -1 : degree)
            << key;
    }
}
