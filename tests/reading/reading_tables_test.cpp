#include "reading/answer_keys.h"
#include "reading/difficulty.h"
#include "reading/staff_step.h"

#include <QStringList>

#include <gtest/gtest.h>

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
            // Each of a clef holds the one before.
            EXPECT_TRUE(!last || (range->lower <= last->lower && range->upper >= last->upper));
        }
        last = range;
    }
}

TEST(StaffStep, PlacesInWords) {
    const std::pair<int, const char*> places[] = {
        {49, "Chiave di Sol, secondo spazio"},
        {55, "Chiave di Sol, sopra la quinta linea"},
        {45, "Chiave di Sol, sotto la prima linea"},
        {64, "Chiave di Sol, quinto taglio addizionale in alto"},
        {11, "Chiave di Fa, sotto il terzo taglio addizionale in basso"},
        {31, "Chiave di Fa, sopra il secondo taglio addizionale in alto"},
        {35, ""}};
    for (const auto& [step, words] : places)
        EXPECT_EQ(staff_step::placeInWords(step), QString::fromUtf8(words)) << step;
}

TEST(AnswerKeys, ArePolledWithOrWithoutNumLockAndTypedInEitherCase) {
    const std::set<int> letters{'D', 'F', 'G', 'H'};
    const std::set<int> keypad{
        '1',          '2',           '3',          '4',          '6',
        '7',          '8',           Qt::Key_End,  Qt::Key_Down, Qt::Key_PageDown,
        Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_Up};
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
