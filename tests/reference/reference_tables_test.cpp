#include "core/intervals.h"
#include "reference/key_page.h"
#include "reference/key_signatures.h"

#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAreArray;

namespace {

const QStringList kNotes{"Do", "Re", "Mi", "Fa", "Sol", "La", "Si"};
constexpr std::array<int, 7> kScale{0, 2, 4, 5, 7, 9, 11};

/// The pitch class of "Fa diesis".
int pitchClass(const char* name) {
    const QStringList words = QString::fromLatin1(name).split(QLatin1Char(' '));
    const int natural = kScale.at(static_cast<std::size_t>(kNotes.indexOf(words[0])));
    const int shift = words.size() == 1 ? 0 : words[1] == QLatin1String("diesis") ? 1 : -1;
    return (natural + shift + 12) % 12;
}

/// How the note of a scale's degree, counted from 0, is altered in the major scale of a key.
int alteration(const key_signatures::KeySignature& key, int degree) {
    const QString tonic = QString::fromLatin1(key.major).section(QLatin1Char(' '), 0, 0);
    const int letter = (static_cast<int>(kNotes.indexOf(tonic)) + degree) % 7;
    const int size = kScale.at(static_cast<std::size_t>(degree));
    const int wanted = pitchClass(key.major) + size - kScale.at(static_cast<std::size_t>(letter));
    return (wanted + 18) % 12 - 6;
}

}  // namespace

TEST(KeySignatures, FollowTheCircleOfFifths) {
    for (const auto& key : key_signatures::kAll) {
        EXPECT_EQ(pitchClass(key.major), (7 * key.fifths + 84) % 12) << key.major;
        EXPECT_EQ((pitchClass(key.minor) + 3) % 12, pitchClass(key.major)) << key.minor;
    }
    const auto order = [](int from, int to, int step) {
        std::vector<int> fifths;
        for (int i = from; i != to + step; i += step)
            fifths.push_back(i);
        return fifths;
    };
    std::vector<int> expected = order(0, 7, 1);
    for (const int flats : order(-1, -7, -1))
        expected.push_back(flats);
    std::vector<int> fifths;
    for (const auto& key : key_signatures::kAll)
        fifths.push_back(key.fifths);
    EXPECT_EQ(fifths, expected);
}

/// Builds each major scale from its tonic and compares the notes that it alters with the signature.
TEST(KeySignatures, HoldTheNotesThatTheScaleAltersWhereTheyStandOnBothStaves) {
    constexpr int kTrebleBottom = 2;  ///< the bottom line's note, as an index of kNotes
    constexpr int kBassBottom = 4;
    for (const auto& key : key_signatures::kAll) {
        QStringList altered;
        for (int degree = 0; degree < 7; ++degree) {
            const QString tonic = QString::fromLatin1(key.major).section(QLatin1Char(' '), 0, 0);
            const int shift = alteration(key, degree);
            if (shift != 0)
                altered += kNotes[(kNotes.indexOf(tonic) + degree) % 7];
            EXPECT_TRUE(shift == 0 || shift == (key.isSharp() ? 1 : -1)) << key.major;
        }
        QStringList signs;
        for (const auto& sign : key_signatures::signsOf(key)) {
            signs += QString::fromLatin1(sign.note);
            const int bass = sign.position - key_signatures::kBassShift;
            EXPECT_EQ(kNotes[(sign.position + kTrebleBottom) % 7], signs.back());
            EXPECT_EQ(kNotes[(bass + 7 + kBassBottom) % 7], signs.back());
            EXPECT_TRUE(sign.position <= 9 && bass >= -1) << "on the stave";
        }
        signs.sort();
        altered.sort();
        EXPECT_EQ(signs, altered) << key.major;
    }
    EXPECT_EQ(key_signatures::signsInWords(key_signatures::kAll[7]),
              QStringLiteral("7 diesis: Fa, Do, Sol, Re, La, Mi, Si"));
    EXPECT_EQ(key_signatures::signsInWords(key_signatures::kAll[14]),
              QStringLiteral("7 bemolli: Si, Mi, La, Re, Sol, Do, Fa"));
}

TEST(IntervalTable, NamesEveryIntervalOnceAtItsSize) {
    using intervals::Group;
    using intervals::Quality;
    QStringList names;
    QStringList consonantToTheEar;
    for (const auto& interval : intervals::kAll) {
        const bool perfect = interval.number == 4 || interval.number == 5 || interval.number == 8;
        const int scale = kScale.at(static_cast<std::size_t>((interval.number - 1) % 7)) +
                          (interval.number == 8 ? 12 : 0);
        const int shift = interval.quality == Quality::Ecc   ? 1
                          : interval.quality == Quality::Min ? -1
                          : interval.quality != Quality::Dim ? 0
                          : perfect                          ? -1
                                                             : -2;
        EXPECT_EQ(interval.semitones, scale + shift);
        const bool altered = interval.quality == Quality::Dim || interval.quality == Quality::Ecc;
        const Group group = altered || interval.number == 7 ? Group::Dissonant
                            : interval.number == 2          ? Group::ConsonantInMelody
                                                            : Group::Consonant;
        EXPECT_EQ(interval.group, group) << interval.number;
        names += intervals::nameOf(interval);
        if (intervals::soundsConsonant(interval))
            consonantToTheEar += names.back();
    }
    EXPECT_EQ(consonantToTheEar.join(u','), "2 Dim,3 Min,3 Mag,4 Gius,5 Gius,6 Min,6 Mag,8 Gius");
    QStringList expected;
    for (int number = 2; number <= 8; ++number) {
        const bool perfect = number == 4 || number == 5 || number == 8;
        const QString qualities = perfect ? "Dim Gius Ecc" : "Dim Min Mag Ecc";
        for (const QString& quality : qualities.split(QLatin1Char(' ')))
            expected += QStringLiteral("%1 %2").arg(number).arg(quality);
    }
    names.sort();
    expected.sort();
    EXPECT_EQ(names, expected);
}

TEST(KeyPage, ShowsOnePictureOrTheDegreesOrNothing) {
    struct Row {
        std::vector<int> clicks;
        int shown;  ///< 0 for nothing
    };
    for (const auto& [clicks, shown] :
         {Row{{}, 0}, Row{{1}, 1}, Row{{1, 1}, 0}, Row{{1, 1, 1}, 1}, Row{{3, 5}, 5},
          Row{{3, 5, 5, 3}, 3}, Row{{7, 16}, 16}, Row{{7, 16, 16}, 0}, Row{{7, 16, 7}, 7},
          Row{{16, 15}, 15}, Row{{16, 16, 1}, 1}}) {
        KeyPage page;
        for (const int button : clicks)
            page.click(button);
        std::vector<int> seen;
        for (int button = 1; button <= KeyPage::kButtons; ++button) {
            if (page.isShown(button))
                seen.push_back(button);
        }
        EXPECT_THAT(seen, ElementsAreArray(std::vector<int>(shown == 0 ? 0 : 1, shown)));
        EXPECT_EQ(page.isEmpty(), shown == 0);
    }
}
