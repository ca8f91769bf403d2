#pragma once

#include "platform/midi_in.h"

#include <QStringList>

#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <vector>

/// What a window does with the keys of a MIDI keyboard. Notes are MIDI note numbers 0..127: an
/// instrument may have more keys than the program's own piano.
class MidiKeysListener {
public:
    virtual ~MidiKeysListener() = default;

    virtual void keyDown(int note) = 0;
    /// Comes for each key that went down, at the latest when its keyboard is unplugged.
    virtual void keyUp(int note) = 0;
    virtual void pedalDown() {}

    /// A keyboard came or went.
    virtual void keyboardsChanged() {}
};

/// The MIDI keyboards of the machine as one: which keys are down, and which window they play in.
///
/// A key goes down in the window that is in front, as computer keys do, and up in the same one. The
/// same note from several inputs is one key, since a keyboard may be connected in several ways.
class MidiKeyboard : private MidiInListener {
public:
    MidiKeyboard(const Runtime& runtime, MidiIn& midiIn) : runtime_(runtime), midiIn_(midiIn) {}
    ~MidiKeyboard() override;
    MidiKeyboard(const MidiKeyboard&) = delete;
    MidiKeyboard& operator=(const MidiKeyboard&) = delete;

    /// Takes the keys of all inputs from now on.
    void listen() { midiIn_.listen(*this); }

    /// The keyboards there are, and those that were unplugged after them if none is left.
    const QStringList& names() const { return names_; }
    const QStringList& lost() const { return lost_; }

    /// A window that keys play in as long as this exists.
    class Window {
    public:
        /// Nothing is played without a keyboard. `inFront` tells whether the user plays in the
        /// window; a key that goes down while that is true of none is dropped.
        Window(MidiKeyboard* keyboard, MidiKeysListener& listener, std::function<bool()> inFront);
        ~Window();
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;

        /// Ends every key that is down in the window.
        void releaseKeys();

    private:
        friend class MidiKeyboard;
        MidiKeyboard* keyboard_;
        MidiKeysListener& listener_;
        std::function<bool()> inFront_;
    };

private:
    /// A key as an input reports it: input, channel, note.
    using Key = std::tuple<int, std::uint32_t, int>;

    void inputsChanged(const std::vector<MidiInput>& inputs) override;
    void received(const MidiInMessage& message) override;

    void press(const Key& key, Instant at);
    void release(const Key& key);
    template <typename Which>
    void releaseAll(Which which);
    void movePedal(const Key& pedal, bool down, Instant at);
    bool isDown(int note) const;
    void end(int note);
    Window* windowInFront(Instant at) const;

    const Runtime& runtime_;
    MidiIn& midiIn_;
    QStringList names_;
    QStringList lost_;
    std::vector<Window*> windows_;  ///< the last one lies over the others
    Instant windowsSince_{0};       ///< what was played before was meant for other windows
    std::set<Key> down_;
    std::set<Key> pedals_;             ///< that are down; their note is that of their controller
    std::map<int, Window*> playedIn_;  ///< the notes that went down in a window
};
