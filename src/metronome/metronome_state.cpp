#include "metronome/metronome_state.h"

#include <array>

std::int16_t MetronomeState::noteOf(pulse_pattern::Kind kind) const {
    const std::array<std::int16_t, 3> notes{MetroNoteA, MetroNoteB, MetroNoteC};
    return notes[static_cast<std::size_t>(kind)];
}

void MetronomeState::takePulse(QChar letter) {
    const auto kind = pulse_pattern::kindOf(letter);
    if (!kind)
        return;
    MetroPulseColour = pulse_pattern::colourOf(*kind);
    MetroPulseNote = noteOf(*kind);
}
