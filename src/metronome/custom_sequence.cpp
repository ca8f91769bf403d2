#include "metronome/custom_sequence.h"

#include "core/funzioni_mm.h"
#include "metronome/metronome_state.h"
#include "platform/user_text.h"

namespace custom_sequence {
std::optional<QChar> typedLetter(QChar character) {
    const QChar letter = character.toLower();
    if (!pulse_pattern::kindOf(letter))
        return std::nullopt;
    return letter;
}

void testSound(FunzioniMM& funzioniMM, int note) {
    if (!funzioniMM.output().ready())
        return;
    funzioniMM.NoteOff(FunzioniMM::kMelodyChannel, pitch::kMiddleC);
    funzioniMM.NoteOn(FunzioniMM::kPercussionChannel, note, MetronomeState::kFullVelocity);
}

void store(MetronomeState& state, const Result& result) {
    state.MetroSoundIndexA = static_cast<std::uint8_t>(result.soundIndexA);
    state.MetroSoundIndexB = static_cast<std::uint8_t>(result.soundIndexB);
    state.MetroSoundIndexC = static_cast<std::uint8_t>(result.soundIndexC);
    if (result.pattern.isEmpty()) {
        state.MetroPattern = pulse_pattern::kBuiltIn.front().pattern;
        state.MetroTimeSig = pulse_pattern::kBuiltIn.front().timeSig;
        return;
    }
    state.MetroPattern = result.pattern;
    if (!pulse_pattern::isBuiltIn(result.pattern))
        state.MetroTimeSig = result.tempo.isEmpty() ? UserText::tr("P.") : result.tempo;
}

}  // namespace custom_sequence
