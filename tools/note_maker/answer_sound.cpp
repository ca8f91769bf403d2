#include "answer_sound.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <optional>
#include <utility>

namespace {

constexpr std::size_t kMostSounds = 16;
constexpr std::size_t kMostParts = 64;  // partials or notes of a sound
constexpr double kFadeOut = 0.03;       // seconds
constexpr int kBytesPerSample = 2;

// What follows a line's first word: a value, then pairs of a name and a value.
class Fields {
public:
    explicit Fields(const std::vector<std::string_view>& words) : words_(words) {}

    // The number after the given name, which must be word i.
    double number(std::size_t i, std::string_view name, double least, double most) {
        const bool named = i + 1 < words_.size() && words_[i] == name;
        const auto value = named ? parseDecimal(words_[i + 1], least, most) : std::nullopt;
        good_ = good_ && value;
        return value.value_or(0);
    }

    // True when every number was found and nothing follows them.
    bool good(std::size_t count) const { return good_ && words_.size() == count; }

private:
    const std::vector<std::string_view>& words_;
    bool good_ = true;
};

// A name becomes a file's name, so it is letters only.
bool isName(std::string_view word) {
    return !word.empty() && word.size() <= 32 &&
           std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
}

std::string addSound(std::vector<AnswerSound>& sounds, const std::vector<std::string_view>& words) {
    Fields fields(words);
    const double seconds = fields.number(2, "seconds", 0.1, 5);
    const double peak = fields.number(4, "peak", -60, 0);
    if (!fields.good(6) || !isName(words[1])) {
        return "expected: sound NAME seconds 0.1..5 peak -60..0";
    }
    if (std::ranges::find(sounds, words[1], &AnswerSound::name) != sounds.end()) {
        return "this sound is there already";
    }
    sounds.push_back({std::string(words[1]), seconds, peak, {}, {}});
    return sounds.size() <= kMostSounds ? "" : "too many sounds";
}

std::string addPartial(AnswerSound& sound, const std::vector<std::string_view>& words) {
    Fields fields(words);
    const double ratio = fields.number(0, "partial", 0.1, 20);
    const double level = fields.number(2, "level", 0.001, 10);
    const double decay = fields.number(4, "decay", 0.001, 5);
    if (!fields.good(6)) {
        return "expected: partial 0.1..20 level 0.001..10 decay 0.001..5";
    }
    sound.partials.push_back({ratio, level, decay});
    return sound.partials.size() <= kMostParts ? "" : "too many partials";
}

std::string addStrike(AnswerSound& sound, const std::vector<std::string_view>& words) {
    Fields fields(words);
    const double at = fields.number(2, "at", 0, sound.seconds);
    const double attack = fields.number(4, "attack", 0.001, 1);
    const double level = fields.number(6, "level", 0.001, 10);
    const auto pitch = words.size() > 1 ? parsePitch(words[1]) : std::nullopt;
    if (!fields.good(8) || !pitch) {
        return "expected: note PITCH at SECONDS attack 0.001..1 level 0.001..10";
    }
    sound.strikes.push_back({440 * std::exp2((*pitch - 69) / 12.0), at, attack, level});
    return sound.strikes.size() <= kMostParts ? "" : "too many notes";
}

std::string addLine(std::vector<AnswerSound>& sounds, const std::vector<std::string_view>& words) {
    if (words[0] == "sound") {
        return addSound(sounds, words);
    }
    if (words[0] != "partial" && words[0] != "note") {
        return "unknown word: " + std::string(words[0]);
    }
    if (sounds.empty()) {
        return std::string(words[0]) + " before the first sound";
    }
    return words[0] == "partial" ? addPartial(sounds.back(), words)
                                 : addStrike(sounds.back(), words);
}

// Half a cosine from 0 to 1, so that an edge has no click.
double smoothStep(double position) {
    return 0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp(position, 0.0, 1.0));
}

void addNote(std::vector<double>& samples, const Strike& strike, const Partial& partial) {
    const double frequency = strike.frequency * partial.ratio;
    if (frequency >= kSampleRate / 2.0) {
        return;
    }
    const auto first = static_cast<std::size_t>(strike.at * kSampleRate);
    for (std::size_t i = first; i < samples.size(); ++i) {
        const double time = static_cast<double>(i - first) / kSampleRate;
        samples[i] += strike.level * partial.level * smoothStep(time / strike.attack) *
                      std::exp(-time / partial.decay) *
                      std::sin(2 * std::numbers::pi * frequency * time);
    }
}

void appendLittleEndian(std::string& bytes, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i) {
        bytes += static_cast<char>(value >> 8 * i & 0xFFU);
    }
}

}  // namespace

SourceResult<std::vector<AnswerSound>> parseAnswerSounds(std::string_view text) {
    std::vector<AnswerSound> sounds;
    for (const SourceLine& line : splitSource(text)) {
        if (std::string wrong = addLine(sounds, line.words); !wrong.empty()) {
            return SourceError{line.number, std::move(wrong)};
        }
    }
    return sounds;
}

std::vector<double> render(const AnswerSound& sound) {
    std::vector<double> samples(static_cast<std::size_t>(sound.seconds * kSampleRate));
    for (const Strike& strike : sound.strikes) {
        for (const Partial& partial : sound.partials) {
            addNote(samples, strike, partial);
        }
    }
    double loudest = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto left = static_cast<double>(samples.size() - 1 - i);
        samples[i] *= smoothStep(left / (kFadeOut * kSampleRate));
        loudest = std::max(loudest, std::abs(samples[i]));
    }
    const double gain = loudest > 0 ? std::pow(10, sound.peak / 20) / loudest : 0;
    for (double& sample : samples) {
        sample *= gain;
    }
    return samples;
}

std::string toWaveFile(const std::vector<double>& samples) {
    const auto bytes = static_cast<std::uint32_t>(samples.size() * kBytesPerSample);
    std::string file = "RIFF";
    appendLittleEndian(file, 36 + bytes, 4);
    file += "WAVEfmt ";
    appendLittleEndian(file, 16, 4);
    appendLittleEndian(file, 1, 2);  // plain samples
    appendLittleEndian(file, 1, 2);  // channels
    appendLittleEndian(file, kSampleRate, 4);
    appendLittleEndian(file, kSampleRate * kBytesPerSample, 4);
    appendLittleEndian(file, kBytesPerSample, 2);
    appendLittleEndian(file, 8 * kBytesPerSample, 2);
    file += "data";
    appendLittleEndian(file, bytes, 4);
    for (const double sample : samples) {
        const long value = std::lround(std::clamp(sample, -1.0, 1.0) * 32767);
        appendLittleEndian(file, static_cast<std::uint32_t>(value), kBytesPerSample);
    }
    return file;
}
