#include "core/piano_keys.h"

#include "platform/runtime.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr pitch::NoteNumber kLowestBase = 36;
constexpr pitch::NoteNumber kHighestBase = 60;
constexpr int kOctave = 12;

/// The polled keys; each is a semitone above the one before.
constexpr std::string_view kPolledKeys = "ZSXDCVGBHNJMQ2W3ER5T6Y7UI9O0P";

constexpr std::size_t kCommaKey = 0;
constexpr std::array<int, PianoKeys::kRowEnds.size()> kRowEndOffsets{12, 13, 14, 15, 16,
                                                                     29, 30, 31, 32};

}  // namespace

void PianoKeys::cycleOctave() {
    base_ = base_ >= kHighestBase ? kLowestBase : static_cast<pitch::NoteNumber>(base_ + kOctave);
}

void PianoKeys::poll(bool typing) {
    static_assert(kPolledKeys.size() == kPolledCount);
    for (std::size_t i = 0; i < polled_.size(); ++i) {
        const bool down = runtime_.held(kPolledKeys[i]);
        if (down && !polled_[i] && typing)
            polled_[i] = pitch::kRest;
        else if (down && !polled_[i])
            begin(polled_[i], static_cast<int>(i));
        else if (!down)
            end(polled_[i]);
    }
}

bool PianoKeys::keyDown(KeyCode key) {
    const auto index = eventKey(key);
    if (!index)
        return false;
    const bool looksAtComma = key == kKeyBackspace && backspace_ == Backspace::LooksAtComma;
    const HeldNote& tested = events_[looksAtComma ? kCommaKey : *index];
    if (!tested)
        begin(events_[*index], kRowEndOffsets[*index]);
    return true;
}

bool PianoKeys::keyUp(KeyCode key) {
    const auto index = eventKey(key);
    if (index)
        end(events_[*index]);
    return index.has_value();
}

void PianoKeys::releaseAll() {
    for (HeldNote& held : polled_)
        end(held);
    for (HeldNote& held : events_)
        end(held);
}

bool PianoKeys::sounds() const {
    const auto sounds = [](const HeldNote& held) { return held && *held != pitch::kRest; };
    return std::any_of(polled_.begin(), polled_.end(), sounds) ||
           std::any_of(events_.begin(), events_.end(), sounds);
}

void PianoKeys::begin(HeldNote& held, int offset) {
    const auto note = static_cast<pitch::NoteNumber>(base_ + offset);
    const bool repeats = held.has_value();
    // A repeated press after a change of octave would leave the first note without an end.
    if (repeats && *held != note)
        end(held);
    held = note;
    repeats ? listener_.noteRepeated(note) : listener_.noteDown(note);
}

void PianoKeys::end(HeldNote& held) {
    if (const HeldNote ended = std::exchange(held, std::nullopt); ended && *ended != pitch::kRest)
        listener_.noteUp(*ended);
}

std::optional<std::size_t> PianoKeys::eventKey(KeyCode key) {
    const auto* const found = std::find(kRowEnds.begin(), kRowEnds.end(), key);
    if (found == kRowEnds.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - kRowEnds.begin());
}
