#include "eartraining/interval/interval_chart.h"

#include <algorithm>

namespace interval_chart {

using intervals::Quality;

const std::array<Name, intervals::kAll.size()> kNames{{
    {intervals::rowOf(5, Quality::Gius), Row::Above},
    {intervals::rowOf(5, Quality::Ecc), Row::Above},
    {intervals::rowOf(6, Quality::Mag), Row::Above},
    {intervals::rowOf(6, Quality::Ecc), Row::Above},
    {intervals::rowOf(7, Quality::Mag), Row::Above},
    {intervals::rowOf(7, Quality::Ecc), Row::Above},
    {intervals::rowOf(8, Quality::Ecc), Row::Above},
    {intervals::rowOf(8, Quality::Gius), Row::Below},
    {intervals::rowOf(8, Quality::Dim), Row::Below},
    {intervals::rowOf(7, Quality::Min), Row::Below},
    {intervals::rowOf(7, Quality::Dim), Row::Below},
    {intervals::rowOf(6, Quality::Min), Row::Below},
    {intervals::rowOf(6, Quality::Dim), Row::Below},
    {intervals::rowOf(5, Quality::Dim), Row::Below},
    {intervals::rowOf(4, Quality::Gius), Row::Below},
    {intervals::rowOf(4, Quality::Dim), Row::Below},
    {intervals::rowOf(3, Quality::Min), Row::Below},
    {intervals::rowOf(3, Quality::Dim), Row::Below},
    {intervals::rowOf(2, Quality::Min), Row::Below},
    {intervals::rowOf(2, Quality::Dim), Row::Below},
    {intervals::rowOf(2, Quality::Mag), Row::Above},
    {intervals::rowOf(2, Quality::Ecc), Row::Above},
    {intervals::rowOf(3, Quality::Mag), Row::Above},
    {intervals::rowOf(3, Quality::Ecc), Row::Above},
    {intervals::rowOf(4, Quality::Ecc), Row::Above},
}};

bool isConsonant(int semitones) {
    return std::any_of(kNames.begin(), kNames.end(), [semitones](const Name& name) {
        return name.interval.semitones == semitones && intervals::soundsConsonant(name.interval);
    });
}

}  // namespace interval_chart
