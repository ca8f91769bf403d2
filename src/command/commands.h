#pragma once

class Folders;
class QTextStream;
class Sound;
struct CommandLine;

/// What the commands work with. Only the list of devices touches a device.
struct CommandMachine {
    Folders& folders;
    Sound& sound;
    QTextStream& out;
    QTextStream& err;
};

namespace commands {

constexpr int kDone = 0;
constexpr int kFailed = 1;  ///< a file is no melody, or something could not be written
constexpr int kMisused = 2;

/// Does what the command line asks for; answers the process's exit status.
int run(const CommandLine& line, const CommandMachine& machine);

}  // namespace commands
