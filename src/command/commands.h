#pragma once

#include <functional>

class Folders;
class QTextStream;
class Sound;
struct CommandLine;
struct Composition;
struct SheetFile;
struct SheetRequest;

/// What the commands work with. Only the list of devices touches a device.
struct CommandMachine {
    Folders& folders;
    Sound& sound;
    QTextStream& out;
    QTextStream& err;
    std::function<SheetFile(const Composition&, const SheetRequest&)> makeSheet = {};
};

namespace commands {

constexpr int kDone = 0;
constexpr int kFailed = 1;  ///< a file is no melody, or something could not be written
constexpr int kMisused = 2;

/// Does what the command line asks for; answers the process's exit status.
int run(const CommandLine& line, const CommandMachine& machine);

}  // namespace commands
