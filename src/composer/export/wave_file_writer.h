#pragma once

#include "platform/folders.h"

#include <QString>

#include <functional>

class WaveRenderer;
struct MelodyScore;

/// The wave file: 44,100 frames a second, 16 bits, stereo.
namespace wave_file {

enum class Result {
    Written,
    NoInstruments,  ///< the synthesizer has none
    DamagedInstruments,
    TooLong,  ///< for the 4 GiB of the format
    Failed,   ///< the file's own error
    Interrupted,
};

struct Outcome {
    Result result = Result::Written;
    FileError error;
};

/// Told now and then which share is done, 0..1; answers whether to go on.
using Progress = std::function<bool(double share)>;

/// Renders a score into a file, a stretch at a time: a long melody takes no more memory than a
/// short one. Unless it is written whole, whatever stood there before stays.
Outcome write(WaveRenderer& renderer, const MelodyScore& score, Folders& folders,
              const QString& path, const Progress& progress);

}  // namespace wave_file
