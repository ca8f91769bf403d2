#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <algorithm>
#include <cstdint>
#include <optional>

/// Reads numbers from bytes of unknown origin and never past their end.
class ByteReader {
public:
    explicit ByteReader(QByteArrayView bytes) : bytes_(bytes) {}

    qsizetype left() const { return bytes_.size() - at_; }

    std::optional<std::uint8_t> byte() {
        if (left() < 1)
            return std::nullopt;
        return static_cast<std::uint8_t>(bytes_[at_++]);
    }

    std::optional<std::uint32_t> bigEndian(int size) {
        if (left() < size)
            return std::nullopt;
        std::uint32_t value = 0;
        for (int i = 0; i < size; ++i)
            value = value << 8 | static_cast<std::uint8_t>(bytes_[at_++]);
        return value;
    }

    std::optional<std::uint32_t> littleEndian(int size) {
        if (left() < size)
            return std::nullopt;
        std::uint32_t value = 0;
        for (int i = 0; i < size; ++i)
            value |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes_[at_++])) << 8 * i;
        return value;
    }

    /// The next `size` bytes, or as many as there are.
    QByteArrayView take(std::uint32_t size) {
        const qsizetype taken = std::min<qsizetype>(left(), size);
        const QByteArrayView part = bytes_.sliced(at_, taken);
        at_ += taken;
        return part;
    }

private:
    QByteArrayView bytes_;
    qsizetype at_ = 0;
};
