#include "audio/message_timeline.h"

namespace {

SoundEvent resetAt(std::int64_t time) {
    SoundEvent reset;
    reset.kind = SoundEvent::Kind::Reset;
    reset.time = time;
    return reset;
}

}  // namespace

bool MessageTimeline::post(const SoundEvent& event) {
    constexpr std::size_t kRoomForBoth = 2;
    if (dropped_.load() && queue_.freeSlots() >= kRoomForBoth && dropped_.exchange(false))
        queue_.push(resetAt(event.time));
    if (!dropped_.load() && queue_.push(event))
        return true;
    dropped_.store(true);
    return false;
}

void MessageTimeline::request(std::int64_t now, std::int64_t frame, int count) {
    clock_.request(now, frame, count);
}

std::optional<SoundEvent> MessageTimeline::next(std::int64_t frame, int blockFrames) {
    const SoundEvent* front = queue_.front();
    if (!front) {
        if (dropped_.load() && dropped_.exchange(false))
            return resetAt(0);
        return std::nullopt;
    }
    // The nearest block start, so that the rounding has no bias.
    if (clock_.frameFor(front->time) >= static_cast<double>(frame) + blockFrames / 2.0)
        return std::nullopt;
    const SoundEvent event = *front;
    queue_.pop();
    return event;
}
