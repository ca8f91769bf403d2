// Makes the sounds of the note folder from their sources.

#include "answer_sound.h"
#include "tune.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::optional<std::string> readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        std::cerr << path.string() << ": cannot be read\n";
        return std::nullopt;
    }
    return text;
}

bool writeFile(const fs::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        std::cerr << path.string() << ": cannot be written\n";
    }
    return static_cast<bool>(file);
}

// The form in which editors and build tools find the place.
bool report(const fs::path& path, const SourceError& error) {
    std::cerr << path.string() << ':' << error.line << ": " << error.message << '\n';
    return false;
}

bool makeTune(const fs::path& source, const fs::path& folder) {
    const auto text = readFile(source);
    if (!text) {
        return false;
    }
    const auto tune = parseTune(*text);
    if (const auto* error = std::get_if<SourceError>(&tune)) {
        return report(source, *error);
    }
    return writeFile(folder / "ap.mid", toMidiFile(std::get<Tune>(tune)));
}

bool makeAnswers(const fs::path& source, const fs::path& folder) {
    const auto text = readFile(source);
    if (!text) {
        return false;
    }
    const auto sounds = parseAnswerSounds(*text);
    if (const auto* error = std::get_if<SourceError>(&sounds)) {
        return report(source, *error);
    }
    for (const AnswerSound& sound : std::get<std::vector<AnswerSound>>(sounds)) {
        if (!writeFile(folder / (sound.name + ".wav"), toWaveFile(render(sound)))) {
            return false;
        }
    }
    return true;
}

bool makeNoteFolder(const fs::path& sources, const fs::path& folder) {
    fs::create_directories(folder);
    return makeTune(sources / "tune.txt", folder) && makeAnswers(sources / "answers.txt", folder);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fputs("Usage: note_maker SOURCE_FOLDER NOTE_FOLDER\n", stderr);
        return 2;
    }
    try {
        return makeNoteFolder(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
