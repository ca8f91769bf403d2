#pragma once

#include <cstdint>
#include <string>

/// MIDI files and short wave files, by the system's multimedia calls.
namespace media_player {

/// The system's code for a command that it does not know.
constexpr int kUnknownCommand = 261;

/// Opens a MIDI file under an alias, plays it and closes it. Each answers the system's code; 0 is
/// success.
int open(const std::wstring& path, const std::wstring& alias);
int play(const std::wstring& alias);
int close(const std::wstring& alias);

/// At most 254 characters; empty for a code that the system does not know.
std::wstring errorText(int code);

/// Plays a wave file with the flags of the system's simple player; whether it was started.
bool playSound(const std::wstring& path, std::uint32_t flags);

}  // namespace media_player
