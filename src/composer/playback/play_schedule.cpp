#include "composer/playback/play_schedule.h"

void PlaySchedule::beginEntry() {
    if (runtime_.now() - due_ > kTolerance)
        due_ = runtime_.now();
}

void PlaySchedule::sound(std::int64_t ms) {
    const std::chrono::milliseconds length(ms);
    due_ += length;
    runtime_.blockUntil(runtime_.now() + length);
}

void PlaySchedule::pause(std::int64_t ms) {
    due_ += std::chrono::milliseconds(ms);
    runtime_.blockUntil(due_);
}
