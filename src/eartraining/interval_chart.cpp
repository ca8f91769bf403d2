#include "eartraining/interval_chart.h"

#include <algorithm>

namespace interval_chart {

const std::array<Name, 25> kNames{{
    {"5 Gius", 7, Row::Above, true},  {"5 Ecc", 8, Row::Above, false},
    {"6 Mag", 9, Row::Above, true},   {"6 Ecc", 10, Row::Above, false},
    {"7 Mag", 11, Row::Above, false}, {"7 Ecc", 12, Row::Above, false},
    {"8 Ecc", 13, Row::Above, false}, {"8 Gius", 12, Row::Below, true},
    {"8 Dim", 11, Row::Below, false}, {"7 Min", 10, Row::Below, false},
    {"7 Dim", 9, Row::Below, false},  {"6 Min", 8, Row::Below, true},
    {"6 Dim", 7, Row::Below, false},  {"5 Dim", 6, Row::Below, false},
    {"4 Gius", 5, Row::Below, true},  {"4 Dim", 4, Row::Below, false},
    {"3 Min", 3, Row::Below, true},   {"3 Dim", 2, Row::Below, false},
    {"2 Min", 1, Row::Below, false},  {"2 Dim", 0, Row::Below, true},
    {"2 Mag", 2, Row::Above, false},  {"2 Ecc", 3, Row::Above, false},
    {"3 Mag", 4, Row::Above, true},   {"3 Ecc", 5, Row::Above, false},
    {"4 Ecc", 6, Row::Above, false},
}};

bool isConsonant(int semitones) {
    return std::any_of(kNames.begin(), kNames.end(), [semitones](const Name& name) {
        return name.semitones == semitones && name.consonant;
    });
}

}  // namespace interval_chart
