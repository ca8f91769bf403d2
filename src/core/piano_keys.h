#pragma once

#include "core/pitch.h"
#include "platform/key_codes.h"

#include <array>
#include <optional>

class Runtime;

/// What the computer keyboard plays.
class PianoKeysListener {
public:
    virtual ~PianoKeysListener() = default;

    virtual void noteDown(pitch::NoteNumber note) = 0;
    virtual void noteUp(pitch::NoteNumber note) = 0;

    /// An auto-repeat of a key that is down and sounds again.
    virtual void noteRepeated(pitch::NoteNumber note) { noteDown(note); }
};

/// The computer keyboard as a piano of two rows and a half octave more.
///
/// Letters and digits are polled, once a pass of the window's loop; the nine keys at the ends of
/// the rows come as the window's key events. A held key sounds once, and its release ends the note
/// that it began, whatever the octave is by then.
class PianoKeys {
public:
    /// How the backspace key is kept from repeating: as every other key, or by the comma key's
    /// state, so that it is silent while the comma is held and else sounds at every auto-repeat.
    enum class Backspace { Regular, LooksAtComma };

    static constexpr pitch::NoteNumber kFirstBase = 48;

    /// The nine keys at the ends of the rows.
    static constexpr std::array<KeyCode, 9> kRowEnds{kKeyComma,           'L',       kKeyFullStop,
                                                     kKeyRightOfL,        kKeyMinus, kKeyRightOfP,
                                                     kKeyLeftOfBackspace, kKeyPlus,  kKeyBackspace};

    PianoKeys(const Runtime& runtime, PianoKeysListener& listener, Backspace backspace)
        : runtime_(runtime), listener_(listener), backspace_(backspace) {}

    /// The note of the lowest key: 36, 48 or 60.
    pitch::NoteNumber octaveBase() const { return base_; }
    void resetOctave() { base_ = kFirstBase; }
    /// 36, 48, 60 and 36 again.
    void cycleOctave();

    /// Reads the polled keys, in the order of the rows. While the user types text no key begins a
    /// note, not even later in the same press; releases count always.
    void poll(bool typing = false);

    /// The window's key events, auto-repeated presses included and auto-repeated releases left out.
    /// Whether the key is one of the nine.
    bool keyDown(KeyCode key);
    bool keyUp(KeyCode key);

    /// Whether a held key sounds its note.
    bool sounds() const;

    /// Ends every note that is held, as when the window goes.
    void releaseAll();

private:
    static constexpr std::size_t kPolledCount = 29;

    /// A key is up, sounds its note, or is down without a note (a rest).
    using HeldNote = std::optional<pitch::NoteNumber>;

    void begin(HeldNote& held, int offset);
    void end(HeldNote& held);
    static std::optional<std::size_t> eventKey(KeyCode key);

    const Runtime& runtime_;
    PianoKeysListener& listener_;
    Backspace backspace_;
    pitch::NoteNumber base_ = kFirstBase;
    std::array<HeldNote, kPolledCount> polled_;
    std::array<HeldNote, kRowEnds.size()> events_;
};
