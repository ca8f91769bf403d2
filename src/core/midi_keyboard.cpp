#include "core/midi_keyboard.h"

#include "platform/midi_bytes.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kPedalIsDown = 64;  ///< from this value of its controller on

}  // namespace

MidiKeyboard::Window::Window(MidiKeyboard* keyboard, MidiKeysListener& listener,
                             std::function<bool()> inFront)
    : keyboard_(keyboard), listener_(listener), inFront_(std::move(inFront)) {
    if (!keyboard_)
        return;
    keyboard_->windows_.push_back(this);
    keyboard_->windowsSince_ = keyboard_->runtime_.now();
}

MidiKeyboard::Window::~Window() {
    if (!keyboard_)
        return;
    releaseKeys();
    std::erase(keyboard_->windows_, this);
    keyboard_->windowsSince_ = keyboard_->runtime_.now();
}

void MidiKeyboard::Window::releaseKeys() {
    if (!keyboard_)
        return;
    for (const auto& [note, window] : std::map<int, Window*>(keyboard_->playedIn_)) {
        if (window == this)
            keyboard_->end(note);
    }
}

MidiKeyboard::~MidiKeyboard() {
    midiIn_.stop();
}

void MidiKeyboard::inputsChanged(const std::vector<MidiInput>& inputs) {
    QStringList names;
    for (const MidiInput& input : inputs)
        names << input.name;
    if (names.isEmpty() && !names_.isEmpty())
        lost_ = names_;
    else if (!names.isEmpty())
        lost_.clear();
    names_ = names;
    const auto isOfNone = [&inputs](const Key& key) {
        return std::none_of(inputs.begin(), inputs.end(), [&key](const MidiInput& input) {
            return input.id == std::get<0>(key);
        });
    };
    std::erase_if(pedals_, isOfNone);
    releaseAll(isOfNone);
    for (Window* window : std::vector<Window*>(windows_))
        window->listener_.keyboardsChanged();
}

/// A note-on without velocity is a note-off.
void MidiKeyboard::received(const MidiInMessage& received) {
    const std::uint32_t message = received.message;
    const std::uint32_t channel = midi_bytes::channelOf(message);
    const std::uint32_t value = midi_bytes::data2Of(message);
    const std::uint32_t number = midi_bytes::data1Of(message);
    const Key key{received.input, channel, static_cast<int>(number)};
    switch (midi_bytes::kindOf(message)) {
        case midi_bytes::kNoteOn:
            if (value != 0)
                press(key, received.at);
            else
                release(key);
            break;
        case midi_bytes::kNoteOff:
            release(key);
            break;
        case midi_bytes::kController:
            if (number == midi_bytes::kDamperPedal)
                movePedal(key, value >= kPedalIsDown, received.at);
            else
                releaseAll([&](const Key& held) {
                    return std::get<0>(held) == received.input && std::get<1>(held) == channel;
                });
            break;
        default:
            break;
    }
}

/// A key that seems to be down is pressed anew: its release was lost.
void MidiKeyboard::press(const Key& key, Instant at) {
    release(key);
    const int note = std::get<2>(key);
    const bool isFirst = !isDown(note);
    down_.insert(key);
    Window* const window = windowInFront(at);
    if (!isFirst || !window)
        return;
    playedIn_[note] = window;
    window->listener_.keyDown(note);
}

void MidiKeyboard::release(const Key& key) {
    const int note = std::get<2>(key);
    if (down_.erase(key) > 0 && !isDown(note))
        end(note);
}

template <typename Which>
void MidiKeyboard::releaseAll(Which which) {
    for (const Key& key : std::set<Key>(down_)) {
        if (which(key))
            release(key);
    }
}

/// Some pedals tell each of their places on the way down.
void MidiKeyboard::movePedal(const Key& pedal, bool down, Instant at) {
    if (!down) {
        pedals_.erase(pedal);
        return;
    }
    Window* const window = windowInFront(at);
    if (pedals_.insert(pedal).second && window)
        window->listener_.pedalDown();
}

bool MidiKeyboard::isDown(int note) const {
    return std::any_of(down_.begin(), down_.end(),
                       [note](const Key& key) { return std::get<2>(key) == note; });
}

void MidiKeyboard::end(int note) {
    if (const auto played = playedIn_.extract(note))
        played.mapped()->listener_.keyUp(note);
}

MidiKeyboard::Window* MidiKeyboard::windowInFront(Instant at) const {
    const auto front = std::find_if(windows_.rbegin(), windows_.rend(),
                                    [](const Window* window) { return window->inFront_(); });
    return front == windows_.rend() || at < windowsSince_ ? nullptr : *front;
}
