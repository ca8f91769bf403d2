#include "composer/exchange/midi_recording.h"

#include "composer/melody/melody.h"
#include "platform/user_text.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace midi_recording {
namespace {

using imported::LeftOut;

constexpr int kChannels = 16;
constexpr int kNotes = 128;
constexpr int kMostTracks = 1000;
constexpr std::size_t kMostMetres = Melody::kMaxEntries;

/// Ticks beyond any melody, far from an overflow of their sums.
constexpr std::int64_t kLastTick = std::int64_t{1} << 40;

/// Bytes of a chunk, one after the other; behind the end there are zeros, and `failed` is true.
class Cursor {
public:
    explicit Cursor(QByteArrayView bytes) : bytes_(bytes) {}

    bool failed() const { return failed_; }
    bool atEnd() const { return at_ >= bytes_.size(); }
    qsizetype left() const { return bytes_.size() - at_; }

    int byte() {
        if (atEnd()) {
            failed_ = true;
            return 0;
        }
        return static_cast<unsigned char>(bytes_[at_++]);
    }

    /// Puts the last byte back.
    void back() { --at_; }

    std::int64_t number(int size) {
        std::int64_t value = 0;
        for (int i = 0; i < size; ++i)
            value = value << 8 | byte();
        return value;
    }

    /// Groups of 7 bits, at most four.
    std::int64_t variable() {
        std::int64_t value = 0;
        for (int i = 0; i < 4; ++i) {
            const int group = byte();
            value = value << 7 | (group & 0x7F);
            if (group < 0x80)
                return value;
        }
        failed_ = true;
        return 0;
    }

    QByteArrayView take(std::int64_t size) {
        if (size > left()) {
            failed_ = true;
            size = 0;
        }
        const QByteArrayView taken = bytes_.sliced(at_, size);
        at_ += size;
        return taken;
    }

private:
    QByteArrayView bytes_;
    qsizetype at_ = 0;
    bool failed_ = false;
};

void leaveOut(Recording& recording, LeftOut what) {
    auto& all = recording.leftOut;
    if (std::find(all.begin(), all.end(), what) == all.end())
        all.push_back(what);
}

/// What the tracks share: the first tempo, and the instrument of each channel's first note.
struct Setting {
    std::int64_t tempoTick = kLastTick;
    std::array<std::optional<int>, kChannels> programs;
    std::array<bool, kChannels> plays{};
};

/// Reads the events of one track.
class TrackReader {
public:
    TrackReader(QByteArrayView bytes, Recording& recording, Setting& setting)
        : cursor_(bytes), recording_(recording), setting_(setting) {
        for (auto& channel : sounding_)
            channel.fill(-1);
    }

    /// Whether the track is whole.
    bool read() {
        bool ended = false;
        while (!ended && !cursor_.atEnd() && !cursor_.failed() && !tooLong()) {
            tick_ = std::min(tick_ + cursor_.variable(), kLastTick);
            int status = cursor_.byte();
            if (status < 0x80) {
                cursor_.back();
                status = running_;
            }
            if (status == 0xFF)
                ended = readMeta();
            else if (status == 0xF0 || status == 0xF7)
                cursor_.take(cursor_.variable());
            else if (status < 0x80 || status > 0xF0)
                return false;
            else
                readMessage(status);
        }
        recording_.end = std::max(recording_.end, tick_);
        for (auto& channel : sounding_) {
            for (int& index : channel)
                endNote(index);
        }
        return !cursor_.failed();
    }

private:
    bool tooLong() const { return recording_.notes.size() > Melody::kMaxEntries; }

    void readMessage(int status) {
        running_ = status;
        const auto channel = static_cast<std::size_t>(status & 0x0F);
        const int kind = status & 0xF0;
        const int first = cursor_.byte() & 0x7F;
        if (kind == 0xC0) {
            changeProgram(channel, first);
            return;
        }
        if (kind == 0xD0) {
            leaveOut(recording_, LeftOut::Others);
            return;
        }
        const int second = cursor_.byte() & 0x7F;
        if (kind == 0x80 || kind == 0x90) {
            int& index = sounding_[channel][static_cast<std::size_t>(first)];
            endNote(index);
            if (kind == 0x90 && second > 0 && !cursor_.failed()) {
                setting_.plays[channel] = true;
                index = static_cast<int>(recording_.notes.size());
                recording_.notes.push_back(
                    {tick_, tick_, first, second, static_cast<int>(channel)});
            }
        } else {
            leaveOut(recording_, LeftOut::Others);
        }
    }

    void changeProgram(std::size_t channel, int program) {
        if (!setting_.plays[channel])
            setting_.programs[channel] = program;
        else if (setting_.programs[channel] != program)
            leaveOut(recording_, LeftOut::Others);
    }

    void endNote(int& index) {
        if (index >= 0)
            recording_.notes[static_cast<std::size_t>(index)].off = tick_;
        index = -1;
    }

    /// Whether it is the end of the track.
    bool readMeta() {
        const int kind = cursor_.byte();
        Cursor content(cursor_.take(cursor_.variable()));
        switch (kind) {
            case 0x05:
                leaveOut(recording_, LeftOut::Lyrics);
                break;
            case 0x51:
                setTempo(static_cast<int>(content.number(3)));
                break;
            case 0x58:
                setMetre(content);
                break;
            case 0x2F:
                return true;
            default:
                break;
        }
        return false;
    }

    void setTempo(int usPerQuarter) {
        if (usPerQuarter <= 0)
            return;
        const bool isFirst = tick_ < setting_.tempoTick;
        if (setting_.tempoTick != kLastTick && usPerQuarter != recording_.usPerQuarter)
            leaveOut(recording_, LeftOut::TempoChanges);
        if (isFirst) {
            setting_.tempoTick = tick_;
            recording_.usPerQuarter = usPerQuarter;
        }
    }

    void setMetre(Cursor& content) {
        const int beats = content.byte();
        const int power = content.byte();
        constexpr int kSmallestBeat = 6;
        if (content.failed() || beats == 0 || power > kSmallestBeat ||
            recording_.metres.size() == kMostMetres)
            return;
        const std::int64_t bar = std::int64_t{recording_.ticksPerQuarter} * 4 * beats >> power;
        recording_.metres.push_back({tick_, std::max<std::int64_t>(bar, 1), 1});
    }

    Cursor cursor_;
    Recording& recording_;
    Setting& setting_;
    std::int64_t tick_ = 0;
    int running_ = 0;
    /// By channel and note, the place of one that sounds, or -1.
    std::array<std::array<int, kNotes>, kChannels> sounding_{};
};

/// Puts the metres in order and counts their bars.
void countBars(Recording& recording) {
    std::vector<Metre>& metres = recording.metres;
    std::stable_sort(metres.begin(), metres.end(),
                     [](const Metre& a, const Metre& b) { return a.tick < b.tick; });
    Metre before{0, std::int64_t{recording.ticksPerQuarter} * 4, 1};
    for (Metre& metre : metres) {
        const std::int64_t ticks = metre.tick - before.tick;
        metre.bar = before.bar + (ticks + before.barTicks - 1) / before.barTicks;
        before = metre;
    }
}

/// Reads the header; what is wrong with it, or the empty text.
QString readHeader(Cursor& file, Recording& recording) {
    if (file.take(4) != QByteArrayView("MThd"))
        return UserText::tr("non è un file MIDI");
    Cursor header(file.take(file.number(4)));
    const std::int64_t format = header.number(2);
    header.number(2);
    const auto division = static_cast<int>(header.number(2));
    if (header.failed() || division == 0)
        return UserText::tr("il file è danneggiato");
    if (format > 1)
        return UserText::tr("contiene più brani (formato 2)");
    if (division >= 0x8000)
        return UserText::tr("conta il tempo in fotogrammi (SMPTE), non in note");
    recording.ticksPerQuarter = division;
    return {};
}

}  // namespace

std::int64_t Recording::barOf(std::int64_t tick) const {
    const auto after =
        std::upper_bound(metres.begin(), metres.end(), tick,
                         [](std::int64_t at, const Metre& metre) { return at < metre.tick; });
    const Metre metre = after == metres.begin() ? Metre{0, std::int64_t{ticksPerQuarter} * 4, 1}
                                                : *std::prev(after);
    return metre.bar + (tick - metre.tick) / metre.barTicks;
}

Recording read(const QByteArray& bytes) {
    Recording recording;
    Setting setting;
    Cursor file(bytes);
    recording.fault =
        bytes.size() > kLargestFile ? UserText::tr("è troppo grande") : readHeader(file, recording);
    constexpr qsizetype kChunkHeader = 8;
    int tracks = 0;
    while (recording.fault.isEmpty() && file.left() >= kChunkHeader) {
        const QByteArrayView kind = file.take(4);
        const QByteArrayView content = file.take(file.number(4));
        const bool isTrack = kind == QByteArrayView("MTrk");
        tracks += isTrack ? 1 : 0;
        if (tracks > kMostTracks)
            recording.fault = UserText::tr("ha più di %1 tracce").arg(kMostTracks);
        else if (file.failed() || (isTrack && !TrackReader(content, recording, setting).read()))
            recording.fault = UserText::tr("il file è danneggiato");
        else if (recording.notes.size() > Melody::kMaxEntries)
            recording.fault = UserText::tr("ha più di %1 note").arg(Melody::kMaxEntries);
    }
    std::stable_sort(recording.notes.begin(), recording.notes.end(),
                     [](const Note& a, const Note& b) { return a.on < b.on; });
    countBars(recording);
    if (!recording.notes.empty()) {
        recording.program =
            setting.programs[static_cast<std::size_t>(recording.notes.front().channel)];
    }
    return recording;
}

}  // namespace midi_recording
