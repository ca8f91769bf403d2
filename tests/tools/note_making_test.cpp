#include "answer_sound.h"
#include "tune.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace {

std::string readSource(const std::string& name) {
    std::ifstream file(NOTE_SOURCES + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Reads bytes front to back; past the end is a failure of the test and zeros.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    bool atEnd() const { return at_ >= bytes_.size(); }
    std::string_view take(std::size_t count) {
        EXPECT_LE(at_ + count, bytes_.size());
        at_ += count;
        return at_ <= bytes_.size() ? bytes_.substr(at_ - count, count) : std::string_view();
    }
    int byte() {
        const std::string_view one = take(1);
        return one.empty() ? 0 : static_cast<unsigned char>(one[0]);
    }
    int bigEndian(int width) {
        int value = 0;
        while (width-- > 0) {
            value = value << 8 | byte();
        }
        return value;
    }
    int littleEndian(int width) {
        int value = 0;
        for (int i = 0; i < width; ++i) {
            value |= byte() << 8 * i;
        }
        return value;
    }
    int delta() {
        int value = 0;
        for (int length = 1; length <= 4; ++length) {
            const int next = byte();
            value = value << 7 | (next & 0x7F);
            if ((next & 0x80) == 0) {
                return value;
            }
        }
        ADD_FAILURE() << "a delta time of more than four bytes";
        return value;
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

struct Track {
    int ticks = 0;
    int microsecondsPerQuarter = 0;
    int notes = 0;
};

// Reads a track's events to its end and checks that every note that begins also ends.
Track readTrack(Bytes events) {
    Track track;
    std::map<std::pair<int, int>, int> sounding;
    for (bool ended = false; !ended && !events.atEnd();) {
        track.ticks += events.delta();
        const int status = events.byte();
        if (status == 0xFF) {
            const int kind = events.byte();
            Bytes data(events.take(static_cast<std::size_t>(events.delta())));
            ended = kind == 0x2F;
            if (kind == 0x51) {
                track.microsecondsPerQuarter = data.bigEndian(3);
            }
        } else if (status >> 4 == 0xC) {
            EXPECT_LT(events.byte(), 128);
        } else {
            EXPECT_TRUE(status >> 4 == 8 || status >> 4 == 9) << status;
            const std::pair key(status & 0xF, events.byte());
            const bool begins = status >> 4 == 9 && events.byte() > 0;
            EXPECT_EQ(sounding[key], begins ? 0 : 1) << key.second;
            sounding[key] = begins ? 1 : 0;
            track.notes += begins ? 1 : 0;
            if (status >> 4 == 8) {
                events.byte();
            }
        }
        EXPECT_EQ(ended, events.atEnd());
    }
    EXPECT_TRUE(std::ranges::all_of(sounding, [](const auto& key) { return key.second == 0; }));
    return track;
}

TEST(NoteMaking, TuneIsAWellFormedMidiFileOfAboutTwoSeconds) {
    const auto tune = parseTune(readSource("tune.txt"));
    ASSERT_TRUE(std::holds_alternative<Tune>(tune));
    const std::string bytes = toMidiFile(std::get<Tune>(tune));
    Bytes file(bytes);

    EXPECT_EQ(file.take(4), "MThd");
    EXPECT_EQ(file.bigEndian(4), 6);
    EXPECT_EQ(file.bigEndian(2), 1);
    const int tracks = file.bigEndian(2);
    const int ticksPerQuarter = file.bigEndian(2);
    int microseconds = 0;
    int longest = 0;
    int notes = 0;
    for (int i = 0; i < tracks; ++i) {
        EXPECT_EQ(file.take(4), "MTrk");
        const Track track =
            readTrack(Bytes(file.take(static_cast<std::size_t>(file.bigEndian(4)))));
        microseconds = std::max(microseconds, track.microsecondsPerQuarter);
        longest = std::max(longest, track.ticks);
        notes += track.notes;
    }
    EXPECT_TRUE(file.atEnd());
    EXPECT_GT(notes, 10);
    const double seconds = 1e-6 * microseconds * longest / ticksPerQuarter;
    EXPECT_GE(seconds, 1.9);
    EXPECT_LE(seconds, 2.2);
    EXPECT_NEAR(seconds, secondsOf(std::get<Tune>(tune)), 0.001);
}

TEST(NoteMaking, AnswersAreWaveFilesThatBeginAndEndInSilence) {
    const auto parsed = parseAnswerSounds(readSource("answers.txt"));
    ASSERT_TRUE(std::holds_alternative<std::vector<AnswerSound>>(parsed));
    const auto& sounds = std::get<std::vector<AnswerSound>>(parsed);
    ASSERT_EQ(sounds.size(), 2U);
    EXPECT_EQ(sounds[0].name, "rok");
    EXPECT_EQ(sounds[1].name, "rko");
    for (const AnswerSound& sound : sounds) {
        const std::string bytes = toWaveFile(render(sound));
        Bytes file(bytes);
        EXPECT_EQ(file.take(4), "RIFF");
        EXPECT_EQ(file.littleEndian(4), static_cast<int>(bytes.size()) - 8);
        EXPECT_EQ(file.take(8), "WAVEfmt ");
        EXPECT_EQ(file.littleEndian(4), 16);
        for (const auto& [width, value] : std::initializer_list<std::pair<int, int>>{
                 {2, 1}, {2, 1}, {4, 44100}, {4, 88200}, {2, 2}, {2, 16}}) {
            EXPECT_EQ(file.littleEndian(width), value);
        }
        EXPECT_EQ(file.take(4), "data");
        const int length = file.littleEndian(4);
        EXPECT_EQ(static_cast<std::size_t>(length) + 44, bytes.size());
        EXPECT_GE(length, static_cast<int>(0.25 * 88200));
        EXPECT_LE(length, static_cast<int>(0.6 * 88200));
        std::vector<int> samples;
        while (!file.atEnd()) {
            samples.push_back(static_cast<std::int16_t>(file.littleEndian(2)));
        }
        const auto [lowest, highest] = std::ranges::minmax(samples);
        EXPECT_NEAR(std::max(-lowest, highest), 32767 * std::pow(10, -6 / 20.0), 2);
        // No click: the first samples and the last millisecond are nearly still.
        ASSERT_GT(samples.size(), 100U);
        const auto still = [](int sample) { return std::abs(sample) < 33; };
        EXPECT_TRUE(std::all_of(samples.begin(), samples.begin() + 4, still));
        EXPECT_TRUE(std::all_of(samples.end() - 44, samples.end(), still));
    }
}

}  // namespace
