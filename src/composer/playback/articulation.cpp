#include "composer/playback/articulation.h"

#include "composer/melody/melody.h"

#include <algorithm>
#include <array>

namespace {

/// A note sounds a whole part of its total; a part of 1 ends with the gap instead of a silence.
struct Rule {
    QLatin1String letter;
    int velocity;
    int divisor;
};

constexpr std::array<Rule, 4> kRules{{{letter::kNormale, 100, 1},
                                      {letter::kAccentato, 127, 1},
                                      {letter::kStaccato, 120, 4},
                                      {letter::kTenuto, 100, 2}}};

constexpr double kMsPerSecond = 1000;
constexpr double kSecondsPerMinute = 60;
/// Ten days: no entry is that long, and sums of such times stay far from any overflow.
constexpr double kLongestMs = 8.64e8;

std::int64_t silence(std::int64_t ms) {
    return std::max<std::int64_t>(ms, 0);
}

}  // namespace

std::int64_t totalMs(double duration, int tempo) {
    const double ms = duration * (kSecondsPerMinute / tempo) * kMsPerSecond;
    return static_cast<std::int64_t>(std::clamp(ms, -kLongestMs, kLongestMs));
}

void Articulation::articulate(QStringView attribute, double duration, int tempo) {
    const std::int64_t total = totalMs(duration, tempo);
    if (attribute == letter::kPausa) {
        silenceMs = silence(total - kGapMs);
        return;
    }
    const auto* const rule = std::find_if(
        kRules.begin(), kRules.end(), [attribute](const Rule& r) { return attribute == r.letter; });
    if (rule == kRules.end())
        return;
    velocity = rule->velocity;
    soundingMs = rule->divisor == 1 ? total - kGapMs : total / rule->divisor;
    silenceMs = rule->divisor == 1 ? 0 : silence(total - soundingMs - kGapMs);
}
