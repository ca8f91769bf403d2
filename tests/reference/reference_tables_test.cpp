#include "core/intervals.h"
#include "core/key_signatures.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

const QStringList kNotes{"Do", "Re", "Mi", "Fa", "Sol", "La", "Si"};
constexpr int kScale[] = {0, 2, 4, 5, 7, 9, 11};

/// The name of a note so many fifths above Do.
QString fifthsAboveDo(int fifths) {
    const int shift = (fifths + 8) / 7 - 1;
    return kNotes[(fifths + 14) * 4 % 7] + (shift > 0 ? " diesis" : shift < 0 ? " bemolle" : "");
}

}  // namespace

/// A key is named after the note as many fifths above Do, its minor key lies three fifths further,
/// and its signs are the notes of the circle of fifths from Fa upwards or from Si downwards.
TEST(KeySignatures, FollowTheCircleOfFifths) {
    std::set<int> all;
    for (const auto& key : key_signatures::kAll) {
        all.insert(key.fifths);
        EXPECT_EQ(key_signatures::majorName(key), fifthsAboveDo(key.fifths) + " maggiore");
        EXPECT_EQ(key_signatures::minorName(key), fifthsAboveDo(key.fifths + 3) + " minore");
        QStringList signs;
        for (const auto& sign : key_signatures::signsOf(key)) {
            const int number = static_cast<int>(signs.size());
            signs += sign.note;
            EXPECT_EQ(signs.back(),
                      key.isSharp() ? fifthsAboveDo(number - 1) : fifthsAboveDo(5 - number));
            // The treble's bottom line is Mi; a sign of the bass stands two half spaces lower.
            EXPECT_EQ(kNotes[(sign.position + 2) % 7], sign.note);
            EXPECT_TRUE(sign.position >= 1 && sign.position <= 9) << sign.note;
        }
        EXPECT_EQ(signs.size(), std::abs(key.fifths));
    }
    EXPECT_EQ(all.size(), 15U);
}

/// Each interval is as large as the major scale's, widened or narrowed by its quality.
TEST(IntervalTable, NamesEveryIntervalOnceAtItsSize) {
    using intervals::Group;
    std::set<QString> names;
    QString consonant;
    for (const auto& interval : intervals::kAll) {
        const int number = interval.number;
        const bool perfect = number == 4 || number == 5 || number == 8;
        const QString qualities = perfect ? "Dim Gius Ecc" : "Dim Min Mag Ecc";
        const QString name = intervals::nameOf(interval);
        const auto quality = qualities.split(' ').indexOf(name.section(' ', 1));
        ASSERT_GE(quality, 0) << qPrintable(name);
        EXPECT_EQ(name.section(' ', 0, 0), QString::number(number));
        const int scale = kScale[(number - 1) % 7] + (number == 8 ? 12 : 0);
        EXPECT_EQ(interval.semitones, scale + quality - (perfect ? 1 : 2)) << qPrintable(name);
        const bool altered = name.endsWith("Dim") || name.endsWith("Ecc");
        EXPECT_EQ(interval.group, altered || number == 7 ? Group::Dissonant
                                  : number == 2          ? Group::ConsonantInMelody
                                                         : Group::Consonant);
        names.insert(name);
        consonant += intervals::soundsConsonant(interval) ? name + ',' : "";
    }
    EXPECT_EQ(names.size(), 4U * 4 + 3 * 3) << "seconds to octaves in each quality";
    EXPECT_EQ(consonant, "2 Dim,3 Min,3 Mag,4 Gius,5 Gius,6 Min,6 Mag,8 Gius,");
}
