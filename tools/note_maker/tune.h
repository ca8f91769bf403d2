#pragma once

#include "source_line.h"

#include <string>
#include <string_view>
#include <vector>

// Ticks in a whole note: every value of a tune is a whole number of them.
constexpr int kTicksPerWhole = 1920;

// Keys struck together; no keys is a rest.
struct Chord {
    std::vector<int> keys;
    int ticks = 0;
    int velocity = 0;
};

// One line of music on a MIDI channel of its own.
struct Voice {
    std::string name;
    int program = 0;
    int velocity = 0;
    std::vector<Chord> chords;
};

struct Tune {
    double tempo = 0;  // quarter notes a minute
    std::vector<Voice> voices;
};

// Reads the source of a tune.
SourceResult<Tune> parseTune(std::string_view text);

// How long the tune lasts, in seconds.
double secondsOf(const Tune& tune);

// The tune as a standard MIDI file of format 1: the tempo's track, then one for each voice.
std::string toMidiFile(const Tune& tune);
