#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class Folders;
class QTextStream;
class Sound;
struct CommandLine;
struct Composition;

/// What the commands work with. Only the list of devices touches a device.
struct CommandMachine {
    Folders& folders;
    Sound& sound;
    QTextStream& out;
    QTextStream& err;
    /// Makes a PDF document of a composition under a title.
    std::function<QByteArray(const Composition&, const QString& title)> makePdf = {};
};

namespace commands {

constexpr int kDone = 0;
constexpr int kFailed = 1;  ///< a file is no melody, or something could not be written
constexpr int kMisused = 2;

/// Does what the command line asks for; answers the process's exit status.
int run(const CommandLine& line, const CommandMachine& machine);

}  // namespace commands
