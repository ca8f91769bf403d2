#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The bytes of MIDI 1.0, as far as the program sends and receives them.
namespace midi_bytes {

constexpr std::uint32_t kNoteOff = 0x80;
constexpr std::uint32_t kNoteOn = 0x90;
constexpr std::uint32_t kController = 0xB0;

constexpr std::uint32_t kDamperPedal = 64;
constexpr std::uint32_t kAllSoundsOff = 120;
constexpr std::uint32_t kAllNotesOff = 123;

/// The kind of a packed channel message, and its channel 0..15.
constexpr std::uint32_t kindOf(std::uint32_t message) {
    return message & 0xF0u;
}
constexpr std::uint32_t channelOf(std::uint32_t message) {
    return message & 0x0Fu;
}
constexpr std::uint32_t data1Of(std::uint32_t message) {
    return message >> 8 & 0x7Fu;
}
constexpr std::uint32_t data2Of(std::uint32_t message) {
    return message >> 16 & 0x7Fu;
}

constexpr bool isChannelMessage(std::uint32_t message) {
    const std::uint32_t status = message & 0xFFu;
    return status >= 0x80 && status < 0xF0;
}

/// How many data bytes follow the status byte of a channel message.
constexpr std::size_t dataCount(std::uint32_t status) {
    const std::uint32_t kind = kindOf(status);
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

/// Whether a message is about keys going down or up: a note, the damper pedal, or a controller that
/// ends notes.
constexpr bool isAboutKeys(std::uint32_t message) {
    const std::uint32_t kind = kindOf(message);
    const std::uint32_t number = data1Of(message);
    return kind == kNoteOff || kind == kNoteOn ||
           (kind == kController &&
            (number == kDamperPedal || number == kAllSoundsOff || number == kAllNotesOff));
}

/// Takes the channel messages out of a stream of bytes, which may be anything: running status,
/// real-time bytes within a message, system exclusive, messages that are cut off.
class Parser {
public:
    /// Calls `take` with each message, packed, when its last byte has come.
    template <typename Take>
    void feed(const unsigned char* bytes, std::size_t count, Take take) {
        for (std::size_t i = 0; i < count; ++i)
            feed(bytes[i], take);
    }

private:
    static constexpr unsigned char kFirstStatus = 0x80;
    static constexpr unsigned char kFirstSystem = 0xF0;
    static constexpr unsigned char kFirstRealTime = 0xF8;

    template <typename Take>
    void feed(unsigned char byte, Take& take) {
        if (byte >= kFirstRealTime)
            return;
        if (byte >= kFirstStatus) {
            status_ = byte < kFirstSystem ? byte : 0;
            filled_ = 0;
            return;
        }
        if (status_ == 0)
            return;
        data_[filled_++] = byte;
        if (filled_ < dataCount(status_))
            return;
        const std::uint32_t second = filled_ == 2 ? data_[1] : 0;
        filled_ = 0;
        take(status_ | static_cast<std::uint32_t>(data_[0]) << 8 | second << 16);
    }

    std::uint32_t status_ = 0;  ///< of the channel message that goes on; 0 for none
    std::array<unsigned char, 2> data_{};
    std::size_t filled_ = 0;
};

}  // namespace midi_bytes
