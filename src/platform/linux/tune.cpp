#include "platform/linux/tune.h"

#include "platform/linux/byte_reader.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kDefaultTempo = 500'000;  // microseconds for a quarter note
constexpr std::uint8_t kMetaEvent = 0xFF;
constexpr std::uint8_t kMetaTempo = 0x51;
constexpr std::uint8_t kMetaEndOfTrack = 0x2F;

/// A channel message, or a change of tempo where `tempo` is not 0.
struct TickEvent {
    std::uint64_t tick;
    std::uint32_t message;
    std::uint32_t tempo;
};

std::optional<std::uint32_t> variableLength(ByteReader& reader) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        const auto byte = reader.byte();
        if (!byte)
            return std::nullopt;
        value = value << 7 | (*byte & 0x7Fu);
        if (!(*byte & 0x80u))
            return value;
    }
    return std::nullopt;
}

int dataBytes(std::uint8_t status) {
    const int kind = status & 0xF0;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

/// Reads one track to its end, or to the first byte that makes no sense.
class TrackReader {
public:
    TrackReader(QByteArrayView bytes, std::vector<TickEvent>& events)
        : reader_(bytes), events_(events) {}

    void read() {
        while (readEvent()) {
        }
    }

private:
    bool readEvent() {
        const auto delta = variableLength(reader_);
        const auto first = delta ? reader_.byte() : std::nullopt;
        if (!first)
            return false;
        tick_ += *delta;
        if (*first == kMetaEvent)
            return readMeta();
        if (*first == 0xF0 || *first == 0xF7)
            return skipSystemExclusive();
        return readChannelMessage(*first);
    }

    bool readMeta() {
        const auto type = reader_.byte();
        const auto length = variableLength(reader_);
        if (!type || !length || *type == kMetaEndOfTrack)
            return false;
        ByteReader content(reader_.take(*length));
        if (*type != kMetaTempo)
            return true;
        const auto tempo = content.bigEndian(3);
        if (tempo && *tempo > 0)
            events_.push_back({tick_, 0, *tempo});
        return true;
    }

    bool skipSystemExclusive() {
        const auto length = variableLength(reader_);
        if (length)
            reader_.take(*length);
        return length.has_value();
    }

    bool readChannelMessage(std::uint8_t first) {
        std::uint32_t data = first;
        int missing = 0;
        if (first & 0x80u) {
            if (first >= 0xF0)
                return false;
            runningStatus_ = first;
            missing = dataBytes(runningStatus_);
            data = 0;
        } else {
            if (runningStatus_ == 0)
                return false;
            missing = dataBytes(runningStatus_) - 1;
        }
        for (int i = dataBytes(runningStatus_) - missing; missing > 0; ++i, --missing) {
            const auto byte = reader_.byte();
            if (!byte || *byte & 0x80u)
                return false;
            data |= static_cast<std::uint32_t>(*byte) << 8 * i;
        }
        events_.push_back({tick_, data << 8 | runningStatus_, 0});
        return true;
    }

    ByteReader reader_;
    std::vector<TickEvent>& events_;
    std::uint64_t tick_ = 0;
    std::uint8_t runningStatus_ = 0;
};

/// Seconds for one tick at a tempo. A negative division counts frames of film and ticks in them.
double tickSeconds(std::int16_t division, std::uint32_t tempo) {
    if (division > 0)
        return tempo / 1e6 / division;
    const int framesPerSecond = -(division >> 8);
    const int ticksPerFrame = division & 0xFF;
    return 1.0 / (framesPerSecond * std::max(ticksPerFrame, 1));
}

Tune timed(std::vector<TickEvent> ticks, std::int16_t division) {
    std::stable_sort(ticks.begin(), ticks.end(),
                     [](const TickEvent& a, const TickEvent& b) { return a.tick < b.tick; });
    Tune tune;
    double seconds = 0;
    double perTick = tickSeconds(division, kDefaultTempo);
    std::uint64_t tick = 0;
    for (const TickEvent& event : ticks) {
        seconds += static_cast<double>(event.tick - tick) * perTick;
        tick = event.tick;
        if (event.tempo != 0)
            perTick = tickSeconds(division, event.tempo);
        else
            tune.events.push_back({seconds, event.message});
    }
    return tune;
}

}  // namespace

std::optional<Tune> readTune(QByteArrayView file) {
    ByteReader reader(file);
    if (reader.take(4) != QByteArrayView("MThd"))
        return std::nullopt;
    const auto headerLength = reader.bigEndian(4);
    if (!headerLength || *headerLength < 6)
        return std::nullopt;
    ByteReader header(reader.take(*headerLength));
    const auto format = header.bigEndian(2);
    const auto tracks = header.bigEndian(2);
    const auto division = header.bigEndian(2);
    if (!format || !tracks || !division || *format > 2 || *division == 0)
        return std::nullopt;

    std::vector<TickEvent> events;
    bool anyTrack = false;
    while (reader.left() >= 8) {
        const bool isTrack = reader.take(4) == QByteArrayView("MTrk");
        const auto length = reader.bigEndian(4);
        const QByteArrayView content = reader.take(*length);
        if (!isTrack)
            continue;
        anyTrack = true;
        TrackReader(content, events).read();
    }
    if (!anyTrack)
        return std::nullopt;
    return timed(std::move(events), static_cast<std::int16_t>(*division));
}
