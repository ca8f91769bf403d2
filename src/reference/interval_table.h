#pragma once

#include <QString>

#include <array>

/// The intervals by their size, each a consonance, a dissonance, or a step that only a melody makes
/// consonant.
namespace interval_table {

enum class Quality { Dim, Min, Mag, Gius, Ecc };
enum class Group { Consonant, Dissonant, ConsonantInMelody };

struct Interval {
    int semitones;
    int number;
    Quality quality;
    Group group;
};

constexpr std::array<const char*, 3> kHeadings{"Intervalli consonanti", "Intervalli dissonanti",
                                               "Consonanti se l'intervallo è melodico"};

constexpr int kLargest = 13;

constexpr std::array<Interval, 25> kIntervals{{
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
}};

QString nameOf(const Interval& interval);   ///< "3 Mag"
QString inWords(const Interval& interval);  ///< "Terza maggiore"

}  // namespace interval_table
