#include "metronome/tap_tempo.h"

#include "core/tempo_names.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

TEST(TapTempo, IsTheTempoOfUnevenTapsAfterEveryPauseAndChange) {
    std::mt19937 random(1);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    TapTempo taps;
    double now = 1e6;
    double before = 0;
    for (int change = 0; change < 2000; ++change) {
        const double tempo = between(20, 400);
        const double jitter = between(0, 0.08);
        if (std::max(tempo, before) < 1.7 * std::min(tempo, before))
            now += 4000;
        before = tempo;
        for (int tap = 0; tap < 12; ++tap) {
            now += 60000 / tempo * (1 + between(-jitter, jitter) / 2);
            const auto found = taps.tap(TapTempo::Time(std::llround(now)));
            const double exact = tap >= int(TapTempo::kTaps) ? jitter / 4 : jitter;
            if (tap >= 2) {
                ASSERT_NEAR(found.value_or(0) / tempo, 1, exact + 0.01) << tempo << ' ' << tap;
            }
        }
    }
}

/// What stands beside the marks on the scales of metronomes.
TEST(TempoNames, AreThoseOfAMetronomesScale) {
    QStringList read;
    for (const int mark :
         {20, 39, 40, 58, 60, 63, 66, 72, 76, 92, 104, 108, 116, 120, 160, 168, 192, 200, 208, 400})
        read << QString("%1 %2").arg(mark).arg(tempo_names::nameOf(mark));
    EXPECT_EQ(read.join(", "),
              "20 Grave, 39 Grave, 40 Largo, 58 Largo, 60 Larghetto, 63 Larghetto, 66 Adagio, "
              "72 Adagio, 76 Andante, 92 Andante, 104 Andante, 108 Moderato, 116 Moderato, "
              "120 Allegro, 160 Allegro, 168 Presto, 192 Presto, 200 Prestissimo, "
              "208 Prestissimo, 400 Prestissimo");
}
