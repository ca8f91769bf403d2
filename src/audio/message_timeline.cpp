#include "audio/message_timeline.h"

#include <algorithm>

namespace {

SoundEvent resetAt(std::int64_t time) {
    SoundEvent reset;
    reset.kind = SoundEvent::Kind::Reset;
    reset.time = time;
    return reset;
}

/// Whether an event is given out after everything of its kind that was posted before.
bool isCounted(const SoundEvent& event) {
    return !event.planned && event.kind != SoundEvent::Kind::CancelPlanned;
}

}  // namespace

bool MessageTimeline::post(const SoundEvent& event) {
    constexpr std::size_t kRoomForBoth = 2;
    if (dropped_.load() && queue_.freeSlots() >= kRoomForBoth && dropped_.exchange(false)) {
        queue_.push(resetAt(event.time));
        ++posted_;
    }
    if (!dropped_.load() && queue_.push(event)) {
        if (isCounted(event))
            ++posted_;
        return true;
    }
    dropped_.store(true);
    return false;
}

void MessageTimeline::request(std::int64_t now, std::int64_t frame, int count) {
    clock_.request(now, frame, count);
    delay_.store(clock_.plannedHeardDelay());
}

void MessageTimeline::takeFromQueue() {
    while (const SoundEvent* front = queue_.front()) {
        if (front->kind == SoundEvent::Kind::CancelPlanned)
            dropPlannedAfter(front->time);
        else if (waiting() == waiting_.size())
            return;
        else
            insert(*front);
        queue_.pop();
    }
}

void MessageTimeline::insert(const SoundEvent& event) {
    if (end_ == waiting_.size()) {
        std::copy(waiting_.begin() + begin_, waiting_.begin() + end_, waiting_.begin());
        end_ -= begin_;
        begin_ = 0;
    }
    std::size_t place = end_++;
    for (; place > begin_ && waiting_[place - 1].time > event.time; --place)
        waiting_[place] = waiting_[place - 1];
    waiting_[place] = event;
}

void MessageTimeline::dropPlannedAfter(std::int64_t time) {
    const auto kept = std::remove_if(
        waiting_.begin() + begin_, waiting_.begin() + end_,
        [time](const SoundEvent& event) { return event.planned && event.time > time; });
    end_ = static_cast<std::size_t>(kept - waiting_.begin());
}

bool MessageTimeline::hasPlanned() {
    takeFromQueue();
    return std::any_of(waiting_.begin() + begin_, waiting_.begin() + end_,
                       [](const SoundEvent& event) { return event.planned; });
}

std::optional<SoundEvent> MessageTimeline::next(std::int64_t frame, int blockFrames) {
    takeFromQueue();
    if (waiting() == 0) {
        if (dropped_.load() && dropped_.exchange(false))
            return resetAt(0);
        return std::nullopt;
    }
    const SoundEvent event = waiting_[begin_];
    // The nearest block start, so that the rounding has no bias.
    const double due =
        event.planned ? clock_.plannedFrameFor(event.time) : clock_.frameFor(event.time);
    if (due >= static_cast<double>(frame) + blockFrames / 2.0)
        return std::nullopt;
    ++begin_;
    if (isCounted(event))
        givenOut_.fetch_add(1);
    return event;
}
