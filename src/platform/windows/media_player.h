#pragma once

#include <cstdint>
#include <string>

/// MIDI files and short wave files, by the system's multimedia calls.
namespace media_player {

/// Sends a command of text. The path of an "OPEN <path> ALIAS <alias>" may contain blanks.
/// Answers the system's code; 0 is success.
int command(const std::wstring& text);

/// At most 254 characters; empty for a code that the system does not know.
std::wstring errorText(int code);

/// Plays a wave file with the flags of the system's simple player; whether it was started.
bool playSound(const std::wstring& path, std::uint32_t flags);

}  // namespace media_player
