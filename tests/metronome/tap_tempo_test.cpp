#include "metronome/tap_tempo.h"

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
