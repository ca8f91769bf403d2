#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <memory>
#include <vector>

/// A standard MIDI file that is being played by FluidSynth's own player: it says which messages are
/// due. The player resets the synthesizer that it belongs to, so it has one without instruments,
/// which only counts the time.
class Tune {
public:
    /// From the file's beginning. Nothing if it is no MIDI file, has no events, or counts frames of
    /// film instead of quarter notes.
    static std::unique_ptr<Tune> start(QByteArrayView file);
    ~Tune();
    Tune(const Tune&) = delete;
    Tune& operator=(const Tune&) = delete;

    /// Goes on to an instant, in seconds from the beginning. Answers the notes, programs,
    /// controllers and bends on the way as packed short messages, valid until the next call. The
    /// player counts milliseconds, and takes the nearest tick.
    const std::vector<std::uint32_t>& messagesUntil(double seconds);

    /// Whether all is done, some two seconds after the last message.
    bool over() const;

private:
    struct Player;
    explicit Tune(std::unique_ptr<Player> player);
    std::unique_ptr<Player> player_;
};
