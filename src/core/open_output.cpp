#include "core/open_output.h"

#include <utility>

namespace {

constexpr bool isProgramChange(std::uint32_t message) {
    return (message & 0xF0u) == 0xC0;
}

/// The end of a note is nothing to open an output for.
constexpr bool startsSomething(std::uint32_t message) {
    const bool noteOn = (message & 0xF0u) == 0x90 && (message >> 16 & 0xFFu) != 0;
    return noteOn || isProgramChange(message);
}

/// The velocity of a note that sounds already cannot be changed any more.
bool isSameNote(std::optional<std::uint32_t> sent, std::optional<std::uint32_t> message) {
    constexpr std::uint32_t kAllButVelocity = 0xFFFF;
    if (!sent || !message || !startsSomething(*sent) || !startsSomething(*message))
        return sent == message;
    return (*sent & kAllButVelocity) == (*message & kAllButVelocity);
}

}  // namespace

int OpenOutput::open(int deviceId) {
    const MidiOpenResult result = midiOut_.open(deviceId);
    const bool isFirst = !std::exchange(tried_, true);
    if (result.code != 0) {
        if (isFirst)
            tellChange();
        return result.code;
    }
    planned_.clear();
    if (handle_ != 0 && lost_)
        midiOut_.close(handle_);
    handle_ = result.handle;
    lost_ = false;
    deviceId_ = deviceId;
    deviceName_ = midiOut_.deviceName(deviceId);
    tellChange();
    return 0;
}

int OpenOutput::close() {
    if (handle_ == 0)
        return 0;
    planned_.clear();
    const int code = midiOut_.close(handle_);
    if (code != 0 && !lost_)
        return code;
    handle_ = 0;
    lost_ = false;
    tellChange();
    return 0;
}

int OpenOutput::send(std::uint32_t message) {
    if (completePlanned(message))
        return 0;
    if (isProgramChange(message))
        program_ = message;
    if (lost_ && startsSomething(message) && tryAgain() && isProgramChange(message))
        return 0;
    if (!isOpen())
        return 0;
    const int code = midiOut_.send(handle_, message);
    if (code == 0 || !midiOut_.gone(handle_))
        return code;
    // It may have gone and come back unnoticed.
    nextTry_ = runtime_.now();
    if (tryAgain())
        return isProgramChange(message) ? 0 : midiOut_.send(handle_, message);
    // Nobody looks at the answer to a program change, so the loss is found by the note after it.
    lost_ = !isProgramChange(message);
    if (lost_)
        tellChange();
    return code;
}

void OpenOutput::reset() {
    if (!completePlanned(std::nullopt) && isOpen())
        midiOut_.reset(handle_);
}

void OpenOutput::plan(std::uint32_t message, Instant at) {
    if (isOpen() && midiOut_.plan(handle_, message, at))
        planned_.push_back({message, at});
}

void OpenOutput::planReset(Instant at) {
    if (isOpen() && midiOut_.planReset(handle_, at))
        planned_.push_back({std::nullopt, at});
}

/// What went out already can still be completed.
void OpenOutput::cancelPlanned() {
    if (planned_.empty())
        return;
    midiOut_.cancelPlanned(handle_);
    const Instant now = runtime_.now();
    std::erase_if(planned_, [now](const Planned& planned) { return planned.at > now; });
}

Instant OpenOutput::nextHeard(Instant at) const {
    return planned_.empty() ? at : at + midiOut_.delay(handle_);
}

/// Whether the message, or reset, was sent ahead and its instant has come.
bool OpenOutput::completePlanned(std::optional<std::uint32_t> message) {
    if (planned_.empty())
        return false;
    const Planned next = planned_.front();
    if (!isSameNote(next.message, message) || next.at > runtime_.now()) {
        cancelPlanned();
        planned_.clear();
        return false;
    }
    planned_.pop_front();
    return !midiOut_.gone(handle_);
}

bool OpenOutput::ready() {
    return isOpen() || (lost_ && tryAgain());
}

bool OpenOutput::tryAgain() {
    if (runtime_.now() < nextTry_)
        return false;
    const MidiOpenResult result = midiOut_.reopen(handle_);
    // Counted from the end of a try, however long it took.
    nextTry_ = runtime_.now() + kRetryInterval;
    if (result.code != 0)
        return false;
    planned_.clear();
    handle_ = result.handle;
    lost_ = false;
    if (program_ != 0)
        midiOut_.send(handle_, program_);
    tellChange();
    return true;
}

void OpenOutput::tellChange() const {
    if (changed_)
        changed_();
}
