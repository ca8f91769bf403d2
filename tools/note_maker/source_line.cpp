#include "source_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>
#include <utility>

namespace {

constexpr std::string_view kBlank = " \t\r";

// Semitones above C of the letters a..g.
constexpr std::array<int, 7> kSemitones = {9, 11, 0, 2, 4, 5, 7};

template <typename T>
std::optional<T> parseWhole(std::string_view word, T least, T most) {
    T value{};
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    // Written so that a value that is not a number is refused too.
    if (error != std::errc{} || stop != end || !(value >= least && value <= most)) {
        return std::nullopt;
    }
    return value;
}

std::vector<std::string_view> splitWords(std::string_view line) {
    std::vector<std::string_view> words;
    for (std::size_t from = line.find_first_not_of(kBlank); from != std::string_view::npos;) {
        // A comment begins with a word, so that the sharp sign stays usable in pitches.
        if (line[from] == '#') {
            break;
        }
        const std::size_t to = std::min(line.find_first_of(kBlank, from), line.size());
        words.push_back(line.substr(from, to - from));
        from = line.find_first_not_of(kBlank, to);
    }
    return words;
}

}  // namespace

std::vector<SourceLine> splitSource(std::string_view text) {
    std::vector<SourceLine> lines;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (auto words = splitWords(text.substr(0, end)); !words.empty()) {
            lines.push_back({number, std::move(words)});
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::optional<int> parseInteger(std::string_view word, int least, int most) {
    return parseWhole(word, least, most);
}

std::optional<double> parseDecimal(std::string_view word, double least, double most) {
    return parseWhole(word, least, most);
}

std::optional<int> parsePitch(std::string_view word) {
    if (word.empty() || word.front() < 'a' || word.front() > 'g') {
        return std::nullopt;
    }
    int semitone = kSemitones.at(static_cast<std::size_t>(word.front() - 'a'));
    word.remove_prefix(1);
    if (!word.empty() && (word.front() == '#' || word.front() == 'b')) {
        semitone += word.front() == '#' ? 1 : -1;
        word.remove_prefix(1);
    }
    const std::optional<int> octave = parseInteger(word, -1, 9);
    if (!octave) {
        return std::nullopt;
    }
    const int number = 12 * (*octave + 1) + semitone;
    return number >= 0 && number <= 127 ? std::optional(number) : std::nullopt;
}
