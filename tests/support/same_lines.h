#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// What happens at a millisecond, as `MidiRecorder` writes it.
inline std::string at(std::int64_t ms, const std::string& what) {
    std::array<char, 24> time{};
    std::snprintf(time.data(), time.size(), "%.3f ", static_cast<double>(ms) / 1000);
    return time.data() + what;
}

/// The same text, at the same time but for its rounding.
inline bool isSameLine(const std::string& line, const std::string& expected) {
    const auto text = [](const std::string& from) { return from.substr(from.find(' ') + 1); };
    const auto timed = [](const std::string& from) { return std::isdigit(from[0]) != 0; };
    return line == expected || (text(line) == text(expected) && timed(line) && timed(expected) &&
                                std::abs(std::strtod(line.c_str(), nullptr) -
                                         std::strtod(expected.c_str(), nullptr)) < 0.0011);
}

/// Compares two long lists and shows them only around their first difference.
inline testing::AssertionResult sameLines(std::vector<std::string> lines,
                                          std::vector<std::string> expected) {
    const auto same = std::ranges::mismatch(lines, expected, isSameLine).in1 - lines.begin();
    if (lines.size() == expected.size() && lines.size() == static_cast<std::size_t>(same))
        return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure();
    for (auto i = std::max<long>(0, same - 12); i < same; ++i)
        failure << lines[static_cast<std::size_t>(i)] << '\n';
    lines.push_back("the end");
    expected.push_back("the end");
    return failure << "expected " << expected[static_cast<std::size_t>(same)] << "\nbut was  "
                   << lines[static_cast<std::size_t>(same)];
}
