#pragma once

#include <QByteArray>

#include <cstdint>

/// Files made byte by byte for the tests of what reads them.
namespace bytes {

inline QByteArray number(std::uint32_t value, int size, bool littleEndian = true) {
    QByteArray result;
    for (int i = 0; i < size; ++i)
        result += static_cast<char>(value >> 8 * (littleEndian ? i : size - 1 - i));
    return result;
}

inline QByteArray wave(std::uint32_t encoding, std::uint32_t channels, std::uint32_t bits,
                       const QByteArray& data, std::uint32_t rate = 8000) {
    const std::uint32_t frame = channels * bits / 8;
    const auto size = static_cast<std::uint32_t>(data.size());
    return "RIFF" + number(36 + size, 4) + "WAVEfmt " + number(16, 4) + number(encoding, 2) +
           number(channels, 2) + number(rate, 4) + number(rate * frame, 4) + number(frame, 2) +
           number(bits, 2) + "data" + number(size, 4) + data;
}

inline QByteArray track(const QByteArray& content) {
    return "MTrk" + number(static_cast<std::uint32_t>(content.size()), 4, false) + content;
}

inline QByteArray midi(std::uint32_t format, std::uint32_t division, const QByteArray& tracks,
                       std::uint32_t count = 1) {
    return "MThd" + number(6, 4, false) + number(format, 2, false) + number(count, 2, false) +
           number(division, 2, false) + tracks;
}

}  // namespace bytes
