#include "audio/stream_clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kNanoseconds = 1e9;
constexpr double kMargin = 1e6;            // beyond the earliest request seen so far
constexpr double kEarliestBelieved = 3e7;  // a request further ahead than this is a fault
constexpr double kDropout = 6e7;           // a request this far off the line starts a new line
constexpr std::int64_t kFillTime = 100'000'000;
constexpr double kAveragedSeconds = 2.0;
constexpr double kSettledSeconds = 0.1;
/// Of requests that follow at once so many count with the first of them.
constexpr double kMostInBurst = 4;
/// So long after a start the line is true enough to tell how early requests come.
constexpr double kTrueSeconds = 5.0;
constexpr double kLargestRateError = 0.005;
constexpr double kLongestLeadSeconds = 0.2;
/// On a busy machine requests come late and are made up for by others that follow at once. A late
/// one counts as no later than this, or it would move the line.
constexpr double kLate = 4e5;
/// If every request of such a time was later than this, the stream has lost time.
constexpr double kTimeLost = 3e6;
constexpr double kTimeLostSeconds = 0.25;
/// From an instant until what was planned for it is heard: longer than an ordinary thread sleeps on
/// a busy machine, and than a stream needs whose buffers have grown.
constexpr double kPlannedDelay = 1.2e8;
/// Statements about what is heard are averaged, for on a busy machine each new one is off by some
/// milliseconds. If they are off by a step twice in a row, or by less for so long, frames have been
/// lost or made up.
constexpr double kHeardStep = 1e7;
constexpr double kHeardShift = 3e6;
constexpr double kHeardShiftSeconds = 4;
constexpr double kHeardSeconds = 10;

}  // namespace

StreamClock::StreamClock(double framesPerSecond)
    : nominalFrameTime_(kNanoseconds / framesPerSecond), frameTime_(nominalFrameTime_) {}

void StreamClock::request(std::int64_t now, std::int64_t frame, int count) {
    largestRequest_ = std::max(largestRequest_, count);
    const double inBurst = static_cast<double>(frame - burstFrame_) * frameTime_;
    const bool followsAtOnce =
        running_ && inBurst > 0 && static_cast<double>(now - burstTime_) < inBurst / 2;
    if (!followsAtOnce) {
        burstTime_ = now;
        burstFrame_ = frame;
    }
    if (!running_) {
        start(now, frame);
        return;
    }
    // While the buffers fill, the requests say how large they are and not how time passes.
    if (now - startTime_ < kFillTime)
        return;

    const double residual = static_cast<double>(now) - instantOf(static_cast<double>(frame));
    if (followsAtOnce && residual < -inBurst / 2) {
        learnEarliness(residual, frame);
        return;
    }
    const bool fresh = weight_ == 0;
    if (!fresh && std::abs(residual) > kDropout) {
        // So soon after a start it was the lead that was wrong, not the stream that stopped.
        leadKnown_ = leadKnown_ && leadMeasured_;
        start(now, frame);
        return;
    }
    follow(residual, frame, count);
}

void StreamClock::follow(double residual, std::int64_t frame, int count) {
    const double average = kAveragedSeconds * kNanoseconds / nominalFrameTime_;
    // With those requests that followed at once and told nothing.
    const double passed = std::clamp(static_cast<double>(frame) - lineFrame_,
                                     static_cast<double>(count), kMostInBurst * count);
    residual -= timeLost(residual, passed);
    if (weight_ > 0)
        residual = std::min(residual, kLate);
    weight_ = std::min(weight_ + passed, average);
    lineTime_ = instantOf(static_cast<double>(frame)) + residual * passed / weight_;
    lineFrame_ = static_cast<double>(frame);
    if (weight_ >= kSettledSeconds * kNanoseconds / nominalFrameTime_)
        learnLead();
    if (weight_ < average)
        return;
    // Critically damped: the rate follows as fast as it can without swinging.
    frameTime_ += residual * passed / (2 * average * average);
    frameTime_ = std::clamp(frameTime_, nominalFrameTime_ * (1 - kLargestRateError),
                            nominalFrameTime_ * (1 + kLargestRateError));
    learnEarliness(residual, frame);
}

void StreamClock::learnEarliness(double residual, std::int64_t frame) {
    if (instantOf(static_cast<double>(frame)) - static_cast<double>(startTime_) >
        kTrueSeconds * kNanoseconds)
        early_ = std::clamp(-residual, early_, kEarliestBelieved);
}

/// Moves the line if the stream has stood still for a moment; answers by how much.
double StreamClock::timeLost(double residual, double passed) {
    leastResidual_ = std::min(leastResidual_, residual);
    watchedFrames_ += passed;
    if (watchedFrames_ * nominalFrameTime_ < kTimeLostSeconds * kNanoseconds)
        return 0;
    const double lost = leastResidual_ > kTimeLost ? leastResidual_ : 0;
    lineTime_ += lost;
    leastResidual_ = kDropout;
    watchedFrames_ = 0;
    return lost;
}

void StreamClock::begin(std::int64_t now) {
    if (!running_ || leadKnown_)
        return;
    lineTime_ += static_cast<double>(now - startTime_);
    startTime_ = now;
}

void StreamClock::resize() {
    if (running_ && told_) {
        carriedTime_ = heardAt(lineFrame_);
        carriedFrame_ = lineFrame_;
        carried_ = true;
    }
    running_ = false;
    early_ = 0;
    lead_ = 0;
    leadKnown_ = false;
}

void StreamClock::heard(std::int64_t instant, std::int64_t frame) {
    if (!running_ || carried_)
        return;
    const double since = static_cast<double>(frame - std::exchange(heardFrame_, frame));
    const double off = static_cast<double>(instant) - heardAt(static_cast<double>(frame));
    const double longest = kHeardSeconds * kNanoseconds / nominalFrameTime_;
    const double weight = std::min(static_cast<double>(frame - heardSince_), longest);
    const bool goesOn = off * heardShift_ > 0;
    if (!goesOn)
        shiftFrame_ = frame;
    const bool moved =
        goesOn && (std::abs(off) >= kHeardStep || static_cast<double>(frame - shiftFrame_) >=
                                                      kHeardShiftSeconds * longest / kHeardSeconds);
    heardShift_ = told_ && !moved && std::abs(off) >= kHeardShift ? off : 0;
    if (!std::exchange(told_, true)) {
        lag_ = static_cast<double>(instant) - instantOf(static_cast<double>(frame));
        heardSince_ = frame;
    } else if (std::exchange(guessed_, false) || moved) {
        lag_ += off;
        heardSince_ = frame;
    } else if (weight > 0 && std::abs(off) < kHeardStep) {
        lag_ += off * std::min(since / weight, 0.5);
    }
}

void StreamClock::start(std::int64_t now, std::int64_t frame) {
    running_ = true;
    startTime_ = now;
    startFrame_ = frame;
    leadMeasured_ = false;
    leastResidual_ = kDropout;
    watchedFrames_ = 0;
    // A stream that starts empty asks for its lead at once, so the frame that is asked for at its
    // due time is the one after the lead.
    lineTime_ = static_cast<double>(now);
    lineFrame_ = static_cast<double>(frame) + lead_;
    weight_ = 0;
    guessed_ = told_ && !carried_;
}

void StreamClock::learnLead() {
    // Once for each start: later an error of the rate would count as lead.
    if (leadMeasured_)
        return;
    if (carried_) {
        lag_ = heardAt(lineFrame_) - lineTime_;
        carried_ = false;
    }
    leadMeasured_ = true;
    leadKnown_ = true;
    const double lead =
        (static_cast<double>(startTime_) - instantOf(static_cast<double>(startFrame_))) /
        frameTime_;
    const double longest = kLongestLeadSeconds * kNanoseconds / frameTime_;
    lead_ = std::clamp(lead, -longest, longest);
}

double StreamClock::instantOf(double frame) const {
    return lineTime_ + (frame - lineFrame_) * frameTime_;
}

double StreamClock::frameFor(std::int64_t time) const {
    return lineFrame_ + (static_cast<double>(time) - lineTime_ + delayNanoseconds()) / frameTime_;
}

double StreamClock::delayNanoseconds() const {
    // An event that arrives just after a request is first looked at by the next one.
    return largestRequest_ * frameTime_ + early_ + kMargin;
}

double StreamClock::heardAt(double frame) const {
    if (carried_)
        return carriedTime_ + (frame - carriedFrame_) * frameTime_;
    return instantOf(frame) + (told_ ? lag_ : lead_ * frameTime_);
}

double StreamClock::plannedFrameFor(std::int64_t time) const {
    const double late = static_cast<double>(time) + kPlannedDelay - heardAt(lineFrame_);
    return std::max(frameFor(time), lineFrame_ + late / frameTime_);
}

std::int64_t StreamClock::plannedHeardDelay() const {
    const double lag = heardAt(lineFrame_) - lineTime_;
    return static_cast<std::int64_t>(std::max(kPlannedDelay, delayNanoseconds() + lag));
}
