#include "tune.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <numeric>
#include <optional>
#include <utility>

namespace {

constexpr std::size_t kMostVoices = 9;  // so that no voice meets the percussion channel
constexpr std::size_t kMostChords = 1000;
constexpr int kTicksPerQuarter = kTicksPerWhole / 4;

// "1/8" or "3/16", with a dot behind it for half as much again.
std::optional<int> parseValue(std::string_view word) {
    const bool dotted = word.ends_with('.');
    if (dotted) {
        word.remove_suffix(1);
    }
    const std::size_t bar = word.find('/');
    if (bar == std::string_view::npos) {
        return std::nullopt;
    }
    const auto count = parseInteger(word.substr(0, bar), 1, 64);
    const auto part = parseInteger(word.substr(bar + 1), 1, 64);
    if (!count || !part) {
        return std::nullopt;
    }
    const int numerator = kTicksPerWhole * *count * (dotted ? 3 : 2);
    const int denominator = *part * 2;
    return numerator % denominator == 0 ? std::optional(numerator / denominator) : std::nullopt;
}

// "c5+e5:1/4!104"; the velocity of the voice where the word gives none.
std::optional<Chord> parseChord(std::string_view word, int velocity) {
    Chord chord{{}, 0, velocity};
    if (const std::size_t mark = word.find('!'); mark != std::string_view::npos) {
        const auto given = parseInteger(word.substr(mark + 1), 1, 127);
        if (!given) {
            return std::nullopt;
        }
        chord.velocity = *given;
        word = word.substr(0, mark);
    }
    const std::size_t colon = word.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto ticks = parseValue(word.substr(colon + 1));
    if (!ticks) {
        return std::nullopt;
    }
    chord.ticks = *ticks;
    word = word.substr(0, colon);
    while (word != "-") {
        const std::size_t plus = std::min(word.find('+'), word.size());
        const auto key = parsePitch(word.substr(0, plus));
        if (!key || std::ranges::find(chord.keys, *key) != chord.keys.end()) {
            return std::nullopt;
        }
        chord.keys.push_back(*key);
        if (plus == word.size()) {
            break;
        }
        word.remove_prefix(plus + 1);
        if (word == "-") {
            return std::nullopt;
        }
    }
    return chord;
}

std::optional<Voice> parseVoice(const std::vector<std::string_view>& words) {
    if (words.size() != 6 || words[2] != "program" || words[4] != "velocity") {
        return std::nullopt;
    }
    const auto program = parseInteger(words[3], 0, 127);
    const auto velocity = parseInteger(words[5], 1, 127);
    if (!program || !velocity || words[1].size() > 100) {
        return std::nullopt;
    }
    return Voice{std::string(words[1]), *program, *velocity, {}};
}

// Adds what a line says to the tune; returns what is wrong with it, or nothing.
std::string addLine(Tune& tune, const std::vector<std::string_view>& words) {
    if (words[0] == "tempo") {
        const auto tempo =
            words.size() == 2 ? parseDecimal(words[1], 20, 400) : std::optional<double>();
        tune.tempo = tempo.value_or(0);
        return tempo ? "" : "expected: tempo 20..400";
    }
    if (words[0] == "voice") {
        auto voice = parseVoice(words);
        if (!voice) {
            return "expected: voice NAME program 0..127 velocity 1..127";
        }
        tune.voices.push_back(std::move(*voice));
        return tune.voices.size() <= kMostVoices ? "" : "too many voices";
    }
    if (tune.voices.empty()) {
        return "a note before the first voice";
    }
    Voice& voice = tune.voices.back();
    for (const std::string_view word : words) {
        auto chord = parseChord(word, voice.velocity);
        if (!chord) {
            return "not a note: " + std::string(word);
        }
        voice.chords.push_back(std::move(*chord));
    }
    return voice.chords.size() <= kMostChords ? "" : "too many notes";
}

void appendBigEndian(std::string& bytes, std::uint32_t value, int width) {
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xFFU);
    }
}

// A delta time: seven bits a byte, all but the last with the top bit set.
void appendDelta(std::string& bytes, int ticks) {
    for (int shift = 21; shift > 0; shift -= 7) {
        if (ticks >> shift != 0) {
            bytes += static_cast<char>((ticks >> shift & 0x7F) | 0x80);
        }
    }
    bytes += static_cast<char>(ticks & 0x7F);
}

void appendEvent(std::string& bytes, int delta, std::initializer_list<int> event) {
    appendDelta(bytes, delta);
    for (const int byte : event) {
        bytes += static_cast<char>(byte);
    }
}

void appendTrack(std::string& file, std::string events, int ticksToEnd) {
    appendEvent(events, ticksToEnd, {0xFF, 0x2F, 0});
    file += "MTrk";
    appendBigEndian(file, static_cast<std::uint32_t>(events.size()), 4);
    file += events;
}

std::string tempoEvents(double tempo) {
    std::string events;
    appendEvent(events, 0, {0xFF, 0x51, 3});
    appendBigEndian(events, static_cast<std::uint32_t>(std::lround(60e6 / tempo)), 3);
    return events;
}

// Appends the track of a voice. A rest only makes the next event later.
void appendVoice(std::string& file, const Voice& voice, int channel) {
    std::string events;
    appendEvent(events, 0, {0xFF, 0x03, static_cast<int>(voice.name.size())});
    events += voice.name;
    appendEvent(events, 0, {0xC0 | channel, voice.program});
    int waiting = 0;
    for (const Chord& chord : voice.chords) {
        for (const int key : chord.keys) {
            appendEvent(events, waiting, {0x90 | channel, key, chord.velocity});
            waiting = 0;
        }
        waiting += chord.ticks;
        for (const int key : chord.keys) {
            appendEvent(events, waiting, {0x80 | channel, key, 0});
            waiting = 0;
        }
    }
    appendTrack(file, std::move(events), waiting);
}

}  // namespace

SourceResult<Tune> parseTune(std::string_view text) {
    Tune tune;
    int lastLine = 1;
    for (const SourceLine& line : splitSource(text)) {
        lastLine = line.number;
        if (std::string wrong = addLine(tune, line.words); !wrong.empty()) {
            return SourceError{line.number, std::move(wrong)};
        }
    }
    if (tune.tempo == 0) {
        return SourceError{lastLine, "no tempo"};
    }
    if (tune.voices.empty()) {
        return SourceError{lastLine, "no voice"};
    }
    return tune;
}

double secondsOf(const Tune& tune) {
    int longest = 0;
    for (const Voice& voice : tune.voices) {
        longest = std::max(longest, std::accumulate(voice.chords.begin(), voice.chords.end(), 0,
                                                    [](int ticks, const Chord& chord) {
                                                        return ticks + chord.ticks;
                                                    }));
    }
    return longest * 60.0 / (tune.tempo * kTicksPerQuarter);
}

std::string toMidiFile(const Tune& tune) {
    std::string file = "MThd";
    appendBigEndian(file, 6, 4);
    appendBigEndian(file, 1, 2);
    appendBigEndian(file, static_cast<std::uint32_t>(tune.voices.size() + 1), 2);
    appendBigEndian(file, kTicksPerQuarter, 2);
    appendTrack(file, tempoEvents(tune.tempo), 0);
    for (std::size_t i = 0; i < tune.voices.size(); ++i) {
        appendVoice(file, tune.voices[i], static_cast<int>(i));
    }
    return file;
}
