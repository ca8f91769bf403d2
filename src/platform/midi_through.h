#pragma once

#include <algorithm>
#include <cctype>
#include <string>

/// Ports that send what they are sent, such as the sequencer's "Midi Through": listening to them
/// would be listening to the program itself.
namespace midi_through {

/// Blanks and signs between the words differ from one sound system to the other.
inline bool isName(std::string name) {
    std::erase_if(name, [](unsigned char c) { return std::isalpha(c) == 0; });
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name.find("midithrough") != std::string::npos;
}

}  // namespace midi_through
