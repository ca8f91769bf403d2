#pragma once

#include "source_line.h"

#include <string>
#include <string_view>
#include <vector>

constexpr int kSampleRate = 44100;

// A sine at a multiple of the note's frequency that dies away.
struct Partial {
    double ratio = 0;
    double level = 0;
    double decay = 0;  // seconds to 1/e
};

struct Strike {
    double frequency = 0;  // Hz
    double at = 0;         // seconds
    double attack = 0;     // seconds
    double level = 0;
};

struct AnswerSound {
    std::string name;
    double seconds = 0;
    double peak = 0;  // dB, full scale is 0
    std::vector<Partial> partials;
    std::vector<Strike> strikes;
};

// Reads the source of the sounds.
SourceResult<std::vector<AnswerSound>> parseAnswerSounds(std::string_view text);

// The sound's samples in -1..1, silent at both ends.
std::vector<double> render(const AnswerSound& sound);

// A wave file of 16-bit samples on one channel.
std::string toWaveFile(const std::vector<double>& samples);
