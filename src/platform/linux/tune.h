#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <vector>

/// A MIDI file made ready to play: the channel messages of all tracks, in order.
struct Tune {
    struct Event {
        double seconds;         ///< from the start
        std::uint32_t message;  ///< packed short message
    };
    std::vector<Event> events;
};

/// Reads a standard MIDI file (format 0, 1 or 2). A file that ends too early gives what it holds;
/// nothing if it is not a MIDI file at all.
std::optional<Tune> readTune(QByteArrayView file);
