#include "composer/playback/play_schedule.h"

void PlaySchedule::beginEntry() {
    if (runtime_.now() - due_ > kTolerance)
        due_ = runtime_.now();
}

Instant PlaySchedule::endOfSound(std::int64_t ms) {
    const std::chrono::milliseconds length(ms);
    due_ += length;
    return runtime_.now() + length;
}

Instant PlaySchedule::endOfPause(std::int64_t ms) {
    due_ += std::chrono::milliseconds(ms);
    return due_;
}
