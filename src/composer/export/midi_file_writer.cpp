#include "composer/export/midi_file_writer.h"

#include "composer/export/melody_score.h"

#include <algorithm>
#include <cmath>

namespace midi_file {
namespace {

constexpr double kMsPerMinute = 60'000;
constexpr int kMicrosecondsPerTick = 1000;
/// A quarter note's microseconds have 24 bits; this many ticks are the most that fit.
constexpr int kMostTicks = 0xFFFFFF / kMicrosecondsPerTick;
/// The longest time between two events, of four groups of 7 bits.
constexpr std::int64_t kLongestDelta = 0x0FFFFFFF;

constexpr char kText = 0x01;
constexpr char kTrackName = 0x03;
constexpr char kEndOfTrack = 0x2F;
constexpr char kTempo = 0x51;

void appendBigEndian(QByteArray& bytes, std::uint32_t number, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
}

/// Groups of 7 bits, the highest first; all but the last have their top bit set.
void appendVariable(QByteArray& bytes, std::uint32_t number) {
    for (int shift = 21; shift > 0; shift -= 7) {
        if (number >> shift != 0)
            bytes += static_cast<char>((number >> shift & 0x7F) | 0x80);
    }
    bytes += static_cast<char>(number & 0x7F);
}

void appendMeta(QByteArray& bytes, char kind, const QByteArray& content) {
    bytes += '\xFF';
    bytes += kind;
    appendVariable(bytes, static_cast<std::uint32_t>(content.size()));
    bytes += content;
}

/// A delta time above the format's limit is made of empty text events in between.
void appendDelta(QByteArray& bytes, std::int64_t ticks) {
    for (; ticks > kLongestDelta; ticks -= kLongestDelta) {
        appendVariable(bytes, kLongestDelta);
        appendMeta(bytes, kText, {});
    }
    appendVariable(bytes, static_cast<std::uint32_t>(ticks));
}

void appendMessage(QByteArray& bytes, std::uint32_t packed) {
    const bool isProgram = (packed & 0xF0) == 0xC0;
    for (int byte = 0; byte < (isProgram ? 2 : 3); ++byte)
        bytes += static_cast<char>(packed >> 8 * byte);
}

void appendChunk(QByteArray& bytes, const char* kind, const QByteArray& content) {
    bytes += kind;
    appendBigEndian(bytes, static_cast<std::uint32_t>(content.size()), 4);
    bytes += content;
}

QByteArray trackOf(const MelodyScore& score, int ticksPerQuarter, const QString& name) {
    QByteArray tempo;
    appendBigEndian(tempo, static_cast<std::uint32_t>(ticksPerQuarter * kMicrosecondsPerTick), 3);
    QByteArray track;
    appendDelta(track, 0);
    appendMeta(track, kTrackName, name.toUtf8());
    appendDelta(track, 0);
    appendMeta(track, kTempo, tempo);
    std::int64_t now = 0;
    for (const TimedMessage& timed : score.messages) {
        appendDelta(track, timed.ms - now);
        appendMessage(track, timed.message);
        now = timed.ms;
    }
    appendDelta(track, score.endMs - now);
    appendMeta(track, kEndOfTrack, {});
    return track;
}

}  // namespace

QByteArray write(const MelodyScore& score, int tempo, const QString& name) {
    constexpr std::uint32_t kOneTrackInAll = 0;
    const int ticksPerQuarter =
        std::clamp(static_cast<int>(std::lround(kMsPerMinute / tempo)), 1, kMostTicks);
    QByteArray header;
    appendBigEndian(header, kOneTrackInAll, 2);
    appendBigEndian(header, 1, 2);
    appendBigEndian(header, static_cast<std::uint32_t>(ticksPerQuarter), 2);
    QByteArray bytes;
    appendChunk(bytes, "MThd", header);
    appendChunk(bytes, "MTrk", trackOf(score, ticksPerQuarter, name));
    return bytes;
}

}  // namespace midi_file
