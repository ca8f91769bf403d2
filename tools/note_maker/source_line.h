#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// What is wrong with a source, and in which of its lines (from 1).
struct SourceError {
    int line = 0;
    std::string message;
};

template <typename T>
using SourceResult = std::variant<T, SourceError>;

// A line of a source that says something: its words, comments left out.
struct SourceLine {
    int number = 0;
    std::vector<std::string_view> words;
};

// The lines of a text that are not empty. The words point into the text.
std::vector<SourceLine> splitSource(std::string_view text);

// The whole word as a number within the limits, both included.
std::optional<int> parseInteger(std::string_view word, int least, int most);
std::optional<double> parseDecimal(std::string_view word, double least, double most);

// The MIDI number of a pitch such as "c4" (60), "f#5" or "bb3"; 0..127.
std::optional<int> parsePitch(std::string_view word);
