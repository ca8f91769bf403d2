#pragma once

/// The program that sounds for the benchmark "beat".
namespace beat {

constexpr double kPeriod = 0.5;  ///< seconds from click to click
constexpr const char* kPortName = "Beat of the bench";

/// With the arguments `--play PART COUNT`: plays a part with the real parts of the program and
/// prints the seconds at which its rule wants each sound.
int play(int argc, char* argv[]);

}  // namespace beat
