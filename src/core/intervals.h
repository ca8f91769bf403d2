#pragma once

#include <QString>

#include <algorithm>
#include <array>

/// The intervals from the diminished second to the augmented octave, as the reference sheet and the
/// ear-training chart show them.
namespace intervals {

enum class Quality { Dim, Min, Mag, Gius, Ecc };
enum class Group { Consonant, Dissonant, ConsonantInMelody };

struct Interval {
    int semitones;
    int number;  ///< 2 for a second to 8 for an octave
    Quality quality;
    Group group;  ///< as the interval is written
};

/// From the smallest to the largest.
constexpr auto kAll = std::to_array<Interval>({
    {0, 2, Quality::Dim, Group::Dissonant},         {1, 2, Quality::Min, Group::ConsonantInMelody},
    {2, 2, Quality::Mag, Group::ConsonantInMelody}, {2, 3, Quality::Dim, Group::Dissonant},
    {3, 2, Quality::Ecc, Group::Dissonant},         {3, 3, Quality::Min, Group::Consonant},
    {4, 3, Quality::Mag, Group::Consonant},         {4, 4, Quality::Dim, Group::Dissonant},
    {5, 3, Quality::Ecc, Group::Dissonant},         {5, 4, Quality::Gius, Group::Consonant},
    {6, 4, Quality::Ecc, Group::Dissonant},         {6, 5, Quality::Dim, Group::Dissonant},
    {7, 5, Quality::Gius, Group::Consonant},        {7, 6, Quality::Dim, Group::Dissonant},
    {8, 5, Quality::Ecc, Group::Dissonant},         {8, 6, Quality::Min, Group::Consonant},
    {9, 6, Quality::Mag, Group::Consonant},         {9, 7, Quality::Dim, Group::Dissonant},
    {10, 6, Quality::Ecc, Group::Dissonant},        {10, 7, Quality::Min, Group::Dissonant},
    {11, 7, Quality::Mag, Group::Dissonant},        {11, 8, Quality::Dim, Group::Dissonant},
    {12, 7, Quality::Ecc, Group::Dissonant},        {12, 8, Quality::Gius, Group::Consonant},
    {13, 8, Quality::Ecc, Group::Dissonant},
});

constexpr int kLargest = kAll.back().semitones;

/// An interval that the program itself names. One that is not in the table does not compile.
consteval const Interval& rowOf(int number, Quality quality) {
    return *std::find_if(kAll.begin(), kAll.end(), [=](const Interval& interval) {
        return interval.number == number && interval.quality == quality;
    });
}

/// Whether the ear takes an interval for a consonance when its notes sound together. That differs
/// from its group in one place, which is intended: a diminished second is written as a dissonance
/// and sounds as a unison.
constexpr bool soundsConsonant(const Interval& interval) {
    return interval.group == Group::Consonant || interval.semitones == 0;
}

QString nameOf(const Interval& interval);   ///< "3 Mag"
QString inWords(const Interval& interval);  ///< "Terza maggiore"
QString semitonesInWords(int semitones);    ///< "1 semitono", "3 semitoni"

/// With the intervals of this size: "9 semitoni, sesta maggiore o settima diminuita".
QString sizeInWords(int semitones);

/// What the names abbreviate: "Dim = diminuita    Min = minore …".
QString abbreviationsInWords();

}  // namespace intervals
