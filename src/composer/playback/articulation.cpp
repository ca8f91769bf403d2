#include "composer/playback/articulation.h"

#include "core/letter.h"

#include <algorithm>

namespace {

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
    const letter::EntryLetter* row = letter::find(attribute);
    if (!row)
        return;
    if (row->isRest()) {
        silenceMs = silence(total - kGapMs);
        return;
    }
    const int divisor = row->soundingDivisor;
    velocity = row->velocity;
    soundingMs = divisor == 1 ? total - kGapMs : total / divisor;
    silenceMs = divisor == 1 ? 0 : silence(total - soundingMs - kGapMs);
}
